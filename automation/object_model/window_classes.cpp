#include "automation/object_model/element.h"
#include "automation/object_model/element_classes.h"
#include "screens/status_bar.h"
#include "screens/tab_model.h"

/// The two elements of the window's frame that no other element is like.
namespace zentrel::objects {

namespace {

// A property of one tab, by its number.
template<typename T>
Member OfTab(std::string_view name, T TabPage::*content) {
    static T TabPage::*const place = content;
    Member member;
    member.name = name;
    member.type = Convert<T>::kType;
    member.parameters = {{.name = "Tab", .type = Type::Integer32}};
    member.read = [](const Member&, const ObjectRef& strip, Arguments arguments) -> Value {
        return Convert<T>::Out(strip.As<TabModel>().Page(ToInt32(arguments.front())).*place);
    };
    member.write = [](const Member&, const ObjectRef& strip, Arguments arguments,
                      const Value& value) {
        strip.As<TabModel>().Page(ToInt32(arguments.front())).*place = Convert<T>::In(value);
    };
    return member;
}

void SelectTab(TabModel& tabs, int tab) {
    tabs.Page(tab); // A tab that isn't there is an error here, not a click beside the strip.
    tabs.SelectTab(tab);
}

std::string CaptionOfSelected(const TabModel& tabs) {
    return tabs.TabCaption(tabs.SelectedTab());
}

void CaptionSelected(TabModel& tabs, std::string_view caption) {
    tabs.Page(tabs.SelectedTab()).Caption = caption;
}

template<auto F>
Member OfStrip(std::string_view name) {
    using Content = typename detail::FieldShape<std::remove_const_t<decltype(F)>>::Content;
    return Property<[](const TabModel& tabs) { return tabs.*F; },
                    [](TabModel& tabs, Content value) { tabs.*F = value; }>(name);
}

const ClassTable& PanelTable() {
    using P = StatusBar::Panel;
    static const ClassTable table("Panel",
                                  {
                                      Field<&P::Text>("Text"),
                                      Field<&P::MinWidth>("MinWidth"),
                                      Field<&P::AutoSize>("AutoSize"),
                                  },
                                  {.defaultMember = "Text"});
    return table;
}

ObjectRef PanelAt(StatusBar& bar, int index) {
    if (index < 1 || index > static_cast<int>(bar.Panels.size())) {
        throw NotFound("Panels", std::to_string(index));
    }
    return ObjectRef::Unowned(PanelTable(), bar.Panels[static_cast<std::size_t>(index - 1)]);
}

} // namespace

template<>
const ClassTable* ClassOf<TabModel>() {
    using T = TabModel;
    static const ClassTable table("SSTab",
                                  {
                                      Property<&T::SelectedTab, &SelectTab>("Tab"),
                                      Property<&CaptionOfSelected, &CaptionSelected>("Caption"),
                                      ReadOnly<&T::TabCount>("Tabs"),
                                      ReadOnly<&T::TabsPerRow>("TabsPerRow"),
                                      OfTab("TabCaption", &TabPage::Caption),
                                      OfTab("TabVisible", &TabPage::Visible),
                                      OfStrip<&T::Visible>("Visible"),
                                      OfStrip<&T::Enabled>("Enabled"),
                                      OfStrip<&T::Left>("Left"),
                                      OfStrip<&T::Top>("Top"),
                                      OfStrip<&T::Width>("Width"),
                                      OfStrip<&T::Height>("Height"),
                                  },
                                  {.defaultMember = "Tab", .resolve = &ResolveElement});
    return &table;
}

template<>
const ClassTable* ClassOf<StatusBar>() {
    static const ClassTable table("StatusBar", {ReadOnly<&PanelAt>("Panels", {"Index"})},
                                  {.resolve = &ResolveElement});
    return &table;
}

} // namespace zentrel::objects
