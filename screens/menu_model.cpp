#include "screens/menu_model.h"

#include <array>
#include <utility>

#include "device/errors.h"
#include "device/text.h"

namespace zentrel {
namespace {

using Kind = MenuNode::Kind;

// How an entry stands when the window opens.
enum Start : unsigned { kPlain = 0, kHidden = 1, kCheckable = 2, kChecked = 4 };

struct MenuRow {
    int depth;
    Kind kind;
    std::string_view caption;
    std::string_view name;
    std::string_view shortcut = {};
    unsigned start = kPlain;
};

constexpr auto kEntry = Kind::Entry;
constexpr auto kLine = Kind::Separator;
constexpr auto kMenu = Kind::Submenu;
constexpr auto kArray = Kind::Array;

constexpr auto kMenuBar = std::to_array<MenuRow>({
    {0, kMenu, "&File", "mnuFile"},
    {1, kEntry, "&Save", "mnuSave"},
    {1, kEntry, "&Restore", "mnuRestore"},
    {1, kLine, "", "mnuLine1"},
    {1, kArray, "....", "mnuRecent"},
    {1, kLine, "", "mnuLine2"},
    {1, kEntry, "E&xit", "mnuExit"},

    {0, kMenu, "&Keyboard Controls", "mnuLoad"},
    {1, kEntry, "&Load Device", "mnuLoadPLL", "Ctrl+L"},
    {1, kMenu, "Step Frequency", "mnuStepFreq"},
    {2, kEntry, "Increase N By 1", "mnuIncN", "F2"},
    {2, kEntry, "Decrease N by 1", "mnuNDec", "F1"},
    {2, kEntry, "Increase N by 10", "mnuNInc10", "F4"},
    {2, kEntry, "Decrease N by 10", "mnuNDec10", "F3"},
    {2, kEntry, "Increase Fractional Numerator ", "mnuIncFrac", "F6"},
    {2, kEntry, "Decrease Fractional Numerator", "mnuDecFrac", "F5"},
    {1, kEntry, "Set &VCO Frequency", "mnuVCOFreq", "Ctrl+F"},
    {1, kEntry, "Set &Comparison Frequency", "mnuFcomp", "Ctrl+C"},
    {1, kEntry, "Set Cr&ystal Frequency", "mnuXtal", "Ctrl+X"},
    {1, kEntry, "Reset Port", "ResetPort"},

    {0, kMenu, "&Select Device", "mnuDevice"},
    {1, kArray, "QVX", "mnuQVXxxxx"},
    {1, kMenu, "VCO", "mnuVCO"},
    {2, kArray, "QVX", "mnuVCOQVXxxxx"},
    {1, kMenu, "PLL - Single Integer", "mnuSingPLL"},
    {2, kArray, "QVX", "mnuSingQVXxxxx"},
    {1, kMenu, "PLL - Dual Integer", "mnuDualPLL"},
    {2, kArray, "QVX", "mnuDualQVXxxxx"},
    {1, kMenu, "PLL - Fractional", "mnuFracPLL"},
    {2, kArray, "QVX", "mnuFracQVXxxxx"},
    {1, kMenu, "PLL + VCO", "mnuVCOPLL"},
    {2, kArray, "QVX", "mnuPLLVCOQVXxxxx"},
    {1, kMenu, "Transceiver", "mnuTrans"},
    {2, kArray, "QVX", "mnuTransQVXxxxx"},
    {1, kMenu, "Clock Conditioners", "mnuClkDist"},
    {2, kArray, "QVX", "mnuClkDistQVXxxxx"},
    {1, kMenu, "Engineering", "mnuEngineering"},
    {2, kArray, "QVX", "mnuEngineeringQVXxxxx"},

    {0, kMenu, "&Options", "mnuOptions"},
    {1, kEntry, "Fixed VCO Frequency", "mnuVCOFixed", "", kCheckable},
    {1, kEntry, "&AutoReload on Interval", "mnuAutoReload", "Ctrl+A", kCheckable},
    {1, kEntry, "AutoReload &with Changes", "mnuAutoReloadChange", "Ctrl+W", kCheckable | kChecked},
    {1, kEntry, "Save Device Settings", "mnuSaveDeviceSettings", "", kCheckable | kChecked},

    {0, kMenu, "&Mode", "mnuModes"},
    {1, kArray, "Mode", "mnuMode", "", kHidden},
    {1, kEntry, "&Add", "mnuAddMode"},

    {0, kMenu, "&LPT/USB", "mnuLPTUSB"},
    {1, kEntry, "&Check LPT", "CheckLPT"},
    {1, kEntry, "&USB Version", "USBVersion"},
    {1, kEntry, "&Adjust USB timing", "AdjustTiming"},

    {0, kMenu, "&Bench", "mnuBench"},
    {1, kEntry, "&Simulated Board", "mnuSimulatedBoard", "", kCheckable},
    {1, kEntry, "&Board", "mnuBoard", "", kCheckable},
    {1, kEntry, "&Wire Monitor", "mnuWireMonitor", "Ctrl+M"},

    {0, kMenu, "&Help", "mnuHelp"},
    {1, kEntry, "&Status", "mnuStatus"},
    {1, kEntry, "ORV &Wireless Webpage", "mnuORVWireless"},
    {1, kEntry, "Show &Errors", "mnuShowErrors"},
    {1, kEntry, "&About", "mnuAbout"},
});

// Recent devices have five places before the catalogue tells how many.
constexpr int kDesignRecent = 5;

MenuNode MakeNode(const MenuRow& row) {
    MenuNode node;
    node.kind = row.kind;
    node.name = row.name;
    node.Caption = row.caption;
    node.shortcut = row.shortcut;
    node.Visible = (row.start & kHidden) == 0;
    node.checkable = (row.start & kCheckable) != 0;
    node.Checked = (row.start & kChecked) != 0;
    node.Enabled = row.kind == kMenu || row.kind == kLine;
    return node;
}

MenuNode MakeArrayItem(const MenuNode& array) {
    MenuNode item;
    item.name = array.name;
    item.Caption = array.Caption;
    item.Visible = false;
    item.Enabled = static_cast<bool>(array.Click);
    item.plainCaption = true;
    return item;
}

// `Nodes` is a deque of nodes, const or not, and so is what is found.
template<typename Nodes>
auto FindIn(Nodes& nodes, std::string_view name) -> decltype(&nodes.front()) {
    for (auto& node : nodes) {
        if (EqualNoCase(node.name, name)) return &node;
        if (node.kind == kArray) continue;
        if (auto* found = FindIn(node.children, name)) return found;
    }
    return nullptr;
}

template<typename Nodes>
auto& FindOrThrow(Nodes& nodes, std::string_view name) {
    if (auto* node = FindIn(nodes, name)) return *node;
    throw NotFound("menu", name);
}

} // namespace

MenuModel::MenuModel() {
    // The chain of menus that the next row may belong to.
    std::array<MenuNode*, 3> open{};
    for (const MenuRow& row : kMenuBar) {
        auto& place =
            row.depth == 0 ? bar_ : open[static_cast<std::size_t>(row.depth - 1)]->children;
        MenuNode& node = place.emplace_back(MakeNode(row));
        open[static_cast<std::size_t>(row.depth)] = &node;
        if (row.kind == kArray) {
            node.children.push_back(MakeArrayItem(node));
            node.children.back().Visible = node.Visible;
            node.Visible = true;
        }
    }
    for (int i = 1; i < kDesignRecent; ++i)
        MakeItem("mnuRecent", i).Visible = true;
}

const MenuNode& MenuModel::operator()(std::string_view name) const {
    return FindOrThrow(bar_, name);
}

MenuNode& MenuModel::operator()(std::string_view name) {
    return FindOrThrow(bar_, name);
}

MenuNode& MenuModel::operator()(std::string_view array, int index) {
    MenuNode& node = (*this)(array);
    if (index < 0 || index >= static_cast<int>(node.children.size())) {
        throw NotFound(array, std::to_string(index));
    }
    return node.children[static_cast<std::size_t>(index)];
}

void MenuModel::Connect(std::string_view name, std::function<void()> action) {
    MenuNode& node = (*this)(name);
    node.Click = [act = std::move(action)](int) { act(); };
    node.Enabled = true;
}

void MenuModel::ConnectArray(std::string_view name, std::function<void(int)> action) {
    MenuNode& node = (*this)(name);
    node.Click = std::move(action);
    node.Enabled = true;
    for (MenuNode& item : node.children)
        item.Enabled = true;
}

void MenuModel::Click(std::string_view name) {
    const MenuNode& node = (*this)(name);
    if (!node.Visible || !node.Enabled || !node.Click) return;
    const auto action = node.Click; // the action may rebuild the menu
    action(-1);
}

void MenuModel::Click(std::string_view array, int index) {
    const MenuNode& item = (*this)(array, index);
    if (!item.Visible || !item.Enabled) return;
    if (const auto action = (*this)(array).Click) action(index);
}

int MenuModel::ItemCount(std::string_view array) const {
    return static_cast<int>((*this)(array).children.size());
}

MenuNode& MenuModel::MakeItem(std::string_view array, int index) {
    MenuNode& node = (*this)(array);
    while (static_cast<int>(node.children.size()) <= index) {
        node.children.push_back(MakeArrayItem(node));
        ++layout_;
    }
    return (*this)(array, index);
}

void MenuModel::TrimItems(std::string_view array, int count) {
    auto& items = (*this)(array).children;
    while (static_cast<int>(items.size()) > count) {
        items.pop_back();
        ++layout_;
    }
}

bool MenuModel::AutoReloadWithChanges() const {
    return (*this)("mnuAutoReloadChange").Checked;
}

} // namespace zentrel
