#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>

#include "automation/dbus/service_objects.h"

namespace zentrel {

class cPart;

namespace dbus {

/// Which objects came and went since it was told last. Nothing is compared before somebody has
/// asked for a list, nor while the device's collections stand as they stood.
class ObjectNews {
  public:
    ObjectNews(const cPart& part, const ServiceObjects& objects) : part_(part), objects_(objects) {}

    /// Somebody got the list of all objects: changes are told from now on.
    void Begin();

    std::function<void(const std::string& path, const objects::ObjectRef& object)> Came;
    std::function<void(const std::string& path, const objects::ClassTable& table)> Went;
    /// To be called behind events; cheap when nothing changed.
    void Tell();

  private:
    struct Shape {
        std::string device;
        std::array<int, 6> counts{};
        const void* first = nullptr;
        bool operator==(const Shape&) const = default;
    };
    using Listed = std::map<std::string, const objects::ClassTable*>;

    Shape Now() const;

    const cPart& part_;
    const ServiceObjects& objects_;
    bool asked_ = false;
    Shape told_;
    Listed listed_;
};

} // namespace dbus
} // namespace zentrel
