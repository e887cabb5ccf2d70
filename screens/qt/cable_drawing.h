#pragma once

#include <vector>

#include <QPointF>
#include <QWidget>

#include "form/elements.h"

namespace zentrel {
class PortScreen;
}

namespace zentrel::view {

/// The cable between the board's header and the DB-25 connector, each connection in the colour of
/// its function, with the legend below.
class CableDrawing : public QWidget {
  public:
    CableDrawing(const PortScreen& model, QWidget* parent);

    void Sync();
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    QPointF HeaderPin(int pin) const;
    QPointF DbPin(int pin) const;
    std::vector<QPointF> Wire(int headerPin) const;
    void PaintHeader(QPainter& painter) const;
    void PaintConnector(QPainter& painter) const;
    void PaintWires(QPainter& painter) const;
    void PaintLegend(QPainter& painter) const;
    void PaintPin(QPainter& painter, const QPointF& at, const Shape& pin, int number,
                  bool round) const;
    /// Everything that the drawing depends on, in one row of numbers.
    std::vector<Color> State() const;

    const PortScreen& model_;
    std::vector<Color> state_;
};

} // namespace zentrel::view
