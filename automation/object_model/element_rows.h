#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>

#include "automation/object_model/element.h"
#include "automation/object_model/element_classes.h"
#include "clock/clk_dist.h"
#include "device/part.h"
#include "session/frm_part.h"
#include "synth/pll.h"

/// Rows of elements from where they stand: on a screen's model, or in the diagram of each PLL or
/// clock block. All are found by name and number as the window's arrays count them.
namespace zentrel::objects {

namespace detail {

template<auto Member>
using ContentOf = typename FieldShape<std::remove_const_t<decltype(Member)>>::Content;
template<auto Member>
using ObjectOf = typename FieldShape<std::remove_const_t<decltype(Member)>>::Object;
template<typename Container>
using ItemOf = typename Container::value_type;

template<typename Container>
void* InContainer(Container& elements, int index) {
    const bool there = index >= 0 && index < static_cast<int>(elements.size());
    return there ? AsElement(elements[static_cast<std::size_t>(index)]) : nullptr;
}

/// The diagrams of one kind: number 0 is the design's, number i the one of block i.
template<typename Panel>
struct Diagrams;
template<>
struct Diagrams<PllPanel> {
    static int Count(FrmPart& frm) { return frm.part.PLLs.Count() + 1; }
    static PllPanel& At(FrmPart& frm, int i) {
        return i == 0 ? frm.pllDesign : frm.part.PLLs(i).panel;
    }
};
template<>
struct Diagrams<ClockPanel> {
    static int Count(FrmPart& frm) { return frm.part.ClkDists.Count() + 1; }
    static ClockPanel& At(FrmPart& frm, int n) {
        return n == 0 ? frm.clockDesign : frm.part.ClkDists(n).panel;
    }
};

template<auto Family>
inline constexpr int kSizeOf = static_cast<int>(std::tuple_size_v<ContentOf<Family>>);

/// A row of what stands in each diagram, `Each` elements of it: number Each * i + k.
template<typename Panel, int Each, auto At>
constexpr ElementRow InDiagrams(std::string_view name, const ClassTable* (*table)()) {
    ElementRow row{.name = name, .form = ElementRow::Form::Array, .table = table};
    row.count = [](const ElementRow&, FrmPart& frm) { return Diagrams<Panel>::Count(frm) * Each; };
    row.find = [](const ElementRow& self, FrmPart& frm, int index) -> void* {
        if (index < 0 || index >= self.count(self, frm)) return nullptr;
        return At(Diagrams<Panel>::At(frm, index / Each), static_cast<std::size_t>(index % Each));
    };
    return row;
}

} // namespace detail

/// The start of a row for one element that stands alone; `find` is left to its caller.
constexpr ElementRow Alone(std::string_view name, const ClassTable* (*table)()) {
    ElementRow row{.name = name, .table = table};
    row.count = [](const ElementRow&, FrmPart&) { return 1; };
    return row;
}

/// A single element of a screen's model: `Screen` is the window's member, `Element` the screen's.
template<auto Screen, auto Element>
constexpr ElementRow Single(std::string_view name) {
    ElementRow row = Alone(name, &ClassOf<KindOf<detail::ContentOf<Element>>>);
    row.find = [](const ElementRow&, FrmPart& frm, int index) -> void* {
        return index == 0 ? AsElement(frm.*Screen.*Element) : nullptr;
    };
    return row;
}

/// The same for what is an array by name and stands alone.
template<auto Screen, auto Element>
constexpr ElementRow Lone(std::string_view name) {
    ElementRow row = Single<Screen, Element>(name);
    row.form = ElementRow::Form::Lone;
    return row;
}

/// Numbered elements of a screen's model; the ones below `first` are none.
template<auto Screen, auto Elements>
constexpr ElementRow Numbered(std::string_view name, int first = 0) {
    using Element = detail::ItemOf<detail::ContentOf<Elements>>;
    ElementRow row{.name = name, .form = ElementRow::Form::Array, .first = first};
    row.table = &ClassOf<KindOf<Element>>;
    row.count = [](const ElementRow& self, FrmPart& frm) {
        return static_cast<int>((frm.*Screen.*Elements).size()) - self.first;
    };
    row.find = [](const ElementRow& self, FrmPart& frm, int index) -> void* {
        return index < self.first ? nullptr : detail::InContainer(frm.*Screen.*Elements, index);
    };
    return row;
}

/// Options; `Select` is the screen's action for the chosen one.
template<auto Screen, auto Elements, auto Select>
constexpr ElementRow Options(std::string_view name) {
    ElementRow row = Numbered<Screen, Elements>(name);
    row.act = [](const ElementRow&, FrmPart& frm, int index, int) { (frm.*Screen.*Select)(index); };
    return row;
}

/// One element in the diagram of each PLL or clock block: number i for block i.
template<auto Element>
constexpr ElementRow OfEach(std::string_view name) {
    using Panel = detail::ObjectOf<Element>;
    return detail::InDiagrams<Panel, 1, [](Panel& panel, std::size_t) {
        return AsElement(panel.*Element);
    }>(name, &ClassOf<KindOf<detail::ContentOf<Element>>>);
}

/// A family of elements in each diagram: element k of block i is number size * i + k.
template<auto Family>
constexpr ElementRow FamilyOfEach(std::string_view name) {
    using Panel = detail::ObjectOf<Family>;
    return detail::InDiagrams<Panel, detail::kSizeOf<Family>, [](Panel& panel, std::size_t k) {
        return AsElement((panel.*Family)[k]);
    }>(name, &ClassOf<detail::ItemOf<detail::ContentOf<Family>>>);
}

/// One element in each channel of each clock block: number 8 * n + c for channel c of block n.
template<auto Element>
constexpr ElementRow OfEachChannel(std::string_view name) {
    return detail::InDiagrams<ClockPanel, kClockChannels, [](ClockPanel& panel, std::size_t c) {
        return AsElement(panel.channels[c].*Element);
    }>(name, &ClassOf<KindOf<detail::ContentOf<Element>>>);
}

} // namespace zentrel::objects
