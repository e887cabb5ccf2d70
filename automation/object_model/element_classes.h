#pragma once

#include <array>
#include <type_traits>

#include "automation/object_model/collection.h"
#include "form/elements.h"

/// The classes of the window's elements: for each kind the properties usual for it.
namespace zentrel {

class StatusBar;
class TabModel;

namespace objects {

template<>
const ClassTable* ClassOf<TextBox>();
template<>
const ClassTable* ClassOf<Label>();
template<>
const ClassTable* ClassOf<ListBox>();
template<>
const ClassTable* ClassOf<CheckBox>();
template<>
const ClassTable* ClassOf<Option>();
template<>
const ClassTable* ClassOf<Button>();
template<>
const ClassTable* ClassOf<Frame>();
template<>
const ClassTable* ClassOf<Shape>();
template<>
const ClassTable* ClassOf<Line>();
template<>
const ClassTable* ClassOf<Spinner>();
template<>
const ClassTable* ClassOf<ScrollBar>();
template<>
const ClassTable* ClassOf<Timer>();
template<>
const ClassTable* ClassOf<MenuItem>();
/// `tabPart`: the strip of screens, with its tabs by number.
template<>
const ClassTable* ClassOf<TabModel>();
template<>
const ClassTable* ClassOf<StatusBar>();

/// The kind of an element's struct: itself, or the kind that it builds on.
template<typename T>
using KindOf = std::conditional_t<std::is_base_of_v<Timer, T>, Timer,
                                  std::conditional_t<std::is_base_of_v<MenuItem, T>, MenuItem, T>>;

/// An element as its class takes it.
template<typename T>
void* AsElement(T& element) {
    return static_cast<KindOf<T>*>(&element);
}

} // namespace objects
} // namespace zentrel
