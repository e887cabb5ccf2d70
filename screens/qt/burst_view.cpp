#include "screens/qt/burst_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "screens/burst_screen.h"
#include "screens/qt/captions.h"
#include "screens/qt/drop_list.h"
#include "screens/qt/entry_box.h"
#include "screens/qt/group_frame.h"
#include "screens/qt/line_list.h"
#include "screens/qt/metrics.h"

namespace zentrel::view {

namespace {

// A group whose rows lie in a grid of two columns.
QGridLayout* GridOf(GroupFrame* group) {
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(group->ContentMargins());
    grid->setHorizontalSpacing(Metrics::Now().unit);
    grid->setVerticalSpacing(Metrics::Now().unit);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    return grid;
}

} // namespace

BurstView::BurstView(const Hand& hand, BurstScreen& model, QWidget* parent)
    : ScreenView(parent), hand_(hand), model_(model) {
    const Metrics& m = Metrics::Now();
    auto* column = new QVBoxLayout;
    column->setSpacing(m.Units(2));
    groups_ = {BuildGroup(), ListGroup(), RunGroup()};
    for (QWidget* group : groups_)
        column->addWidget(group);
    column->addStretch(1);

    list_ = new LineList(hand, model.panel.txtBurstCmds, this);
    list_->setObjectName(QStringLiteral("txtBurstCmds"));
    list_->setAccessibleName(tr("Burst commands"));
    list_->onClick([&model] { model.ClickList(); });
    list_->onDoubleClick([&model] { model.DoubleClickList(); });
    list_->setToolTip(tr("Click a line to select it; double click puts its word back"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(m.Units(2), m.Units(2), m.Units(2), m.Units(2));
    row->setSpacing(m.Units(2));
    row->addLayout(column);
    row->addWidget(list_, 1);
}

PushButton* BurstView::Add(QWidget* group, const char* name, Button& element, Hand::Action click,
                           const QString& tip) {
    auto* button = new PushButton(hand_, element, std::move(click), group);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    buttons_.push_back(button);
    return button;
}

QWidget* BurstView::BuildGroup() {
    BurstPanel& panel = model_.panel;
    auto* group = new GroupFrame(tr("Build"), this);
    QGridLayout* grid = GridOf(group);
    label_ = new CaptionLabel(panel.Label1, CaptionLabel::Tone::Text,
                              Qt::AlignLeft | Qt::AlignVCenter, group);
    registers_ = new DropList(hand_, panel.cmbLdBurst, group);
    registers_->setObjectName(QStringLiteral("cmbLdBurst"));
    registers_->setAccessibleName(tr("Register to load"));
    registers_->setToolTip(tr("Adds a load of the word that the register holds now"));
    delay_ = new EntryBox(hand_, panel.txtDelay, {}, group);
    delay_->setObjectName(QStringLiteral("txtDelay"));
    delay_->setAccessibleName(tr("Loop passes of a delay"));
    grid->addWidget(label_, 0, 0);
    grid->addWidget(registers_, 0, 1);
    grid->addWidget(delay_, 1, 0);
    grid->addWidget(Add(
                        group, "cmdDelay", panel.cmdDelay, [this] { model_.ClickDelay(); },
                        tr("Adds a delay of that many loop passes")),
                    1, 1);
    grid->addWidget(Add(
                        group, "cmdLEMode", panel.cmdLEMode, [this] { model_.ClickLEMode(); },
                        tr("Latch enable behind the pin states that are added from here on")),
                    2, 0);
    grid->addWidget(Add(
                        group, "cmdSetPins", panel.cmdSetPins, [this] { model_.ClickSetPins(); },
                        tr("Adds the present state of the pins")),
                    2, 1);
    grid->addWidget(Add(
                        group, "cmdInsert", panel.cmdInsert, [this] { model_.ClickInsert(); },
                        tr("Whether an addition goes ahead of the selected line or replaces it")),
                    3, 0, 1, 2);
    return group;
}

QWidget* BurstView::ListGroup() {
    BurstPanel& panel = model_.panel;
    auto* group = new GroupFrame(tr("List"), this);
    QGridLayout* grid = GridOf(group);
    grid->addWidget(Add(
                        group, "cmdDelete", panel.cmdDelete, [this] { model_.ClickDelete(); },
                        tr("Deletes the selected line")),
                    0, 0);
    grid->addWidget(Add(
                        group, "cmdDeleteAll", panel.cmdDeleteAll,
                        [this] { model_.ClickDeleteAll(); }, tr("Empties the list")),
                    0, 1);
    grid->addWidget(Add(
                        group, "cmdLoad", panel.cmdLoad, [this] { model_.ClickLoad(); },
                        tr("Restores a setup file and appends its commands")),
                    1, 0);
    grid->addWidget(Add(
                        group, "cmdSave", panel.cmdSave, [this] { model_.ClickSave(); },
                        tr("Saves the setup and the list")),
                    1, 1);
    grid->addWidget(Add(
                        group, "Command1", panel.Command1, [this] { model_.DisplayBurstVector(); },
                        tr("Shows the clock, data and latch enable levels of each load")),
                    2, 0, 1, 2);
    return group;
}

QWidget* BurstView::RunGroup() {
    BurstPanel& panel = model_.panel;
    auto* group = new GroupFrame(tr("Replay"), this);
    QGridLayout* grid = GridOf(group);
    grid->addWidget(Add(
                        group, "cmdRun", panel.cmdRun, [this] { model_.run.cmdRun_Click(); },
                        tr("Starts or stops the replay; a stop takes effect after the pass")),
                    0, 0);
    grid->addWidget(Add(
                        group, "cmdLoop", panel.cmdLoop, [this] { model_.run.cmdLoop_Click(); },
                        tr("Over and over, or one pass")),
                    0, 1);
    grid->addWidget(Add(group, "cmdBreak", panel.cmdBreak, {}, {}), 1, 0, 1, 2);
    return group;
}

void BurstView::Sync() {
    label_->Sync();
    registers_->Sync();
    delay_->Sync();
    for (PushButton* button : buttons_)
        button->Sync();
    list_->Sync();
    // A group without a button in it isn't drawn: only Run stands ahead of a family's device.
    for (QWidget* group : groups_) {
        bool any = false;
        for (const PushButton* button : buttons_)
            any = any || (button->parentWidget() == group && !button->isHidden());
        if (group->isHidden() == any) group->setVisible(any);
    }
}

} // namespace zentrel::view
