#pragma once

#include <QPalette>

#include "form/elements.h"

namespace zentrel::view {

/// The colours that a script gave an element, beside the theme's own.
class Tint {
  public:
    /// Takes the element's colours; true when they, or the theme, have changed since the last call.
    bool Follow(const Element& element);

    bool HasFill() const { return back_ != colors::kWhite; }
    bool HasInk() const { return fore_ != colors::kButtonText || HasFill(); }
    /// The fill in the theme's shade, and text that stands on it.
    QColor Fill() const;
    QColor Ink() const;
    /// A palette that has them in these roles, the system's colours in all others.
    QPalette Palette(QPalette::ColorRole fill, QPalette::ColorRole ink) const;

  private:
    Color back_ = colors::kWhite;
    Color fore_ = colors::kButtonText;
    bool dark_ = false;
};

} // namespace zentrel::view
