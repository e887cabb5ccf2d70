#include <array>

#include "automation/object_model/element_rows.h"
#include "automation/object_model/form_parts.h"
#include "automation/object_model/text_log.h"

/// The program's other forms. Their elements are looked up from the window that owns them, so each
/// form's object is the window under another class.
namespace zentrel::objects {

namespace {

template<auto Form, auto Field>
Member OfForm(std::string_view name) {
    using Content = detail::ContentOf<Field>;
    return Property<[](FrmPart& frm) { return frm.*Form.*Field; },
                    [](FrmPart& frm, Content value) { frm.*Form.*Field = std::move(value); }>(name);
}

// Whether it is on the screen; it opens and closes by its menu entry and its buttons.
template<auto Form, auto Shown>
Member Visible() {
    return ReadOnly<[](FrmPart& frm) { return frm.*Form.*Shown; }>("Visible");
}

void SetErrors(FrmPart& frm, const Value& errors) {
    frm.frmErrorList.SetErrors(TextsOf(errors));
}

const ClassTable* ErrorListTable() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Single<&FrmPart::frmErrorList, &ErrorList::Label1>("Label1"),
        Single<&FrmPart::frmErrorList, &ErrorList::Text1>("Text1"),
        Single<&FrmPart::frmErrorList, &ErrorList::Command1>("Command1"),
        Single<&FrmPart::frmErrorList, &ErrorList::Command2>("Command2"),
    });
    static const ClassTable table(
        "frmErrorList", Joined({{
                                    OfForm<&FrmPart::frmErrorList, &ErrorList::Caption>("Caption"),
                                    Visible<&FrmPart::frmErrorList, &ErrorList::Open>(),
                                    Routine<&SetErrors>("SetErrors", {"the_errors"}),
                                },
                                ElementMembers(kRows)}));
    return &table;
}

const ClassTable* AboutTable() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Single<&FrmPart::frmAbout, &AboutDialog::LAB_1>("LAB_1"),
        Single<&FrmPart::frmAbout, &AboutDialog::lblPrgmVersion>("lblPrgmVersion"),
        Single<&FrmPart::frmAbout, &AboutDialog::lblPartVersion>("lblPartVersion"),
        Single<&FrmPart::frmAbout, &AboutDialog::Label5>("Label5"),
        Single<&FrmPart::frmAbout, &AboutDialog::Label4>("Label4"),
        Single<&FrmPart::frmAbout, &AboutDialog::Text1>("Text1"),
        Single<&FrmPart::frmAbout, &AboutDialog::Command1>("Command1"),
        Single<&FrmPart::frmAbout, &AboutDialog::OkayButton>("OkayButton"),
    });
    static const ClassTable table(
        "frmAbout", Joined({{
                                OfForm<&FrmPart::frmAbout, &AboutDialog::Caption>("Caption"),
                                Visible<&FrmPart::frmAbout, &AboutDialog::Open>(),
                                OfForm<&FrmPart::frmAbout, &AboutDialog::Height>("Height"),
                            },
                            ElementMembers(kRows)}));
    return &table;
}

void RefreshLoopFilter(FrmPart& frm) {
    frm.loopFilter.UpdateLoopFilterDisplay();
}

const ClassTable* LoopFilterTable() {
    static constexpr auto kRows = std::to_array<ElementRow>({
        Single<&FrmPart::loopFilter, &frmLoopFilter::cbR3>("cbR3"),
        Single<&FrmPart::loopFilter, &frmLoopFilter::cbR4>("cbR4"),
        Single<&FrmPart::loopFilter, &frmLoopFilter::cbC3C4>("cbC3C4"),
        Single<&FrmPart::loopFilter, &frmLoopFilter::cmdClose>("cmdClose"),
    });
    static const ClassTable table(
        "frmLoopFilter",
        Joined({{
                    OfForm<&FrmPart::loopFilter, &frmLoopFilter::Caption>("Caption"),
                    Visible<&FrmPart::loopFilter, &frmLoopFilter::Visible>(),
                    Routine<&RefreshLoopFilter>("UpdateLoopFilterDisplay"),
                },
                ElementMembers(kRows)}));
    return &table;
}

template<auto Table>
Member Form(std::string_view name) {
    return Child<[](FrmPart& frm) { return ObjectRef::Unowned(*Table(), frm); }>(name, Table);
}

} // namespace

std::vector<Member> DialogMembers() {
    return {
        Form<&ErrorListTable>("frmErrorList"),
        Form<&AboutTable>("frmAbout"),
        Form<&LoopFilterTable>("frmLoopFilter"),
    };
}

} // namespace zentrel::objects
