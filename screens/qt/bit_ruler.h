#pragma once

#include <string>

#include <QWidget>

#include "screens/qt/bit_grid.h"
#include "screens/qt/hand.h"

namespace zentrel::view {

/// The bit numbers above the rows, tens over ones, and the marker over the caret's column.
class BitRuler : public QWidget {
  public:
    BitRuler(ElementRef<Label> tens, ElementRef<Label> ones, QWidget* parent);

    /// `column` is the marked one, -1 for none; `marker` is the marker's element.
    void Sync(const BitGrid& grid, const Shape& marker, int column);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void PaintMarker(QPainter& painter) const;

    ElementRef<Label> tens_, ones_;
    BitGrid grid_;
    std::string tensText_, onesText_;
    int column_ = -1;
    Color color_ = 0;
};

} // namespace zentrel::view
