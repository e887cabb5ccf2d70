#include "automation/object_model/element.h"

#include <memory>
#include <string>

#include "automation/object_model/bind.h"
#include "session/frm_part.h"

namespace zentrel::objects {

namespace {

void* Resolve(void* place) {
    const auto& at = *static_cast<const ElementPlace*>(place);
    if (void* element = at.name->find(*at.form, at.index)) return element;
    throw NotFound(at.name->name, std::to_string(at.index));
}

const ElementPlace& PlaceOf(const ObjectRef& object) {
    return *static_cast<const ElementPlace*>(object.raw());
}

ObjectRef RefTo(FrmPart& form, const ElementName& name, int index) {
    if (name.find(form, index) == nullptr) throw NotFound(name.name, std::to_string(index));
    return {*name.table(), std::make_shared<ElementPlace>(ElementPlace{&form, &name, index})};
}

// A control array as an object of its own: its elements by index.
Member::Kind constexpr kProperty = Member::Kind::Property;

ElementName::Range RangeOf(const ObjectRef& array) {
    const auto& at = PlaceOf(array);
    return at.name->range ? at.name->range(*at.form) : ElementName::Range{};
}

std::vector<int> Indices(const ObjectRef& array) {
    const auto& at = PlaceOf(array);
    const auto range = RangeOf(array);
    std::vector<int> indices;
    for (int index = range.first; index <= range.last; ++index)
        if (at.name->find(*at.form, index) != nullptr) indices.push_back(index);
    return indices;
}

ObjectRef ItemOf(const ObjectRef& array, std::int32_t index) {
    const auto& at = PlaceOf(array);
    return RefTo(*at.form, *at.name, index);
}

int CountOf(const ObjectRef& array) {
    return static_cast<int>(Indices(array).size());
}

const ClassTable* ArrayTable() {
    Walk walk;
    walk.count = &CountOf;
    walk.item = [](const ObjectRef& array, int position) -> Value {
        return ItemOf(array, Indices(array).at(static_cast<std::size_t>(position) - 1));
    };
    walk.key = [](const ObjectRef&, int) { return std::string(); };
    static const ClassTable table(
        "ControlArray",
        {
            Routine<&ItemOf>("Item", {"Index"}),
            ReadOnly<&CountOf>("Count"),
            ReadOnly<[](const ObjectRef& array) -> std::int32_t { return RangeOf(array).first; }>(
                "LBound"),
            ReadOnly<[](const ObjectRef& array) -> std::int32_t { return RangeOf(array).last; }>(
                "UBound"),
        },
        {.defaultMember = "Item", .walk = walk});
    return &table;
}

Value ReadElement(const Member& member, const ObjectRef& object, Arguments arguments) {
    const auto& name = *static_cast<const ElementName*>(member.detail);
    auto& form = object.As<FrmPart>();
    if (!name.array) return RefTo(form, name, 0);
    if (!arguments.empty()) return RefTo(form, name, ToInt32(arguments[0]));
    return ObjectRef(*ArrayTable(), std::make_shared<ElementPlace>(ElementPlace{&form, &name, 0}));
}

using Rows = std::vector<Member>;

template<typename T>
Rows Common() {
    return {
        Field<&T::Tag, T>("Tag"),
        Field<&T::Visible, T>("Visible"),
        Field<&T::Enabled, T>("Enabled"),
        Field<&T::BackColor, T>("BackColor"),
        Field<&T::ForeColor, T>("ForeColor"),
        Field<&T::Left, T>("Left"),
        Field<&T::Top, T>("Top"),
        Field<&T::Width, T>("Width"),
        Field<&T::Height, T>("Height"),
    };
}

Member Index() {
    return ReadOnly<[](const ObjectRef& element) -> std::int32_t {
        return PlaceOf(element).index;
    }>("Index");
}

const ClassTable Table(std::string_view name, Rows own, Rows common,
                       std::string_view defaultMember = {}) {
    for (Member& member : common)
        own.push_back(std::move(member));
    own.push_back(Index());
    return {name, std::move(own), {.defaultMember = defaultMember, .resolve = &Resolve}};
}

Value ListItem(ListBox& list, std::int32_t index) {
    if (index < 0 || index >= list.ListCount())
        throw OutOfRange("List(" + std::to_string(index) + ")");
    return list.List[static_cast<std::size_t>(index)];
}

void Select(ListBox& list, std::int32_t index) {
    if (!list.SetListIndex(index)) throw OutOfRange("ListIndex " + std::to_string(index));
}

std::string SelectedText(ListBox& list) {
    return list.ListIndex < 0 ? std::string() : list.List[static_cast<std::size_t>(list.ListIndex)];
}

} // namespace

std::vector<Member> ElementMembers(const std::vector<ElementName>& names) {
    std::vector<Member> members;
    members.reserve(names.size());
    for (const ElementName& name : names) {
        Member member;
        member.name = name.name;
        member.kind = kProperty;
        member.type = Type::Object;
        if (name.array) member.parameters = {Parameter{"Index", Type::Integer32, true, false}};
        member.read = &ReadElement;
        member.gives = name.array ? &ArrayTable : name.table;
        member.detail = &name;
        members.push_back(std::move(member));
    }
    return members;
}

template<>
const ClassTable* ElementClassOf<TextBox>() {
    using T = TextBox;
    static const ClassTable table = Table("TextBox",
                                          {Field<&T::Text>("Text"), Field<&T::SelStart>("SelStart"),
                                           Field<&T::SelLength>("SelLength")},
                                          Common<T>(), "Text");
    return &table;
}

template<>
const ClassTable* ElementClassOf<Label>() {
    static const ClassTable table =
        Table("Label", {Field<&Label::Caption>("Caption")}, Common<Label>(), "Caption");
    return &table;
}

template<>
const ClassTable* ElementClassOf<Button>() {
    static const ClassTable table =
        Table("CommandButton", {Field<&Button::Caption>("Caption")}, Common<Button>());
    return &table;
}

template<>
const ClassTable* ElementClassOf<Frame>() {
    static const ClassTable table =
        Table("Frame", {Field<&Frame::Caption>("Caption")}, Common<Frame>());
    return &table;
}

template<>
const ClassTable* ElementClassOf<CheckBox>() {
    using T = CheckBox;
    static const ClassTable table =
        Table("CheckBox",
              {Field<&T::Caption>("Caption"),
               Property<[](T& box) -> std::int16_t { return box.Value ? 1 : 0; },
                        [](T& box, bool value) { box.SetValue(value); }>("Value")},
              Common<T>(), "Value");
    return &table;
}

template<>
const ClassTable* ElementClassOf<Option>() {
    using T = Option;
    static const ClassTable table =
        Table("OptionButton", {Field<&T::Caption>("Caption"), Field<&T::Value>("Value")},
              Common<T>(), "Value");
    return &table;
}

template<>
const ClassTable* ElementClassOf<ListBox>() {
    using T = ListBox;
    static const ClassTable table = Table(
        "ComboBox",
        {Property<[](T& list) -> std::int32_t { return list.ListIndex; }, &Select>("ListIndex"),
         ReadOnly<&ListItem>("List", {"Index"}), ReadOnly<&T::ListCount>("ListCount"),
         Routine<&T::AddItem>("AddItem", {"Item"}), Routine<&T::Clear>("Clear"),
         ReadOnly<&SelectedText>("Text")},
        Common<T>(), "Text");
    return &table;
}

template<>
const ClassTable* ElementClassOf<Spinner>() {
    static const ClassTable table = Table("SpinButton", {}, Common<Spinner>());
    return &table;
}

template<>
const ClassTable* ElementClassOf<Shape>() {
    using T = Shape;
    static const ClassTable table = Table(
        "Shape", {Field<&T::BorderWidth>("BorderWidth"), Field<&T::BorderColor>("BorderColor")},
        Common<T>());
    return &table;
}

template<>
const ClassTable* ElementClassOf<Line>() {
    using T = Line;
    static const ClassTable table = Table(
        "Line", {Field<&T::BorderWidth>("BorderWidth"), Field<&T::BorderColor>("BorderColor")},
        Common<T>());
    return &table;
}

template<>
const ClassTable* ElementClassOf<ScrollBar>() {
    using T = ScrollBar;
    static const ClassTable table =
        Table("ScrollBar",
              {Field<&T::Min>("Min"), Field<&T::Max>("Max"), Field<&T::Value>("Value"),
               Field<&T::LargeChange>("LargeChange")},
              Common<T>(), "Value");
    return &table;
}

template<>
const ClassTable* ElementClassOf<Timer>() {
    using T = Timer;
    static const ClassTable table =
        Table("Timer", {Field<&T::Enabled>("Enabled"), Field<&T::Interval>("Interval")}, {});
    return &table;
}

template<>
const ClassTable* ElementClassOf<MenuItem>() {
    using T = MenuItem;
    static const ClassTable table =
        Table("Menu",
              {Field<&T::Caption>("Caption"), Field<&T::Visible>("Visible"),
               Field<&T::Enabled>("Enabled"), Field<&T::Checked>("Checked")},
              {});
    return &table;
}

} // namespace zentrel::objects
