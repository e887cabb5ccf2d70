#include "screens/qt/burst_view.h"

#include <array>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>

#include "screens/burst_screen.h"
#include "screens/qt/brick.h"
#include "screens/qt/captions.h"
#include "screens/qt/drop_list.h"
#include "screens/qt/entry_box.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/scroll_page.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

int ControlsWidth() {
    return Metrics::Now().Units(28);
}

// The model ends a line with two characters where the toolkit has one.
int ToModelPosition(const QString& text, int position) {
    const QStringView ahead = QStringView(text).left(position);
    return static_cast<int>(ahead.toUtf8().size() + ahead.count(QLatin1Char('\n')));
}

int ToViewPosition(const std::string& text, int position) {
    const auto length = std::min(text.size(), static_cast<std::size_t>(std::max(position, 0)));
    return static_cast<int>(FromModel(text.substr(0, length)).remove(QLatin1Char('\r')).size());
}

} // namespace

BurstView::BurstView(const Hand& hand, BurstScreen& model, QWidget* parent)
    : ScreenView(parent), hand_(hand), model_(model), list_(new QPlainTextEdit(this)) {
    const Metrics& m = Metrics::Now();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(m.Units(2), m.Units(2), 0, m.Units(2));
    row->setSpacing(m.Units(2));
    list_->setObjectName(QStringLiteral("txtBurstCmds"));
    list_->setAccessibleName(tr("Burst commands"));
    list_->setReadOnly(true);
    list_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    list_->setLineWrapMode(QPlainTextEdit::NoWrap);
    list_->setFont(MonospacedFont());
    list_->viewport()->installEventFilter(this);
    // By drag or by keys: what the engineer sees selected is what an addition goes by.
    connect(list_, &QPlainTextEdit::selectionChanged, this, [this] {
        if (!hand_.busy()) WriteSelection();
    });
    row->addWidget(list_, 1);
    auto* side = new ScrollPage(this);
    side->setWidget(MakeControls());
    side->setFixedWidth(ControlsWidth() + m.Units(2));
    row->addWidget(side);
}

PushButton* BurstView::AddButton(Button& element, const char* name, Hand::Action click,
                                 QWidget* parent) {
    auto* button = new PushButton(hand_, element, std::move(click), parent);
    button->setObjectName(QLatin1String(name));
    buttons_.push_back(button);
    return button;
}

QWidget* BurstView::MakeControls() {
    const Metrics& m = Metrics::Now();
    BurstPanel& panel = model_.panel;
    auto* controls = new PageContent;
    auto* grid = new QGridLayout(controls);
    grid->setContentsMargins(0, 0, m.Units(2), 0);
    grid->setSpacing(m.unit);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setColumnMinimumWidth(0, (ControlsWidth() - m.unit) / 2);
    int line = 0;
    const auto gap = [&] { grid->setRowMinimumHeight(line++, m.unit); };
    // An array makes its parts in order, as the Tab key will walk.
    const auto pair = [&](const std::array<QWidget*, 2>& parts) {
        grid->addWidget(parts[0], line, 0);
        grid->addWidget(parts[1], line++, 1);
    };
    const auto button = [&](Button& element, const char* name, auto act) {
        return AddButton(
            element, name, [this, act] { act(model_); }, controls);
    };

    pair({button(panel.cmdRun, "cmdRun", [](BurstScreen& s) { s.run.cmdRun_Click(); }),
          button(panel.cmdLoop, "cmdLoop", [](BurstScreen& s) { s.run.cmdLoop_Click(); })});
    grid->addWidget(button(panel.cmdBreak, "cmdBreak", [](BurstScreen&) {}), line++, 0, 1, 2);
    gap();
    label_ = new CaptionLabel(panel.Label1, CaptionLabel::Tone::Muted,
                              Qt::AlignLeft | Qt::AlignVCenter, controls);
    label_->setObjectName(QStringLiteral("Label1"));
    grid->addWidget(label_, line++, 0, 1, 2);
    registers_ = new DropList(hand_, panel.cmbLdBurst, controls);
    registers_->setObjectName(QStringLiteral("cmbLdBurst"));
    registers_->setAccessibleName(tr("Add a load of the register"));
    registers_->onChoose([this](int index) { model_.ChooseRegister(index); });
    grid->addWidget(registers_, line++, 0, 1, 2);
    PushButton* addDelay =
        button(panel.cmdDelay, "cmdDelay", [](BurstScreen& s) { s.ClickDelay(); });
    delay_ =
        new EntryBox(hand_, panel.txtDelay, {.enter = [this] { model_.ClickDelay(); }}, controls);
    delay_->setObjectName(QStringLiteral("txtDelay"));
    delay_->setAccessibleName(tr("Delay count"));
    pair({addDelay, delay_});
    pair({button(panel.cmdSetPins, "cmdSetPins", [](BurstScreen& s) { s.ClickSetPins(); }),
          button(panel.cmdInsert, "cmdInsert", [](BurstScreen& s) { s.ClickInsert(); })});
    gap();
    pair({button(panel.cmdDelete, "cmdDelete", [](BurstScreen& s) { s.ClickDelete(); }),
          button(panel.cmdDeleteAll, "cmdDeleteAll", [](BurstScreen& s) { s.ClickDeleteAll(); })});
    pair({button(panel.cmdLoad, "cmdLoad", [](BurstScreen& s) { s.ClickLoad(); }),
          button(panel.cmdSave, "cmdSave", [](BurstScreen& s) { s.ClickSave(); })});
    gap();
    pair({button(panel.cmdLEMode, "cmdLEMode", [](BurstScreen& s) { s.ClickLEMode(); }),
          button(panel.Command1, "Command1", [](BurstScreen& s) { s.DisplayBurstVector(); })});
    grid->setRowStretch(line, 1);
    return controls;
}

