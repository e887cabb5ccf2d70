#pragma once

#include "automation/object_model/classes.h"

namespace zentrel {

class Application;

namespace objects {

/// The operations as other programs see them: names, arguments and order.
template<>
const ClassTable* ClassOf<Application>();
ObjectRef RefTo(Application& application);

} // namespace objects
} // namespace zentrel
