#include "automation/dbus/reception.h"

#include "automation/application/window_frame.h"
#include "automation/dbus/failure.h"

namespace zentrel {
namespace dbus {

using objects::ObjectRef;

ObjectRef Reception::Create() {
    const auto object = std::make_shared<ClientObject>(*this, clients_.Create(caller));
    return {*objects::ClassOf<ClientObject>(), object};
}

void Reception::Raise() {
    frame_.BringToFront();
}

void ClientObject::Release() {
    if (!reception.clients().Release(reception.caller, number)) {
        throw BadCall("AccessDenied", "The object is another client's");
    }
}

} // namespace dbus

namespace objects {

template<>
const ClassTable* ClassOf<dbus::Reception>() {
    static const ClassTable table("Zentrel", {Routine<&dbus::Reception::Create>("Create"),
                                              Routine<&dbus::Reception::Raise>("Raise")});
    return &table;
}

template<>
const ClassTable* ClassOf<dbus::ClientObject>() {
    static const ClassTable table("Client", {Routine<&dbus::ClientObject::Release>("Release")});
    return &table;
}

} // namespace objects
} // namespace zentrel
