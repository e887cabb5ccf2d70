#pragma once

#include <QTimer>
#include <QWidget>

#include "screens/qt/hand.h"

namespace zentrel::view {

/// Up and down buttons, one above the other. Holding the mouse repeats.
class SpinnerButtons : public QWidget {
  public:
    SpinnerButtons(const Hand& hand, ElementRef<Spinner> element, Hand::Action up,
                   Hand::Action down, QWidget* parent);

    void Sync();
    QSize sizeHint() const override;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    enum class Part { None, Up, Down };
    Part PartAt(const QPointF& at) const;
    void Step();
    void Stop();

    const Hand& hand_;
    ElementRef<Spinner> element_;
    Hand::Action up_, down_;
    Part pressed_ = Part::None, hovered_ = Part::None;
    QTimer repeat_;
};

} // namespace zentrel::view
