#include "screens/status_bar.h"

namespace zentrel {

StatusBar::StatusBar() {
    badge.Caption = "SIMULATED BOARD";
    badge.Visible = false;
}

void StatusBar::StatusBar_CommMode(std::string_view mode) {
    Panels[0].Text = "COMM Mode: " + std::string(mode);
}

void StatusBar::StatusBar_SetString(std::string_view text) {
    Panels[1].Text = text;
}

} // namespace zentrel
