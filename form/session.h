#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zentrel {

/// The routes by their names in files and comparisons, which are exact.
inline constexpr std::string_view kRouteUsb = "USB";
inline constexpr std::string_view kRouteLpt = "LPT";
inline constexpr std::string_view kRouteNone = "None";

/// The session: what holds for the whole program rather than for one device. The first eleven are
/// the main window's public fields, in their declared order.
struct Session {
    std::string txtINIVersion;  ///< `VERSION` of the loaded part file.
    std::string txtINIVerDescr; ///< `VERSION_DESCRIPTION` of the loaded part file.
    std::string CommMode_Select{
        kRouteNone};         ///< The selected route; any text but "USB" and "LPT" sends nothing.
    bool bOLEServer = false; ///< An automation client holds an `Application` object.
    bool bBitsAndPinsTabTooWide = false;    ///< The fields outgrow the Bits/Pins tab.
    std::int16_t lpt_port_access = 0;       ///< True (-1) when the port driver could be opened.
    std::vector<std::string> logged_errors; ///< The error log, oldest first.
    bool msgbox_errors = false;             ///< `AddError` shows a message box too.
    bool bExecuteScripts = false;           ///< Hosted scripts may run.
    std::int16_t raw_tab_tally = 0;         ///< Count of the fixed tabs.
    std::int16_t hscPrgmBits_Max = 0;       ///< By how much the Bits/Pins tab overflows, in twips.

    /// The option "Fixed VCO Frequency": a change of crystal, comparison or output frequency keeps
    /// the VCO where it is.
    bool bVCOFixed = false;
    /// 1 while a display routine runs: an unchanged N counter then isn't written again.
    std::int16_t bDisplayUpdating = 0;

    bool isUsb() const { return CommMode_Select == kRouteUsb; }
    bool isLpt() const { return CommMode_Select == kRouteLpt; }
};

} // namespace zentrel