void BurstView::Sync() {
    const Hand::Busy busy(hand_);
    SyncList();
    for (PushButton* button : buttons_)
        button->Sync();
    label_->Sync();
    registers_->Sync();
    delay_->Sync();
}

void BurstView::SyncList() {
    const TextBox& box = model_.panel.txtBurstCmds;
    SyncFlags(*list_, box);
    if (box.Text != shown_) {
        shown_ = box.Text;
        const int scrolled = list_->verticalScrollBar()->value();
        list_->setPlainText(FromModel(shown_).remove(QLatin1Char('\r')));
        list_->verticalScrollBar()->setValue(scrolled);
    }
    const int start = ToViewPosition(shown_, box.SelStart);
    const int end = ToViewPosition(shown_, box.SelStart + box.SelLength);
    QTextCursor cursor = list_->textCursor();
    if (cursor.selectionStart() == start && cursor.selectionEnd() == end) return;
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    list_->setTextCursor(cursor);
}

void BurstView::WriteSelection() {
    TextBox& box = model_.panel.txtBurstCmds;
    const QTextCursor cursor = list_->textCursor();
    const QString text = list_->toPlainText();
    box.SelStart = ToModelPosition(text, cursor.selectionStart());
    box.SelLength = ToModelPosition(text, cursor.selectionEnd()) - box.SelStart;
    model_.FollowSelection();
}

bool BurstView::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::MouseButtonPress) {
        // A press on the selected line is a click like any other, no start of dragging its text.
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::LeftButton && press->modifiers() == Qt::NoModifier) {
            const Hand::Busy busy(hand_);
            list_->setTextCursor(list_->cursorForPosition(press->pos()));
        }
    }
    const bool click = type == QEvent::MouseButtonRelease || type == QEvent::MouseButtonDblClick;
    if (!click || static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton)
        return ScreenView::eventFilter(watched, event);
    const QTextCursor at = list_->cursorForPosition(static_cast<QMouseEvent*>(event)->pos());
    if (type == QEvent::MouseButtonRelease && list_->textCursor().hasSelection()) {
        WriteSelection(); // Dragged over: that is the selection.
        return false;
    }
    list_->setTextCursor(at);
    WriteSelection();
    hand_.Do([&] {
        if (type == QEvent::MouseButtonDblClick)
            model_.DoubleClickList();
        else
            model_.ClickList();
    });
    return true;
}

void BurstView::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Theme::Now().surface);
}

} // namespace zentrel::view
