#include "screens/qt/line_list.h"

#include <algorithm>

#include <QMouseEvent>
#include <QTextBlock>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"

namespace zentrel::view {

namespace {

// Where line `number` of the element's text begins, in bytes.
std::size_t LineStart(const std::string& text, int number) {
    std::size_t start = 0;
    for (; number > 0; --number) {
        const auto end = text.find('\n', start);
        if (end == std::string::npos) return text.size();
        start = end + 1;
    }
    return start;
}

} // namespace

LineList::LineList(const Hand& hand, ElementRef<TextBox> element, QWidget* parent)
    : QPlainTextEdit(parent), hand_(hand), element_(element) {
    setReadOnly(true);
    setFont(MonospacedFont());
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
}

void LineList::Sync() {
    const TextBox* box = element_.get();
    if (!box) return;
    const Hand::Busy busy(hand_);
    SyncFlags(*this, *box);
    if (shown_ != box->Text) {
        shown_ = box->Text;
        setPlainText(FromModel(shown_));
    }
    const int start = FromElement(box->SelStart);
    const int end = FromElement(box->SelStart + box->SelLength);
    QTextCursor cursor = textCursor();
    if (cursor.selectionStart() == start && cursor.selectionEnd() == end) return;
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void LineList::mouseReleaseEvent(QMouseEvent* event) {
    QPlainTextEdit::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton) return;
    WriteSelection();
    hand_.Do(click_);
}

void LineList::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    setTextCursor(cursorForPosition(event->pos()));
    WriteSelection();
    hand_.Do(doubleClick_);
}

void LineList::keyReleaseEvent(QKeyEvent* event) {
    QPlainTextEdit::keyReleaseEvent(event);
    WriteSelection();
}

void LineList::WriteSelection() {
    TextBox* box = element_.get();
    if (!box || hand_.busy()) return;
    const QTextCursor cursor = textCursor();
    box->SelStart = ToElement(cursor.selectionStart());
    box->SelLength = ToElement(cursor.selectionEnd()) - box->SelStart;
}

// The toolkit counts UTF-16 units and one for a line's end; the element counts bytes and has two.
int LineList::ToElement(int position) const {
    const QTextBlock block = document()->findBlock(position);
    if (!block.isValid()) return static_cast<int>(shown_.size());
    const std::size_t start = LineStart(shown_, block.blockNumber());
    const auto inside = block.text().left(position - block.position()).toUtf8().size();
    return static_cast<int>(std::min(start + static_cast<std::size_t>(inside), shown_.size()));
}

int LineList::FromElement(int offset) const {
    const auto until = shown_.begin() + std::clamp(offset, 0, static_cast<int>(shown_.size()));
    const auto line = static_cast<int>(std::count(shown_.begin(), until, '\n'));
    const QTextBlock block = document()->findBlockByNumber(line);
    if (!block.isValid()) return std::max(0, document()->characterCount() - 1);
    const std::size_t start = LineStart(shown_, line);
    const std::string before(shown_.begin() + static_cast<std::ptrdiff_t>(start), until);
    const auto units = static_cast<int>(FromModel(before).size());
    return block.position() + std::min(units, block.length() - 1);
}

} // namespace zentrel::view
