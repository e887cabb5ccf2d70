#pragma once

#include <string>

#include <QPlainTextEdit>

#include "screens/qt/hand.h"

namespace zentrel::view {

/// A list as text, bound to an element: one line an entry, never typed into. A click or double
/// click goes to the model with the caret where it fell; the model says what is selected.
class LineList : public QPlainTextEdit {
  public:
    LineList(const Hand& hand, ElementRef<TextBox> element, QWidget* parent);
    void onClick(Hand::Action click) { click_ = std::move(click); }
    void onDoubleClick(Hand::Action click) { doubleClick_ = std::move(click); }

    void Sync();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

  private:
    void WriteSelection();
    int ToElement(int position) const;
    int FromElement(int offset) const;

    const Hand& hand_;
    ElementRef<TextBox> element_;
    Hand::Action click_, doubleClick_;
    std::string shown_;
};

} // namespace zentrel::view
