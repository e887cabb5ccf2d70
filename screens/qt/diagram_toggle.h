#pragma once

#include <string>

#include <QAbstractButton>

#include "screens/qt/hand.h"
#include "screens/qt/tint.h"

namespace zentrel::view {

/// A value of a diagram that a click switches: a pill on its block, bound to its label. Space and
/// Enter are a click. Where another mouse button has an action of its own, the value is a stepper:
/// the up and down keys step it too.
class DiagramToggle : public QAbstractButton {
  public:
    DiagramToggle(const Hand& hand, ElementRef<Label> element, Hand::Action click,
                  Hand::Action otherButton, QWidget* parent);

    void Sync();
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    const Hand& hand_;
    ElementRef<Label> element_;
    Hand::Action click_, otherButton_;
    std::string caption_;
    Tint tint_;
};

} // namespace zentrel::view
