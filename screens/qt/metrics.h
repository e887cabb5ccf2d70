#pragma once

#include <QFont>

namespace zentrel::view {

/// One grid for the whole window, in logical pixels, scaled with the system's font: a unit is 8
/// pixels at the usual font size.
struct Metrics {
    /// The grid for the application's present font.
    static const Metrics& Now();

    int unit;      ///< One grid step.
    int half;      ///< Half a step: between things that belong together.
    int boxHeight; ///< Entry boxes, lists, buttons.
    int rowHeight; ///< One line of check boxes or table rows.
    int radius;    ///< Corners of boxes.
    int textHeight;

    /// `count` grid steps.
    int Units(int count) const { return unit * count; }
    /// Width of a box that shows `digits` digits, its padding included.
    int DigitsWidth(int digits) const;
};

/// The system's monospaced face at the size of the application's font.
QFont MonospacedFont();

/// The application's font, `steps` points larger or smaller.
QFont UiFont(double steps = 0, bool bold = false);

} // namespace zentrel::view
