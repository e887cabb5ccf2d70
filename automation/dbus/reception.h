#pragma once

#include <memory>
#include <string>

#include "automation/application/clients.h"
#include "automation/object_model/classes.h"

namespace zentrel {

class WindowFrame;

namespace dbus {

class Reception;

/// An `Application` object of a client's own, as far as it differs from the program's.
struct ClientObject {
    ClientObject(Reception& where, int its) : reception(where), number(its) {}

    Reception& reception;
    int number;

    /// The caller ends it; throws BadCall when it is another caller's.
    void Release();
};

/// What callers find at the program's front door.
class Reception {
  public:
    Reception(Clients& clients, WindowFrame& frame) : clients_(clients), frame_(frame) {}

    /// An `Application` object of the caller's own.
    objects::ObjectRef Create();
    /// Brings the window to the front, as a second start of the program does.
    void Raise();

    /// Who makes the call that is being served.
    std::string caller;

    Clients& clients() { return clients_; }

  private:
    Clients& clients_;
    WindowFrame& frame_;
};

} // namespace dbus

namespace objects {
template<>
const ClassTable* ClassOf<dbus::Reception>();
template<>
const ClassTable* ClassOf<dbus::ClientObject>();
} // namespace objects

} // namespace zentrel
