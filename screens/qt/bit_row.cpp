#include "screens/qt/bit_row.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStaticText>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/paint.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

/// The two digits laid out once, as most of a repaint is digits.
class Digits {
  public:
    explicit Digits(const QFont& font) : metrics_(font) {
        for (QStaticText* digit : {&zero_, &one_}) {
            digit->setText(QString::fromLatin1(digit == &zero_ ? "0" : "1"));
            digit->setTextFormat(Qt::PlainText);
            digit->prepare({}, font);
        }
    }
    void Draw(QPainter& painter, const QRect& cell, char digit) const {
        const double x = cell.left() + (cell.width() - metrics_.horizontalAdvance(digit)) / 2.0;
        const double y = cell.top() + (cell.height() - metrics_.height()) / 2.0;
        painter.drawStaticText(QPointF(x, y), digit == '1' ? one_ : zero_);
    }

  private:
    QFontMetricsF metrics_;
    QStaticText zero_, one_;
};

const Digits& DigitsOf(const QFont& font) {
    static QFont known = font;
    static Digits digits(font);
    if (known != font) {
        known = font;
        digits = Digits(font);
    }
    return digits;
}

} // namespace

BitRow::BitRow(const Hand& hand, ElementRef<TextBox> element, Actions actions, QWidget* parent)
    : QWidget(parent), hand_(hand), element_(element), actions_(std::move(actions)) {
    setFont(MonospacedFont());
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void BitRow::Sync(const BitGrid& grid, const std::string& changed) {
    const TextBox* box = element_.get();
    if (!box) return;
    SyncFlags(*this, *box);
    const bool same = grid == grid_ && text_ == box->Text && changed_ == changed &&
                      caret_ == box->SelStart && selected_ == box->SelLength;
    if (same) return;
    grid_ = grid;
    text_ = box->Text;
    changed_ = changed;
    caret_ = box->SelStart;
    selected_ = box->SelLength;
    update();
}

QSize BitRow::sizeHint() const {
    return {grid_.Width(), Metrics::Now().boxHeight};
}

QRect BitRow::Cell(int column) const {
    return {grid_.Left(column), 0, BitGrid::CellWidth(), height()};
}

QRect BitRow::CaretCell() const {
    return Cell(CaretColumn());
}

void BitRow::PutCaret(int position, int length) {
    TextBox* box = element_.get();
    if (!box) return;
    box->SelStart = position;
    box->SelLength = length;
}

void BitRow::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    PutCaret(grid_.ColumnAt(event->pos().x()) * 3, 0);
    hand_.Do(actions_.click);
}

void BitRow::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) hand_.Do(actions_.doubleClick);
}

bool BitRow::event(QEvent* event) {
    // Plain digits are the row's own, whatever shortcut a menu may have.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() == Qt::NoModifier && !key->text().isEmpty()) event->accept();
    }
    return QWidget::event(event);
}

void BitRow::keyPressEvent(QKeyEvent* event) {
    const auto arrow = [&](Arrow which) { hand_.Do([&] { actions_.arrow(which); }); };
    switch (event->key()) {
    case Qt::Key_Left:
        return arrow(Arrow::Left);
    case Qt::Key_Right:
        return arrow(Arrow::Right);
    case Qt::Key_Up:
        return arrow(Arrow::Up);
    case Qt::Key_Down:
        return arrow(Arrow::Down);
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return QWidget::keyPressEvent(event);
    default:
        break;
    }
    const QString text = event->text();
    const bool typed = text.size() == 1 && text[0].isPrint() &&
                       !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (!typed) return QWidget::keyPressEvent(event);
    hand_.Do([&] { actions_.key(text[0].toLatin1()); });
}

void BitRow::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    const bool byKey =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKey) hand_.Do(actions_.click);
    update();
}

void BitRow::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

void BitRow::paintEvent(QPaintEvent* event) {
    const Theme& theme = Theme::Now();
    QPainter painter(this);
    const QColor frame = hasFocus() ? theme.accent : theme.line;
    PaintBox(painter, rect(), isEnabled() ? theme.field : QColor(Qt::transparent), frame,
             hasFocus() ? 1.5 : 1.0);
    painter.setFont(font());
    const int first = grid_.ColumnAt(event->rect().left());
    const int last = grid_.ColumnAt(event->rect().right());
    for (int column = first; column <= last && column < grid_.bits; ++column)
        PaintCell(painter, column);
}

void BitRow::PaintCell(QPainter& painter, int column) const {
    const Theme& theme = Theme::Now();
    const std::size_t at = static_cast<std::size_t>(column) * 3;
    if (at >= text_.size()) return;
    const QRect cell = Cell(column);
    const QRect inner = cell.adjusted(0, 3, 0, -3);
    const bool caretHere = hasFocus() && column == CaretColumn();
    const bool selected = caretHere && selected_ > 0;
    const bool control = grid_.IsControl(column);
    QColor ink = control ? theme.disabled : theme.text;
    if (selected) {
        painter.fillRect(inner, theme.accent);
        ink = theme.onAccent;
    } else if (caretHere) {
        painter.fillRect(QRect(cell.left(), inner.top(), 2, inner.height()), theme.accent);
    }
    const auto mark = static_cast<std::size_t>(column);
    const bool changed = mark < changed_.size() && changed_[mark] == '1';
    if (changed) {
        if (!selected) ink = theme.Ink(colors::kBlue);
        painter.fillRect(QRect(cell.left() + 2, inner.bottom() - 1, cell.width() - 4, 2),
                         selected ? theme.onAccent : theme.Ink(colors::kBlue));
    }
    painter.setPen(ink);
    DigitsOf(font()).Draw(painter, cell, text_[at]);
}

} // namespace zentrel::view
