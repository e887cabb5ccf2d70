#include "automation/dbus/service_objects.h"

#include "automation/application/application_class.h"
#include "automation/dbus/path_names.h"

namespace zentrel::dbus {

using objects::ClassOf;
using objects::ObjectRef;

ServiceObjects::ServiceObjects(FrmPart& frm, Application& application, Reception& reception,
                               WireFeed& wire)
    : reception_(reception), front_(ObjectRef::Unowned(*ClassOf<Reception>(), reception)),
      application_(objects::RefTo(application)),
      wire_(ObjectRef::Unowned(*ClassOf<WireFeed>(), wire)),
      device_(std::string(kPart), objects::RefTo(frm.part)) {}

// The number of the client's object that stands at a path, or 0.
int ServiceObjects::ClientAt(std::string_view path) const {
    if (!path.starts_with(kApplication)) return 0;
    path.remove_prefix(kApplication.size());
    if (path.empty() || path.front() != '/') return 0;
    const int number = PositionIn(path.substr(1));
    return reception_.clients().Holds(number) ? number : 0;
}

std::vector<ObjectRef> ServiceObjects::At(std::string_view path) const {
    if (path == kFrontDoor) return {front_};
    if (path == kApplication) return {application_};
    if (path == kWire) return {wire_};
    if (const int number = ClientAt(path)) {
        const auto client = std::make_shared<ClientObject>(reception_, number);
        return {application_, {*ClassOf<ClientObject>(), client}};
    }
    if (ObjectRef object = device_.Find(path)) return {std::move(object)};
    return {};
}

std::vector<std::string> ServiceObjects::Children(std::string_view path) const {
    if (path == kFrontDoor) return {"Application", "Part", "Wire"};
    if (path == kApplication) {
        std::vector<std::string> numbers;
        for (const auto& [number, owner] : reception_.clients().owners())
            numbers.push_back(std::to_string(number));
        return numbers;
    }
    const ObjectRef object = device_.Find(path);
    return object ? device_.Children(object) : std::vector<std::string>();
}

void ServiceObjects::Walk(std::string_view manager, const ObjectTree::Visit& visit) const {
    if (manager == kFrontDoor) {
        visit(std::string(kApplication), application_);
        visit(std::string(kWire), wire_);
        visit(std::string(kPart), device_.root());
    }
    for (const std::string& child : device_.Children(device_.root())) {
        const std::string path = device_.path() + "/" + child;
        device_.Walk(path, device_.Find(path), visit);
    }
}

std::string ServiceObjects::PathOf(const ObjectRef& object) const {
    if (&object.table() != ClassOf<ClientObject>()) return device_.PathOf(object);
    return std::string(kApplication) + "/" + std::to_string(object.As<ClientObject>().number);
}

} // namespace zentrel::dbus
