#include "screens/qt/entry_box.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QWheelEvent>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/paint.h"
#include "screens/qt/spinner.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

bool TakenByThisWindow(Qt::FocusReason reason) {
    switch (reason) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return false;
    default:
        return true;
    }
}

} // namespace

EntryBox::EntryBox(const Hand& hand, ElementRef<TextBox> element, Actions actions, QWidget* parent)
    : QLineEdit(parent), hand_(hand), element_(element), actions_(std::move(actions)) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFixedHeight(Metrics::Now().boxHeight);
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { WriteText(text); });
    connect(this, &QLineEdit::selectionChanged, this, [this] { WriteSelection(); });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] { WriteSelection(); });
}

void EntryBox::Attach(SpinnerButtons* buttons) {
    buttons_ = buttons;
    buttons->setParent(this);
    buttons->setCursor(Qt::ArrowCursor);
    PlaceButtons();
}

void EntryBox::PlaceButtons() {
    if (!buttons_) return;
    const bool shown = !buttons_->isHidden();
    const int width = shown ? buttons_->sizeHint().width() : 0;
    buttons_->setGeometry(this->width() - width - 1, 1, width, height() - 2);
    if (textMargins().right() != width) setTextMargins(0, 0, width, 0);
}

void EntryBox::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    PlaceButtons();
}

void EntryBox::Sync() {
    const TextBox* box = element_.get();
    if (!box) return;
    const Hand::Busy busy(hand_);
    SyncFlags(*this, *box);
    if (buttons_) buttons_->Sync(), PlaceButtons();
    if (box->Text != shown_) {
        shown_ = applied_ = box->Text;
        typed_ = false;
        setText(FromModel(shown_));
        if (!hasFocus()) setCursorPosition(0);
    } else if (!typed_) {
        applied_ = shown_;
    }
    SyncSelection(*box);
    SyncColors(*box);
}

void EntryBox::SyncSelection(const TextBox& box) {
    const int length = static_cast<int>(selectedText().size());
    const int start = length > 0 ? selectionStart() : cursorPosition();
    if (!hasFocus() || (start == box.SelStart && length == box.SelLength)) return;
    setSelection(box.SelStart, box.SelLength);
    if (box.SelLength == 0) setCursorPosition(box.SelStart);
}

void EntryBox::SyncColors(const TextBox& box) {
    const Theme& theme = Theme::Now();
    if (box.BackColor == back_ && box.ForeColor == fore_ && dark_ == theme.dark) return;
    back_ = box.BackColor;
    fore_ = box.ForeColor;
    dark_ = theme.dark;
    QPalette p;
    if (theme.Fill(back_) != theme.field) {
        p.setColor(QPalette::Base, theme.Fill(back_));
        p.setColor(QPalette::Text, theme.InkOn(back_));
    }
    if (fore_ != colors::kButtonText) p.setColor(QPalette::Text, theme.Ink(fore_));
    setPalette(p);
}

void EntryBox::WriteText(const QString& text) {
    TextBox* box = element_.get();
    if (!box || hand_.busy()) return;
    box->Text = shown_ = ToModel(text);
    typed_ = true;
    entered_ = false;
    WriteSelection(); // The key took the place of what was selected; a refresh must not put it
                      // back.
    update();
    if (actions_.typed) hand_.Do(actions_.typed);
}

void EntryBox::WriteSelection() {
    TextBox* box = element_.get();
    if (!box || hand_.busy()) return;
    box->SelLength = static_cast<int>(selectedText().size());
    box->SelStart = box->SelLength > 0 ? selectionStart() : cursorPosition();
}

void EntryBox::Restore() {
    TextBox* box = element_.get();
    if (!box) return;
    box->Text = shown_ = applied_;
    typed_ = false;
    setText(FromModel(applied_));
    selectAll();
}

bool EntryBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        // With nothing selected there is nothing to copy or cut: the menu's shortcut acts.
        const auto* key = static_cast<QKeyEvent*>(event);
        if (!hasSelectedText() &&
            (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Cut))) {
            event->ignore();
            return false;
        }
    }
    return QLineEdit::event(event);
}

void EntryBox::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        typed_ = false;
        entered_ = true;
        hand_.Do(actions_.enter);
        update();
        return;
    case Qt::Key_Escape:
        Restore();
        return;
    case Qt::Key_Up:
        if (actions_.stepUp) return hand_.Do(actions_.stepUp);
        break;
    case Qt::Key_Down:
        if (actions_.stepDown) return hand_.Do(actions_.stepDown);
        break;
    default:
        break;
    }
    QLineEdit::keyPressEvent(event);
}

void EntryBox::focusInEvent(QFocusEvent* event) {
    if (TakenByThisWindow(event->reason())) entered_ = false;
    QLineEdit::focusInEvent(event);
}

void EntryBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (!TakenByThisWindow(event->reason()) || hand_.busy()) return;
    if (entered_ || !actions_.leave) return;
    typed_ = false;
    hand_.Do(actions_.leave);
    update();
}

void EntryBox::wheelEvent(QWheelEvent* event) {
    if (!hasFocus() || !actions_.stepUp) return event->ignore();
    constexpr int kNotch = 120;
    for (wheel_ += event->angleDelta().y(); wheel_ >= kNotch; wheel_ -= kNotch)
        hand_.Do(actions_.stepUp);
    for (; wheel_ <= -kNotch; wheel_ += kNotch)
        hand_.Do(actions_.stepDown);
    event->accept();
}

void EntryBox::contextMenuEvent(QContextMenuEvent* event) {
    if (!actions_.help) return QLineEdit::contextMenuEvent(event);
    hand_.Do(actions_.help);
}

// Where the text's box begins and ends, as the toolkit has it.
QRect EntryBox::TextRect() const {
    QStyleOptionFrame option;
    initStyleOption(&option);
    constexpr int kToolkitMargin = 2;
    return style()
        ->subElementRect(QStyle::SE_LineEditContents, &option, this)
        .marginsRemoved(textMargins())
        .adjusted(kToolkitMargin, 0, -kToolkitMargin, 0);
}

// A number that is cut off reads as another number: it ends in dots until it is edited.
bool EntryBox::PaintElided() {
    const QRect room = TextRect();
    if (hasFocus() || fontMetrics().horizontalAdvance(text()) <= room.width()) return false;
    QStyleOptionFrame option;
    initStyleOption(&option);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(palette().color(group, QPalette::Text));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
    return true;
}

void EntryBox::paintEvent(QPaintEvent* event) {
    if (!PaintElided()) QLineEdit::paintEvent(event);
    QPainter painter(this);
    PaintMeaningSign(painter, rect(), Theme::MeaningOf(back_));
    if (typed_) PaintEditMarker(painter, rect());
}

} // namespace zentrel::view
