#pragma once

#include <array>
#include <string>
#include <string_view>

#include "device/upward.h"
#include "form/elements.h"

namespace zentrel {

/// `StatusBar1`: the route on the left, the line of the last event in the rest, and at the right
/// end a badge that nobody overlooks while no real board is driven.
class StatusBar : public StatusLine {
  public:
    struct Panel {
        std::string Text;
        int MinWidth = 0;      ///< In twips.
        bool AutoSize = false; ///< As wide as its text; else it takes all that is left.
    };

    std::array<Panel, 2> Panels{{{"", 1600, true}, {"", 5000, false}}};
    /// "SIMULATED BOARD", visible while the simulated board is on.
    Label badge;

    StatusBar();

    void StatusBar_CommMode(std::string_view mode) override;
    void StatusBar_SetString(std::string_view text) override;
    std::string StatusBar_GetString() const override { return Panels[1].Text; }
};

} // namespace zentrel
