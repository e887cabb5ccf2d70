#include <array>

#include "automation/object_model/element_rows.h"
#include "automation/object_model/form_parts.h"

namespace zentrel::objects {

namespace {

constexpr ElementRow Entry(std::string_view name) {
    ElementRow row = Alone(name, &ClassOf<MenuItem>);
    row.find = [](const ElementRow& self, FrmPart& frm, int index) -> void* {
        return index == 0 ? AsElement(frm.menu(self.name)) : nullptr;
    };
    // A check mark turns by the entry's own action, which does all that hangs on it.
    row.act = [](const ElementRow& self, FrmPart& frm, int, int value) {
        MenuNode& node = frm.menu(self.name);
        if (const auto action = node.Click; node.checkable && action) {
            action(-1);
        } else {
            node.Checked = value != 0;
        }
    };
    return row;
}

constexpr ElementRow Items(std::string_view name) {
    ElementRow row{.name = name, .form = ElementRow::Form::Array, .table = &ClassOf<MenuItem>};
    row.count = [](const ElementRow& self, FrmPart& frm) { return frm.menu.ItemCount(self.name); };
    row.find = [](const ElementRow& self, FrmPart& frm, int index) -> void* {
        if (index < 0 || index >= self.count(self, frm)) return nullptr;
        return AsElement(frm.menu(self.name, index));
    };
    return row;
}

template<auto Element>
constexpr ElementRow OfWindow(std::string_view name) {
    ElementRow row = Alone(name, &ClassOf<detail::ContentOf<Element>>);
    row.find = [](const ElementRow&, FrmPart& frm, int index) -> void* {
        return index == 0 ? &(frm.*Element) : nullptr;
    };
    return row;
}

} // namespace

std::span<const ElementRow> FrameElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        OfWindow<&FrmPart::tabPart>("tabPart"),
        OfWindow<&FrmPart::StatusBar1>("StatusBar1"),
        Single<&FrmPart::timers, &Timers::tmrStartBurst>("tmrStartBurst"),
        Single<&FrmPart::timers, &Timers::tmrUSBCheck>("tmrUSBCheck"),
        Single<&FrmPart::timers, &Timers::tmrAutoReload>("tmrAutoReload"),
    });
    return kRows;
}

std::span<const ElementRow> MenuElements() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Entry("mnuFile"),
        Entry("mnuSave"),
        Entry("mnuRestore"),
        Entry("mnuLine1"),
        Items("mnuRecent"),
        Entry("mnuLine2"),
        Entry("mnuExit"),
        Entry("mnuLoad"),
        Entry("mnuLoadPLL"),
        Entry("mnuStepFreq"),
        Entry("mnuIncN"),
        Entry("mnuNDec"),
        Entry("mnuNInc10"),
        Entry("mnuNDec10"),
        Entry("mnuIncFrac"),
        Entry("mnuDecFrac"),
        Entry("mnuVCOFreq"),
        Entry("mnuFcomp"),
        Entry("mnuXtal"),
        Entry("ResetPort"),
        Entry("mnuDevice"),
        Items("mnuQVXxxxx"),
        Entry("mnuVCO"),
        Items("mnuVCOQVXxxxx"),
        Entry("mnuSingPLL"),
        Items("mnuSingQVXxxxx"),
        Entry("mnuDualPLL"),
        Items("mnuDualQVXxxxx"),
        Entry("mnuFracPLL"),
        Items("mnuFracQVXxxxx"),
        Entry("mnuVCOPLL"),
        Items("mnuPLLVCOQVXxxxx"),
        Entry("mnuTrans"),
        Items("mnuTransQVXxxxx"),
        Entry("mnuClkDist"),
        Items("mnuClkDistQVXxxxx"),
        Entry("mnuEngineering"),
        Items("mnuEngineeringQVXxxxx"),
        Entry("mnuVCOFixed"),
        Entry("mnuAutoReload"),
        Entry("mnuAutoReloadChange"),
        Entry("mnuSaveDeviceSettings"),
        Entry("mnuModes"),
        Items("mnuMode"),
        Entry("mnuAddMode"),
        Entry("CheckLPT"),
        Entry("USBVersion"),
        Entry("AdjustTiming"),
        Entry("mnuStatus"),
        Entry("mnuORVWireless"),
        Entry("mnuShowErrors"),
        Entry("mnuAbout"),
    });
    return kRows;
}

} // namespace zentrel::objects
