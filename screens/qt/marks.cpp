#include "screens/qt/marks.h"

#include <QContextMenuEvent>
#include <QKeyEvent>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"

namespace zentrel::view {

CheckMark::CheckMark(const Hand& hand, ElementRef<CheckBox> element, QWidget* parent)
    : QCheckBox(parent), hand_(hand), element_(element) {
    setFixedHeight(Metrics::Now().rowHeight);
    connect(this, &QCheckBox::clicked, this, [this](bool on) {
        CheckBox* box = element_.get();
        if (box) hand_.Do([box, on] { box->SetValue(on); });
    });
}

void CheckMark::Sync() {
    const CheckBox* box = element_.get();
    if (!box) return;
    const Hand::Busy busy(hand_);
    SyncFlags(*this, *box);
    if (box->Caption != caption_) {
        caption_ = box->Caption;
        setAccessibleName(FromModel(caption_));
        Elide();
    }
    if (tint_.Follow(*box)) setPalette(tint_.Palette(QPalette::Window, QPalette::WindowText));
    if (autoFillBackground() != tint_.HasFill()) setAutoFillBackground(tint_.HasFill());
    if (isChecked() != box->Value) setChecked(box->Value);
}

void CheckMark::Elide() {
    const int room = width() - Metrics::Now().unit * 3;
    const QString whole = FromModel(caption_);
    QString shown = fontMetrics().elidedText(whole, Qt::ElideRight, std::max(room, 1));
    shown.replace(QLatin1Char('&'), QLatin1String("&&"));
    if (shown != text()) setText(shown);
}

QSize CheckMark::minimumSizeHint() const {
    return {Metrics::Now().Units(6), Metrics::Now().rowHeight};
}

void CheckMark::resizeEvent(QResizeEvent* event) {
    QCheckBox::resizeEvent(event);
    Elide();
}

void CheckMark::contextMenuEvent(QContextMenuEvent* event) {
    if (!help_) return QCheckBox::contextMenuEvent(event);
    hand_.Do(help_);
}

OptionMark::OptionMark(const Hand& hand, ElementRef<Option> element, Hand::Action select,
                       QWidget* parent)
    : QRadioButton(parent), hand_(hand), element_(element) {
    first_ = parent->findChildren<QRadioButton*>(Qt::FindDirectChildrenOnly).size() == 1;
    setAutoExclusive(false);
    setFixedHeight(Metrics::Now().rowHeight);
    connect(this, &QRadioButton::clicked, this, [this, action = std::move(select)] {
        const Option* option = element_.get();
        if (option && option->Value) // Already selected: a click changes nothing.
            setChecked(true);
        else
            hand_.Do(action);
    });
}

void OptionMark::Sync() {
    const Option* option = element_.get();
    if (!option) return;
    const Hand::Busy busy(hand_);
    SyncFlags(*this, *option);
    if (option->Caption != caption_) {
        caption_ = option->Caption;
        setText(Literal(caption_));
    }
    if (tint_.Follow(*option)) setPalette(tint_.Palette(QPalette::Window, QPalette::WindowText));
    if (autoFillBackground() != tint_.HasFill()) setAutoFillBackground(tint_.HasFill());
    if (isChecked() != option->Value) setChecked(option->Value);
    setFocusPolicy(option->Value || first_ ? Qt::StrongFocus : Qt::ClickFocus);
}

OptionMark* OptionMark::Neighbour(int step) const {
    QList<OptionMark*> group;
    for (QObject* child : parentWidget()->children()) {
        auto* mark = dynamic_cast<OptionMark*>(child);
        if (mark && mark->isEnabled() && !mark->isHidden()) group.push_back(mark);
    }
    const qsizetype count = group.size();
    const qsizetype at = group.indexOf(const_cast<OptionMark*>(this));
    return at < 0 ? nullptr : group[(at + step + count) % count];
}

void OptionMark::keyPressEvent(QKeyEvent* event) {
    int step = 0;
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Up) step = -1;
    if (event->key() == Qt::Key_Right || event->key() == Qt::Key_Down) step = 1;
    if (step == 0) return QRadioButton::keyPressEvent(event);
    if (OptionMark* next = Neighbour(step)) {
        next->setFocus(Qt::TabFocusReason);
        next->click();
    }
}

} // namespace zentrel::view
