#include "screens/qt/readback_bar.h"

#include <QHBoxLayout>
#include <QPainter>

#include "screens/qt/captions.h"
#include "screens/qt/entry_box.h"
#include "screens/qt/marks.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"
#include "screens/registers_screen.h"

namespace zentrel::view {

ReadbackBar::ReadbackBar(const Hand& hand, RegistersScreen& model, QWidget* parent)
    : QWidget(parent), model_(model) {
    const Metrics& m = Metrics::Now();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(m.Units(2), m.unit, m.Units(2), m.unit);
    row->setSpacing(m.unit);
    row->addWidget(new FixedLabel(tr("Field"), CaptionLabel::Tone::Muted,
                                  Qt::AlignLeft | Qt::AlignVCenter, this));
    const auto read = [&model] { model.ClickReadRegister(); };
    name_ = new EntryBox(hand, model.txtReadRegName, {.enter = read}, this);
    name_->setObjectName(QStringLiteral("txtReadRegName"));
    name_->setAccessibleName(tr("Field to read back"));
    name_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    name_->setMinimumWidth(m.DigitsWidth(8));
    row->addWidget(name_, 1);
    read_ = new PushButton(hand, model.cmdReadRegister, read, this);
    read_->setObjectName(QStringLiteral("cmdReadRegister"));
    row->addWidget(read_);
    row->addSpacing(m.unit);
    for (std::size_t i = 0; i < model.oReadbackBase.size(); ++i) {
        auto* base = new OptionMark(
            hand, {model.oReadbackBase, i},
            [&model, i] { model.SelectReadbackBase(static_cast<int>(i)); }, this);
        base->setObjectName(IndexedName("oReadbackBase", i));
        bases_.push_back(base);
        row->addWidget(base);
    }
    row->addSpacing(m.unit);
    value_ = new EntryBox(hand, model.txtReadbackRegVal, {}, this);
    value_->setObjectName(QStringLiteral("txtReadbackRegVal"));
    value_->setAccessibleName(tr("Value read back"));
    value_->setReadOnly(true);
    value_->setMinimumWidth(m.DigitsWidth(8));
    row->addWidget(value_, 1);
}

void ReadbackBar::Sync() {
    const bool shown = model_.cmdReadRegister.Visible;
    if (isHidden() == shown) setVisible(shown);
    if (!shown) return;
    name_->Sync();
    read_->Sync();
    for (OptionMark* base : bases_)
        base->Sync();
    value_->Sync();
}

void ReadbackBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), 1), Theme::Now().line);
}

} // namespace zentrel::view
