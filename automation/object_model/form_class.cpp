#include "automation/object_model/classes.h"
#include "automation/object_model/form_parts.h"
#include "session/frm_part.h"

/// `frmPart`: the main window as outsiders see it.
namespace zentrel::objects {

namespace {

// The window itself. Its sizes are those that its screens were laid out for, in twips.
std::vector<Member> Window() {
    constexpr int kBesideTabs = 120;
    return {
        Field<&FrmPart::Caption>("Caption"),
        ReadOnlyField<&FrmPart::Visible>("Visible"),
        ReadOnly<[](const FrmPart& frm) { return frm.bits.sizes().tabWidth + kBesideTabs; }>(
            "Width"),
        ReadOnly<[](const FrmPart& frm) { return frm.bits.sizes().windowHeight; }>("Height"),
    };
}

} // namespace

template<>
const ClassTable* ClassOf<FrmPart>() {
    static const ClassTable table("frmPart", Joined({
                                                 FormFields(),
                                                 FormRoutines(),
                                                 Window(),
                                                 ElementMembers(FrameElements()),
                                                 ElementMembers(MenuElements()),
                                                 ElementMembers(PortElements()),
                                                 ElementMembers(RegistersElements()),
                                                 ElementMembers(BitsElements()),
                                                 ElementMembers(BurstElements()),
                                                 ElementMembers(PllElements()),
                                                 ElementMembers(ClockElements()),
                                                 DialogMembers(),
                                             }));
    return &table;
}

ObjectRef RefTo(FrmPart& form) {
    return ObjectRef::Unowned(*ClassOf<FrmPart>(), form);
}

} // namespace zentrel::objects
