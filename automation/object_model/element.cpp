#include "automation/object_model/element.h"

#include "device/errors.h"
#include "session/frm_part.h"

namespace zentrel::objects {

namespace {

ObjectRef ItemOf(const ObjectRef& array, int index) {
    const ElementPlace& place = PlaceOf(array);
    return ElementAt(*place.row, *place.frm, index);
}

int CountOf(const ObjectRef& array) {
    const ElementPlace& place = PlaceOf(array);
    return place.row->count(*place.row, *place.frm);
}

int LBoundOf(const ObjectRef& array) {
    return PlaceOf(array).row->first;
}

int UBoundOf(const ObjectRef& array) {
    return LBoundOf(array) + CountOf(array) - 1;
}

/// An array of elements: `Item` by number, and its bounds.
const ClassTable& ArrayTable() {
    static const ClassTable table = [] {
        Walk walk;
        walk.count = &CountOf;
        walk.item = [](const ObjectRef& array, int position) -> Value {
            return ItemOf(array, LBoundOf(array) + position - 1);
        };
        walk.key = [](const ObjectRef&, int) { return std::string(); };
        return ClassTable("ControlArray",
                          {
                              Routine<&ItemOf>("Item", {"Index"}),
                              ReadOnly<&CountOf>("Count"),
                              ReadOnly<&LBoundOf>("LBound"),
                              ReadOnly<&UBoundOf>("UBound"),
                          },
                          {.defaultMember = "Item", .walk = walk});
    }();
    return table;
}

ObjectRef Reference(const ClassTable& table, FrmPart& frm, const ElementRow& row, int index) {
    return {table, std::make_shared<ElementPlace>(ElementPlace{&frm, &row, index})};
}

Value ReadElement(const Member& member, const ObjectRef& window, Arguments arguments) {
    const auto& row = *static_cast<const ElementRow*>(member.detail);
    auto& frm = window.As<FrmPart>();
    const bool numbered = !arguments.empty() && !arguments.front().IsEmpty();
    if (numbered) return ElementAt(row, frm, ToInt32(arguments.front()));
    if (row.form == ElementRow::Form::Array) return Reference(ArrayTable(), frm, row, 0);
    return ElementAt(row, frm, 0);
}

} // namespace

const ElementPlace& PlaceOf(const ObjectRef& element) {
    return *static_cast<const ElementPlace*>(element.raw());
}

void* ResolveElement(void* place) {
    const auto& [frm, row, index] = *static_cast<const ElementPlace*>(place);
    if (void* element = row->find(*row, *frm, index)) return element;
    throw NotFound(row->name, std::to_string(index));
}

ObjectRef ElementAt(const ElementRow& row, FrmPart& frm, int index) {
    if (row.find(row, frm, index) == nullptr) throw NotFound(row.name, std::to_string(index));
    return Reference(*row.table(), frm, row, index);
}

std::vector<Member> ElementMembers(std::span<const ElementRow> rows) {
    std::vector<Member> members;
    members.reserve(rows.size());
    for (const ElementRow& row : rows) {
        Member& member = members.emplace_back();
        member.name = row.name;
        member.type = Type::Object;
        member.read = &ReadElement;
        member.detail = &row;
        if (row.form != ElementRow::Form::Array) member.gives = row.table;
        if (row.form != ElementRow::Form::Single) {
            member.parameters = {{.name = "Index", .type = Type::Integer32, .optional = true}};
        }
    }
    return members;
}

std::vector<Member> Joined(std::initializer_list<std::vector<Member>> lists) {
    std::vector<Member> all;
    for (const std::vector<Member>& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

} // namespace zentrel::objects
