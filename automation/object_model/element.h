#pragma once

#include <string_view>
#include <vector>

#include "automation/object_model/class_table.h"
#include "form/elements.h"

namespace zentrel {

class FrmPart;

namespace objects {

/// A screen element by its name. References hold where it is, not the element: it is looked for at
/// each use, so that one kept over a change of device fails instead of reaching into nothing.
struct ElementName {
    std::string_view name;
    const ClassTable* (*table)() = nullptr; ///< The class of its kind, see below.
    bool array = false;                     ///< Has an index: `txtNCounter(1)`.
    /// The element, null where there is none of that index. A single element has index 0.
    void* (*find)(FrmPart& form, int index) = nullptr;
    /// Indices that may hold elements, first to last: what a walk tries.
    struct Range {
        int first = 0, last = -1;
    };
    Range (*range)(FrmPart& form) = nullptr;
};

/// Where a reference to an element leads.
struct ElementPlace {
    FrmPart* form;
    const ElementName* name;
    int index;
};

/// The members of an element by its kind; each is defined once, for all screens. `TextBox`,
/// `Label`, `Button`, `Frame`, `CheckBox`, `Option`, `ListBox`, `Spinner`, `Shape`, `Line`,
/// `ScrollBar`, `Timer`, `MenuItem`.
template<typename T>
const ClassTable* ElementClassOf();

namespace detail {

template<typename F>
struct FinderShape;
template<typename R, typename L>
struct FinderShape<R* (L::*)(FrmPart&) const> {
    using Kind = R;
};
template<typename R, typename L>
struct FinderShape<R* (L::*)(FrmPart&, int) const> {
    using Kind = R;
};
template<auto Find>
using KindOf =
    typename FinderShape<decltype(&std::remove_const_t<decltype(Find)>::operator())>::Kind;

} // namespace detail

/// A single element. `Find` is a lambda `(FrmPart&) -> Kind*`.
template<auto Find>
ElementName Single(std::string_view name) {
    return {.name = name,
            .table = &ElementClassOf<detail::KindOf<Find>>,
            .find = [](FrmPart& form, int index) -> void* {
                return index == 0 ? Find(form) : nullptr;
            }};
}

/// A control array. `Find` is a lambda `(FrmPart&, int index) -> Kind*`, `range` tells where its
/// indices lie.
template<auto Find>
ElementName Indexed(std::string_view name, ElementName::Range (*range)(FrmPart&)) {
    return {.name = name,
            .table = &ElementClassOf<detail::KindOf<Find>>,
            .array = true,
            .find = [](FrmPart& form, int index) -> void* { return Find(form, index); },
            .range = range};
}

/// The members of frmPart that give these elements. `names` has to live as long as the program.
std::vector<Member> ElementMembers(const std::vector<ElementName>& names);

} // namespace objects
} // namespace zentrel
