#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "form/elements.h"

namespace zentrel {

class cClkDist;
class cPart;

/// The internal loop filter of a clock conditioner: R3, R4 and the pair C3/C4 are list fields of
/// the part file, of which a block knows the names.

/// The text of a C3/C4 entry without units: digits and commas stay, anything else goes, and with a
/// unit go the digits inside its word. "0 pF, 10 pF" is "0,10".
std::string ReducedC3C4(std::string_view text);

/// C3 and C4 of an entry, in the list's unit.
struct FilterPair {
    std::int16_t C3 = 0;
    std::int16_t C4 = 0;
};
/// Both numbers of an entry; nothing when a side of the comma is missing or no 16-bit number.
std::optional<FilterPair> ReadC3C4(std::string_view text);

enum class MouseButton { Left, Right, Other };

/// Clicks on the values in a block's diagram: the left button steps up, the right one down. R3 and
/// R4 step their field; C3 and C4 go round among the entries that keep the other capacitance. A
/// block without the component ignores the click. Refresh and load follow, whatever the menu says.
void ClickR3(cClkDist& block, MouseButton button);
void ClickR4(cClkDist& block, MouseButton button);
void ClickC3(cClkDist& block, MouseButton button);
void ClickC4(cClkDist& block, MouseButton button);

/// Writes the present values into the diagram's labels. Labels of absent components are hidden.
void ShowLoopFilter(cClkDist& block);

/// The dialog "Loop Filter". Its lists work on the last block of the device, while its refresh
/// follows the current tab. It holds no state of its own.
class frmLoopFilter {
  public:
    explicit frmLoopFilter(cPart& part);
    frmLoopFilter(const frmLoopFilter&) = delete;
    frmLoopFilter& operator=(const frmLoopFilter&) = delete;

    std::string Caption = "Loop Filter";
    bool Visible = false;
    bool Modal = false;         ///< Shown ahead of everything else until it is closed.
    ListBox cbR3, cbR4, cbC3C4; ///< Disabled when the block lacks the component.
    Button cmdClose;

    /// Fills the lists and shows the dialog. Without a clock block the lists stay as they are.
    void Form_Load();
    void cmdClose_Click() { Visible = false; }
    /// Selects the present entries of the block on the current tab; nothing on other tabs.
    void UpdateLoopFilterDisplay();

  private:
    void Choose(std::string_view element, std::string cClkDist::*name, const ListBox& list);

    cPart& part_;
};

} // namespace zentrel
