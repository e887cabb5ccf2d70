#pragma once

#include <QColor>
#include <QPalette>

#include "form/elements.h"

/// What every brick of the window draws with: colours by role, taken from the system's palette.
namespace zentrel::view {

/// What a meaning colour says, for the second sign beside the colour.
enum class Meaning { None, Error, Warning, OutOfPath };

/// The colours of the present palette, by role. Meaning colours keep their hue on a light and on a
/// dark desktop; only their shade follows, so that text on them stays readable.
class Theme {
  public:
    explicit Theme(const QPalette& palette);

    /// The application's theme; recomputed when the palette changes.
    static const Theme& Now();

    bool dark;
    QColor window;   ///< Behind everything.
    QColor surface;  ///< Pages and cards, one step in front of the window.
    QColor field;    ///< Inside of entry boxes and lists.
    QColor block;    ///< Inside of a diagram's block.
    QColor line;     ///< Hairlines and the frames of boxes.
    QColor signal;   ///< Signal lines, arrows and pins of a diagram.
    QColor text;     ///< What is read.
    QColor muted;    ///< Units, captions, what stands back.
    QColor disabled; ///< Text of what can't be used now.
    QColor accent;   ///< Selection, focus, the active path.
    QColor onAccent; ///< Text on the accent.

    /// The shade in which an element's back colour is drawn; white is the field colour.
    QColor Fill(Color meaning) const;
    /// Text that is readable on `Fill(meaning)`.
    QColor InkOn(Color meaning) const;
    /// The shade in which a fore colour or a drawn sample appears on the surface.
    QColor Ink(Color meaning) const;
    /// What a back colour says.
    static Meaning MeaningOf(Color backColor);

    bool operator==(const Theme&) const = default;
};

/// A palette for the desktop `name` ("light" or "dark"); the system's own for any other name.
QPalette PaletteNamed(const QString& name);

/// Gives the application its style and palette. `name` is "light", "dark", or anything else for the
/// desktop's own; a desktop that says nothing gets ours.
void DressApplication(const QString& name);

} // namespace zentrel::view
