#pragma once

#include <functional>
#include <string>

#include <QLineEdit>

#include "screens/qt/hand.h"

namespace zentrel::view {

class SpinnerButtons;

/// An entry box bound to its element. Every keystroke and every selection goes into the element at
/// once; only Enter, and leaving for another element of the window, apply it.
class EntryBox : public QLineEdit {
  public:
    struct Actions {
        Hand::Action enter = {};    ///< The Enter key, which is consumed.
        Hand::Action leave = {};    ///< Another element of the window took the focus.
        Hand::Action typed = {};    ///< Any other key that changed the text.
        Hand::Action help = {};     ///< The right mouse button; none keeps the edit menu.
        Hand::Action stepUp = {};   ///< The up key and the wheel, while the box has the focus.
        Hand::Action stepDown = {}; ///< The down key and the wheel.
    };

    EntryBox(const Hand& hand, ElementRef<TextBox> element, Actions actions, QWidget* parent);

    /// Shows the element: text, flags, meaning colour.
    void Sync();
    /// Puts up and down buttons into the right end of the box.
    void Attach(SpinnerButtons* buttons);
    /// Whether something stands in the box that hasn't been applied.
    bool typed() const { return typed_; }
    const TextBox* element() const { return element_.get(); }

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void WriteText(const QString& text);
    void WriteSelection();
    void Restore();
    void SyncColors(const TextBox& box);
    void SyncSelection(const TextBox& box);
    void PlaceButtons();
    QRect TextRect() const;
    bool PaintElided();

    const Hand& hand_;
    ElementRef<TextBox> element_;
    Actions actions_;
    SpinnerButtons* buttons_ = nullptr;
    std::string shown_;   ///< The element's text as the widget has it.
    std::string applied_; ///< What the model last put there: Esc brings it back.
    bool typed_ = false;
    bool entered_ = false; ///< Enter has applied what stands there: leaving doesn't do it again.
    Color back_ = colors::kWhite;
    Color fore_ = colors::kButtonText;
    bool dark_ = false;
    int wheel_ = 0;
};

} // namespace zentrel::view
