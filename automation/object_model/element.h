#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "automation/object_model/bind.h"

namespace zentrel {

class FrmPart;

namespace objects {

/// One name of the window's elements: a single element, or an array of them by number. A row is
/// data of the program; elements are found through it anew at each use.
struct ElementRow {
    enum class Form : std::uint8_t {
        Single, ///< One element.
        Array,  ///< Numbered elements; without a number, the array itself.
        Lone,   ///< An array of one: the element, with or without its number 0.
    };

    std::string_view name;
    Form form = Form::Single;
    int first = 0; ///< The lowest number of an array.
    /// The class of the elements.
    const ClassTable* (*table)() = nullptr;
    /// How many numbers an array counts from `first` on.
    int (*count)(const ElementRow& row, FrmPart& frm) = nullptr;
    /// Element `index`, as a pointer to the struct that its class works on; null where there is
    /// none.
    void* (*find)(const ElementRow& row, FrmPart& frm, int index) = nullptr;
    /// What follows when an outsider selects an option, moves a scroll bar or turns a menu's check
    /// mark, as a click would have it. Empty: the element changes, and nothing follows.
    void (*act)(const ElementRow& row, FrmPart& frm, int index, int value) = nullptr;
};

/// Where an outsider's reference looks for its element.
struct ElementPlace {
    FrmPart* frm = nullptr;
    const ElementRow* row = nullptr;
    int index = 0;
};
const ElementPlace& PlaceOf(const ObjectRef& element);
/// The resolver of all element classes: from the place to the element. Throws NotFound when it has
/// gone.
void* ResolveElement(void* place);

/// Element `index` of a row. Throws NotFound with the row's name where there is none.
ObjectRef ElementAt(const ElementRow& row, FrmPart& frm, int index);

/// The members that hand out the elements of `rows`, for a class whose object is the window. The
/// rows must live as long as the class.
std::vector<Member> ElementMembers(std::span<const ElementRow> rows);

/// Joins lists of members in their order.
std::vector<Member> Joined(std::initializer_list<std::vector<Member>> lists);

} // namespace objects
} // namespace zentrel
