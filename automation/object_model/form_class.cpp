#include "automation/object_model/classes.h"
#include "automation/object_model/element.h"
#include "session/frm_part.h"

/// `frmPart`: the main window as outsiders see it.
namespace zentrel::objects {

namespace {

template<auto F>
Member SessionField(std::string_view name) {
    return Property<[](FrmPart& form) { return form.session.*F; },
                    [](FrmPart& form, detail::FieldShape<decltype(F)>::Content value) {
                        form.session.*F = std::move(value);
                    }>(name);
}

std::vector<Member> Fields() {
    using S = Session;
    return {
        SessionField<&S::txtINIVersion>("txtINIVersion"),
        SessionField<&S::txtINIVerDescr>("txtINIVerDescr"),
        SessionField<&S::CommMode_Select>("CommMode_Select"),
        SessionField<&S::bOLEServer>("bOLEServer"),
        SessionField<&S::bBitsAndPinsTabTooWide>("bBitsAndPinsTabTooWide"),
        SessionField<&S::lpt_port_access>("lpt_port_access"),
        SessionField<&S::logged_errors>("logged_errors"),
        SessionField<&S::msgbox_errors>("msgbox_errors"),
        SessionField<&S::bExecuteScripts>("bExecuteScripts"),
        SessionField<&S::raw_tab_tally>("raw_tab_tally"),
        SessionField<&S::hscPrgmBits_Max>("hscPrgmBits_Max"),
        Routine<[](FrmPart& form, std::string_view text) {
            form.StatusBar1.StatusBar_SetString(text);
        }>("StatusBar_SetString", {"text"}),
        Routine<[](FrmPart& form, std::string& name, std::optional<std::string> family) {
            form.SetupPartForm(name, family);
        }>("SetupPartForm", {"sPartName", "vPartType"}),
    };
}

} // namespace

template<>
const ClassTable* ClassOf<FrmPart>() {
    static const ClassTable table("frmPart", Fields());
    return &table;
}

ObjectRef RefTo(FrmPart& form) {
    return ObjectRef::Unowned(*ClassOf<FrmPart>(), form);
}

} // namespace zentrel::objects
