#pragma once

#include <QRectF>

#include "screens/qt/theme.h"

class QPainter;

/// The few shapes that more than one brick draws.
namespace zentrel::view {

/// A rounded box whose outline falls on whole pixels of the screen.
void PaintBox(QPainter& painter, const QRectF& rect, const QColor& fill, const QColor& outline,
              double width = 1.0);
/// The second sign of a meaning colour at the left end of a box: a triangle that warns, a round
/// stop sign for an error.
void PaintMeaningSign(QPainter& painter, const QRectF& box, Meaning meaning);
/// "Typed, not yet applied": an accent frame with a pencil-like corner.
void PaintEditMarker(QPainter& painter, const QRectF& box);
/// A small triangle, pointing up or down, centred in `rect`.
void PaintArrow(QPainter& painter, const QRectF& rect, bool up, const QColor& color);

} // namespace zentrel::view
