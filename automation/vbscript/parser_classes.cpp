#include "automation/vbscript/parser.h"

#include <algorithm>

namespace zentrel::vbscript {

ClassDeclaration Parser::ParseClass() {
    Advance();
    ClassDeclaration declared{kNoName, Here().at, {}, {}};
    declared.name = TakeName();
    in_class_ = true;
    for (SkipSeparators(); !At(Keyword::End); SkipSeparators()) {
        ParseClassMember(declared);
        const bool class_ends = At(Keyword::End) && Ahead().keyword == Keyword::Class;
        if (!class_ends) ExpectEndOfStatement();
        if (At(TokenKind::End)) Fail(ErrorNumber::ExpectedEnd);
    }
    ExpectEnd(Keyword::Class, ErrorNumber::ExpectedClass);
    in_class_ = false;
    return declared;
}

void Parser::ParseClassMember(ClassDeclaration& declared) {
    const bool is_private = At(Keyword::Private);
    const bool is_public = At(Keyword::Public);
    if (is_private || is_public) Advance();
    // `Default` is a name, too: only in front of a procedure does it mean the default member.
    const auto next = Ahead().keyword;
    const bool is_default =
        At(Keyword::Default) &&
        (next == Keyword::Sub || next == Keyword::Function || next == Keyword::Property);
    if (is_default) {
        if (!is_public) Fail(ErrorNumber::DefaultNeedsPublic);
        Advance();
    }
    const bool property = At(Keyword::Property) &&
                          (Ahead().keyword == Keyword::Get || Ahead().keyword == Keyword::Let ||
                           Ahead().keyword == Keyword::Set);
    if (At(Keyword::Sub) || At(Keyword::Function) || property) {
        auto procedure = ParseProcedure(true);
        procedure.is_private = is_private;
        procedure.is_default = is_default;
        if (is_default && (procedure.kind == ProcedureKind::PropertyLet ||
                           procedure.kind == ProcedureKind::PropertySet))
            RaiseAt(ErrorNumber::DefaultNeedsGet, procedure.at);
        CheckClassMember(declared, procedure);
        declared.procedures.push_back(std::move(procedure));
        return;
    }
    if (At(Keyword::Property)) {
        Advance();
        Fail(ErrorNumber::ExpectedLetSetGet);
    }
    const bool dim = At(Keyword::Dim) && !is_private && !is_public;
    if (dim) Advance();
    if (!dim && !is_private && !is_public) Fail(ErrorNumber::ExpectedEnd);
    do {
        auto variable = ParseDeclarator();
        const auto taken = [&](const auto& name) { return name == variable.name; };
        for (const auto& f : declared.fields)
            if (taken(f.variable.name)) RaiseAt(ErrorNumber::NameRedefined, variable.at);
        for (const auto& p : declared.procedures)
            if (taken(p.name)) RaiseAt(ErrorNumber::NameRedefined, variable.at);
        declared.fields.push_back({std::move(variable), is_private});
    } while (Take(Symbol::Comma));
}

/// A member's name comes once, but for the Get, Let and Set of one property, whose parameters must
/// agree.
void Parser::CheckClassMember(const ClassDeclaration& declared, const ProcedureDeclaration& added) {
    const auto is_property = [](const ProcedureDeclaration& p) {
        return p.kind != ProcedureKind::Sub && p.kind != ProcedureKind::Function;
    };
    const auto index_count = [](const ProcedureDeclaration& p) {
        return p.parameters.size() - (p.kind == ProcedureKind::PropertyGet ? 0 : 1);
    };
    for (const auto& f : declared.fields)
        if (f.variable.name == added.name) RaiseAt(ErrorNumber::NameRedefined, added.at);
    for (const auto& p : declared.procedures) {
        if (p.is_default && added.is_default) RaiseAt(ErrorNumber::MultipleDefaults, added.at);
        if (p.name != added.name) continue;
        if (!is_property(p) || !is_property(added) || p.kind == added.kind)
            RaiseAt(ErrorNumber::NameRedefined, added.at);
        if (index_count(p) != index_count(added))
            RaiseAt(ErrorNumber::InconsistentArguments, added.at);
    }
    const bool hook = added.name == names_.Intern("Class_Initialize") ||
                      added.name == names_.Intern("Class_Terminate");
    if (hook && !added.parameters.empty()) RaiseAt(ErrorNumber::InitializeArguments, added.at);
}

} // namespace zentrel::vbscript
