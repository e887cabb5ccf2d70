#include "screens/qt/tint.h"

#include "screens/qt/theme.h"

namespace zentrel::view {

bool Tint::Follow(const Element& element) {
    const bool dark = Theme::Now().dark;
    if (element.BackColor == back_ && element.ForeColor == fore_ && dark == dark_) return false;
    back_ = element.BackColor;
    fore_ = element.ForeColor;
    dark_ = dark;
    return true;
}

QColor Tint::Fill() const {
    return Theme::Now().Fill(back_);
}

QColor Tint::Ink() const {
    const Theme& theme = Theme::Now();
    return fore_ == colors::kButtonText ? theme.InkOn(back_) : theme.Ink(fore_);
}

QPalette Tint::Palette(QPalette::ColorRole fill, QPalette::ColorRole ink) const {
    QPalette palette;
    if (HasFill()) palette.setColor(fill, Fill());
    if (HasInk()) palette.setColor(QPalette::Active, ink, Ink());
    if (HasInk()) palette.setColor(QPalette::Inactive, ink, Ink());
    return palette;
}

} // namespace zentrel::view
