#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/application/application.h"
#include "automation/dbus/object_tree.h"
#include "automation/dbus/reception.h"
#include "automation/dbus/wire_feed.h"

namespace zentrel::dbus {

inline constexpr std::string_view kFrontDoor = "/org/zentrel";
inline constexpr std::string_view kApplication = "/org/zentrel/Application";
inline constexpr std::string_view kWire = "/org/zentrel/Wire";
inline constexpr std::string_view kPart = "/org/zentrel/Part";

/// All objects of the service: the front door, the program's `Application` and those of its
/// clients, the wire, and the device with what it holds.
class ServiceObjects : public Paths {
  public:
    ServiceObjects(FrmPart& frm, Application& application, Reception& reception, WireFeed& wire);

    /// What stands at a path, an interface each; empty when nothing does.
    std::vector<objects::ObjectRef> At(std::string_view path) const;
    /// The path elements below it.
    std::vector<std::string> Children(std::string_view path) const;
    /// Whether all objects below it can be listed from here.
    static bool IsManager(std::string_view path) { return path == kFrontDoor || path == kPart; }
    /// Walks what a manager lists.
    void Walk(std::string_view manager, const ObjectTree::Visit& visit) const;

    objects::ObjectRef Find(std::string_view path) const override { return device_.Find(path); }
    std::string PathOf(const objects::ObjectRef& object) const override;

  private:
    int ClientAt(std::string_view path) const;

    Reception& reception_;
    objects::ObjectRef front_;
    objects::ObjectRef application_;
    objects::ObjectRef wire_;
    ObjectTree device_;
};

} // namespace zentrel::dbus
