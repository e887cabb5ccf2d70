#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "device/upward.h"
#include "form/elements.h"

namespace zentrel {

/// One place of the menu bar. `Caption` has "&" ahead of the access letter.
struct MenuNode : MenuItem {
    enum class Kind {
        Entry,     ///< a click acts
        Separator, ///< a line
        Submenu,   ///< opens `children`
        Array,     ///< stands for its `children`, which are entries numbered from 0
    };

    Kind kind = Kind::Entry;
    std::string name;     ///< The element's name; the items of an array bear the array's.
    std::string shortcut; ///< "Ctrl+L", "F2"; empty for none.
    bool checkable = false;
    /// What follows the caption stands as it is: a device or mode name, whose "&" is a letter.
    bool plainCaption = false;
    std::deque<MenuNode> children;

    /// What a click does. On an array: with the item's number. Empty: the entry is disabled,
    /// because what it acts on isn't there.
    std::function<void(int index)> Click;
};

/// The menu bar as data: every menu and entry in its order, with name, caption and shortcut. What
/// an entry does is connected by whoever owns that; an entry without an action stands disabled.
class MenuModel : public MenuOptions {
  public:
    MenuModel();

    /// The menus from left to right.
    const std::deque<MenuNode>& Bar() const { return bar_; }

    /// A menu, entry or array by its element's name. Throws NotFound.
    MenuNode& operator()(std::string_view name);
    const MenuNode& operator()(std::string_view name) const;
    /// Item `index` of an array. Throws NotFound.
    MenuNode& operator()(std::string_view array, int index);

    /// Gives an entry its action and enables it.
    void Connect(std::string_view name, std::function<void()> action);
    /// The same for all items of an array, present and future.
    void ConnectArray(std::string_view name, std::function<void(int)> action);

    /// A click of the user: nothing happens on what is hidden or disabled, as in the window.
    void Click(std::string_view name);
    void Click(std::string_view array, int index);

    int ItemCount(std::string_view array) const;
    /// Makes sure that the array has an item of that number, the ones ahead of it included; new
    /// ones start hidden. Names of devices and modes: see MenuNode::plainCaption.
    MenuNode& MakeItem(std::string_view array, int index);
    /// Takes the items from `count` up away.
    void TrimItems(std::string_view array, int count);

    bool AutoReloadWithChanges() const override;

    /// Grows when items were made or taken away; captions, marks and visibility are looked at.
    std::uint64_t layout() const { return layout_; }

  private:
    std::deque<MenuNode> bar_;
    std::uint64_t layout_ = 0;
};

} // namespace zentrel
