#include "automation/object_model/element_classes.h"

#include "automation/object_model/element.h"
#include "session/frm_part.h"

namespace zentrel::objects {

namespace {

using Rows = std::vector<Member>;

int IndexOf(const ObjectRef& element) {
    const ElementPlace& place = PlaceOf(element);
    if (place.row->form == ElementRow::Form::Single) {
        throw Error(343, "Object not an array: " + std::string(place.row->name));
    }
    return place.index;
}

std::string NameOf(const ObjectRef& element) {
    return std::string(PlaceOf(element).row->name);
}

Rows Identity() {
    return {ReadOnly<&NameOf>("Name"), ReadOnly<&IndexOf>("Index")};
}

// What every visible element has.
template<typename E>
Rows Common() {
    return Joined({{
                       Field<&E::Tag, E>("Tag"),
                       Field<&E::Visible, E>("Visible"),
                       Field<&E::Enabled, E>("Enabled"),
                       Field<&E::BackColor, E>("BackColor"),
                       Field<&E::ForeColor, E>("ForeColor"),
                       Field<&E::Left, E>("Left"),
                       Field<&E::Top, E>("Top"),
                       Field<&E::Width, E>("Width"),
                       Field<&E::Height, E>("Height"),
                   },
                   Identity()});
}

template<typename E>
ClassTable Class(std::string_view name, std::string_view defaultMember, Rows own) {
    return {name,
            Joined({std::move(own), Common<E>()}),
            {.defaultMember = defaultMember, .resolve = &ResolveElement}};
}

void Act(const ObjectRef& element, int value) {
    const ElementPlace& place = PlaceOf(element);
    place.row->act(*place.row, *place.frm, place.index, value);
}

bool Acts(const ObjectRef& element) {
    return PlaceOf(element).row->act != nullptr;
}

// Check boxes count 0 and 1, options and menus are true or false.

std::int16_t CheckMarkOf(const CheckBox& box) {
    return box.Value ? 1 : 0;
}

void SetCheckMark(CheckBox& box, std::int16_t value) {
    box.SetValue(value != 0);
}

bool ChoiceOf(const Option& option) {
    return option.Value;
}

void Choose(const ObjectRef& element, bool value) {
    auto& option = element.As<Option>();
    if (option.Value == value) return;
    if (value && Acts(element)) {
        Act(element, 1);
    } else {
        option.Value = value;
    }
}

void SetMenuMark(const ObjectRef& element, bool value) {
    auto& item = element.As<MenuItem>();
    if (item.Checked == value) return;
    if (Acts(element)) {
        Act(element, value ? 1 : 0);
    } else {
        item.Checked = value;
    }
}

void MoveScrollBar(const ObjectRef& element, int value) {
    auto& bar = element.As<ScrollBar>();
    if (value < bar.Min || value > bar.Max) throw OutOfRange("a scroll bar's value");
    if (value == bar.Value) return;
    if (Acts(element)) {
        Act(element, value);
    } else {
        bar.Value = value;
    }
}

// Lists.

std::string& EntryOf(ListBox& list, int index) {
    if (index < 0 || index >= list.ListCount()) {
        throw OutOfRange("entry " + std::to_string(index) + " of a list");
    }
    return list.List[static_cast<std::size_t>(index)];
}

Member ListEntries() {
    Member member =
        ReadOnly<[](ListBox& list, int index) { return EntryOf(list, index); }>("List", {"Index"});
    member.write = [](const Member&, const ObjectRef& element, Arguments arguments,
                      const Value& value) {
        EntryOf(element.As<ListBox>(), ToInt32(arguments.front())) = ToText(value);
    };
    return member;
}

std::string SelectedText(const ListBox& list) {
    const int index = list.ListIndex;
    if (index < 0 || index >= list.ListCount()) return {};
    return list.List[static_cast<std::size_t>(index)];
}

void Select(ListBox& list, int index) {
    if (!list.SetListIndex(index)) {
        throw OutOfRange("entry " + std::to_string(index) + " of a list");
    }
}

void AddEntry(ListBox& list, std::string_view text, std::optional<int> index) {
    if (!index) return list.AddItem(std::string(text));
    if (*index < 0 || *index > list.ListCount()) throw OutOfRange("place of a list's new entry");
    list.List.emplace(list.List.begin() + *index, text);
    if (*index <= list.ListIndex) ++list.ListIndex; // The same entry stays selected.
}

void RemoveEntry(ListBox& list, int index) {
    EntryOf(list, index);
    list.List.erase(list.List.begin() + index);
    if (index == list.ListIndex) {
        list.ListIndex = -1;
    } else if (index < list.ListIndex) {
        --list.ListIndex;
    }
}

} // namespace

template<>
const ClassTable* ClassOf<TextBox>() {
    using E = TextBox;
    static const ClassTable table = Class<E>("TextBox", "Text",
                                             {
                                                 Field<&E::Text, E>("Text"),
                                                 Field<&E::SelStart, E>("SelStart"),
                                                 Field<&E::SelLength, E>("SelLength"),
                                             });
    return &table;
}

template<>
const ClassTable* ClassOf<Label>() {
    static const ClassTable table =
        Class<Label>("Label", "Caption", {Field<&Label::Caption, Label>("Caption")});
    return &table;
}

template<>
const ClassTable* ClassOf<ListBox>() {
    using E = ListBox;
    static const ClassTable table =
        Class<E>("ComboBox", "Text",
                 {
                     ReadOnly<&SelectedText>("Text"),
                     Property<[](const E& list) { return list.ListIndex; }, &Select>("ListIndex"),
                     ListEntries(),
                     ReadOnly<&E::ListCount>("ListCount"),
                     Routine<&AddEntry>("AddItem", {"Item", "Index"}),
                     Routine<&RemoveEntry>("RemoveItem", {"Index"}),
                     Routine<&E::Clear>("Clear"),
                 });
    return &table;
}

template<>
const ClassTable* ClassOf<CheckBox>() {
    using E = CheckBox;
    static const ClassTable table = Class<E>("CheckBox", "Value",
                                             {
                                                 Field<&E::Caption, E>("Caption"),
                                                 Property<&CheckMarkOf, &SetCheckMark>("Value"),
                                             });
    return &table;
}

template<>
const ClassTable* ClassOf<Option>() {
    using E = Option;
    static const ClassTable table = Class<E>("OptionButton", "Value",
                                             {
                                                 Field<&E::Caption, E>("Caption"),
                                                 Property<&ChoiceOf, &Choose>("Value"),
                                             });
    return &table;
}

template<>
const ClassTable* ClassOf<Button>() {
    static const ClassTable table =
        Class<Button>("CommandButton", "Caption", {Field<&Button::Caption, Button>("Caption")});
    return &table;
}

template<>
const ClassTable* ClassOf<Frame>() {
    static const ClassTable table =
        Class<Frame>("Frame", "Caption", {Field<&Frame::Caption, Frame>("Caption")});
    return &table;
}

template<>
const ClassTable* ClassOf<Shape>() {
    using E = Shape;
    static const ClassTable table = Class<E>("Shape", {},
                                             {
                                                 Field<&E::BorderWidth, E>("BorderWidth"),
                                                 Field<&E::BorderColor, E>("BorderColor"),
                                             });
    return &table;
}

template<>
const ClassTable* ClassOf<Line>() {
    using E = Line;
    static const ClassTable table = Class<E>("Line", {},
                                             {
                                                 Field<&E::BorderWidth, E>("BorderWidth"),
                                                 Field<&E::BorderColor, E>("BorderColor"),
                                             });
    return &table;
}

template<>
const ClassTable* ClassOf<Spinner>() {
    static const ClassTable table = Class<Spinner>("UpDown", {}, {});
    return &table;
}

template<>
const ClassTable* ClassOf<ScrollBar>() {
    using E = ScrollBar;
    static const ClassTable table =
        Class<E>("ScrollBar", "Value",
                 {
                     Field<&E::Min, E>("Min"),
                     Field<&E::Max, E>("Max"),
                     Property<[](const E& bar) { return bar.Value; }, &MoveScrollBar>("Value"),
                     Field<&E::LargeChange, E>("LargeChange"),
                 });
    return &table;
}

template<>
const ClassTable* ClassOf<Timer>() {
    static const ClassTable table("Timer",
                                  Joined({{
                                              Field<&Timer::Enabled, Timer>("Enabled"),
                                              Field<&Timer::Interval, Timer>("Interval"),
                                          },
                                          Identity()}),
                                  {.defaultMember = "Enabled", .resolve = &ResolveElement});
    return &table;
}

template<>
const ClassTable* ClassOf<MenuItem>() {
    using E = MenuItem;
    static const ClassTable table(
        "Menu",
        Joined({{
                    Field<&E::Caption, E>("Caption"),
                    Property<[](const E& item) { return item.Checked; }, &SetMenuMark>("Checked"),
                    Field<&E::Enabled, E>("Enabled"),
                    Field<&E::Visible, E>("Visible"),
                },
                Identity()}),
        {.defaultMember = "Enabled", .resolve = &ResolveElement});
    return &table;
}

} // namespace zentrel::objects
