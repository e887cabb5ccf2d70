#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "partfile/ini_file.h"

/// The device catalogue, "zentrel.ini" in the program's folder: which devices stand in which menu,
/// the devices used last, and the board that the program talks to. Data alone; menus are built
/// from it elsewhere.
namespace zentrel {

/// A group of devices: one section of the catalogue, one menu.
struct DeviceFamily {
    std::string_view section;
    std::string_view menu; ///< empty: the items stand directly in the device menu
    std::string_view caption;
    std::string_view itemMenu;
    /// What SetupPartForm is given with a device of the family; nothing for the first family.
    std::optional<std::string_view> familyText;
    bool searchedForType; ///< GetPartType looks here
};

/// In the order in which the menus are built and searched.
inline constexpr std::array<DeviceFamily, 9> kDeviceFamilies{{
    {"MENU", "", "", "mnuQVXxxxx", std::nullopt, false},
    {"MENUVCO", "mnuVCO", "VCO", "mnuVCOQVXxxxx", "VCO", true},
    {"MENUSINGPLL", "mnuSingPLL", "PLL - Single Integer", "mnuSingQVXxxxx", "SingleInteger", true},
    {"MENUDUALPLL", "mnuDualPLL", "PLL - Dual Integer", "mnuDualQVXxxxx", "DualInteger", true},
    {"MENUFRACPLL", "mnuFracPLL", "PLL - Fractional", "mnuFracQVXxxxx", "Fractional", true},
    {"MENUPLLVCO", "mnuVCOPLL", "PLL + VCO", "mnuPLLVCOQVXxxxx", "PLLVCO", true},
    {"MENUTRANS", "mnuTrans", "Transceiver", "mnuTransQVXxxxx", "Transceiver", true},
    {"MENUCLKDIST", "mnuClkDist", "Clock Conditioners", "mnuClkDistQVXxxxx", "Clock Conditioners",
     false},
    {"MENUENGINEERING", "mnuEngineering", "Engineering", "mnuEngineeringQVXxxxx", "ENGINEERING",
     false},
}};

/// By the catalogue as it is on disk now: the family text of the first family that lists exactly
/// this name; empty when none does.
std::string GetPartType(IniFiles& files, std::string_view partName);

/// The list of recent devices before a catalogue is read, or when it keeps none.
inline constexpr std::array<std::string_view, 5> kInitialRecentList{"....", "....", "....", "....",
                                                                    "...."};

/// What the program reads at its start.
struct Catalogue {
    /// The device names of each of kDeviceFamilies; a family without any has no menu.
    std::array<std::vector<std::string>, kDeviceFamilies.size()> items;
    /// The recent devices, newest first: as many as the catalogue's COUNT says, or
    /// kInitialRecentList.
    std::vector<std::string> recent;
    std::vector<Problem> problems;
};

/// A missing catalogue is no problem: it lists nothing.
Catalogue ReadCatalogue(IniFiles& files);

/// Moves `partName` to the head of the list; a new name drops the last one. The list keeps its
/// length, and where the catalogue keeps no list it isn't changed.
void UpdateRecentList(IniFiles& files, std::string_view partName, std::span<std::string> list);

/// Writes the list into the catalogue, in one replacement. False when that failed.
bool SaveRecentList(IniFiles& files, std::span<const std::string> list);

/// What stands at the end of the wires.
enum class BoardChoice { kHardware, kSimulated };

/// Key BOARD of section [BENCH]; the hardware when it says nothing else.
BoardChoice ReadBoard(IniFiles& files);
bool WriteBoard(IniFiles& files, BoardChoice board);

} // namespace zentrel
