#pragma once

#include <functional>
#include <string>

#include <QWidget>

#include "screens/qt/bit_grid.h"
#include "screens/qt/hand.h"

namespace zentrel::view {

/// One register word, bit by bit. The text of its element holds a digit at every third place; the
/// caret and the selection are the element's own. Keys and clicks go to the model, none edits the
/// text here.
class BitRow : public QWidget {
  public:
    enum class Arrow { Left, Right, Up, Down };
    struct Actions {
        Hand::Action click;               ///< The caret stands where the mouse put it.
        Hand::Action doubleClick;         ///< A digit was double-clicked.
        std::function<void(Arrow)> arrow; ///< One of the arrow keys.
        std::function<void(char)> key;    ///< A character key.
    };

    BitRow(const Hand& hand, ElementRef<TextBox> element, Actions actions, QWidget* parent);

    /// Shows the element on the grid; `changed` has a '1' for each digit of the text, in its order,
    /// that hasn't been sent yet.
    void Sync(const BitGrid& grid, const std::string& changed);
    /// The place of the caret's cell, for scrolling it into view.
    QRect CaretCell() const;
    QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    int CaretColumn() const { return caret_ / 3; }
    QRect Cell(int column) const;
    void PaintCell(QPainter& painter, int column) const;
    void PutCaret(int position, int length);

    const Hand& hand_;
    ElementRef<TextBox> element_;
    Actions actions_;
    BitGrid grid_;
    std::string text_;    ///< The element's text as it was painted.
    std::string changed_; ///< Marks of the digits that wait to be sent.
    int caret_ = 0, selected_ = 0;
};

} // namespace zentrel::view
