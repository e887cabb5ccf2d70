#include "automation/vbscript/generator.h"

#include "automation/vbscript/runtime.h"

namespace zentrel::vbscript {
namespace {

/// Whether an expression's last instruction can write into a variable at once.
bool IsComputed(const Expression& expression) {
    return As<BinaryExpression>(expression) || As<ConcatExpression>(expression) ||
           (As<UnaryExpression>(expression) &&
            As<UnaryExpression>(expression)->op != Operator::Plus);
}

bool IsCall(const Expression& expression) {
    return As<CallExpression>(expression) || As<MemberExpression>(expression);
}

bool IsConversion(const Builtin& builtin) {
    for (const auto* name :
         {"CBool", "CByte", "CCur", "CDate", "CDbl", "CInt", "CLng", "CSng", "CStr"})
        if (builtin.name == name) return true;
    return false;
}

} // namespace

void Generator::EmitBlock(const Block& block, Position end) {
    for (const auto& statement : block)
        EmitStatement(statement);
    PutMark(end);
}

void Generator::EmitStatement(const Statement& statement) {
    at_ = statement.at;
    PutMark(statement.at);
    std::visit([this](const auto& node) { EmitNode(node); }, statement.node);
    FreeDownTo(0);
}

// --- assignments ---

void Generator::EmitNode(const Assignment& node) {
    if (const auto* name = As<NameExpression>(*node.target)) {
        EmitNameAssignment(name->name, node);
    } else if (const auto* member = As<MemberExpression>(*node.target)) {
        EmitMemberAssignment(member, member->name, {}, node);
    } else if (const auto* call = As<CallExpression>(*node.target)) {
        EmitIndexAssignment(*call, node);
    } else {
        PutFail(ErrorNumber::IllegalAssignment, kNoName);
    }
}

void Generator::EmitNameAssignment(NameId name, const Assignment& node) {
    auto symbol = Lookup(name);
    if (symbol.kind == Symbol::Kind::Method) return EmitMemberAssignment(nullptr, name, {}, node);
    if (symbol.kind == Symbol::Kind::Variable && !node.set) {
        EmitLet(symbol.place, *node.value);
        return;
    }
    // `s = s & x` through a reference still grows the string in place.
    if (symbol.kind == Symbol::Kind::Reference && As<ConcatExpression>(*node.value)) {
        Emit(*node.value, symbol.place);
        procedure_->code.back().flags |= kThrough;
        return;
    }
    const auto value = Emit(*node.value);
    if (symbol.kind == Symbol::Kind::Unknown) symbol = VariableToWrite(name);
    if (symbol.place == kNowhere) return PutFail(ErrorNumber::IllegalAssignment, name);
    if (symbol.kind != Symbol::Kind::Variable && symbol.kind != Symbol::Kind::Reference)
        return PutFail(ErrorNumber::IllegalAssignment, name);
    auto flags = FreeFlag(value, kFreeB);
    if (symbol.kind == Symbol::Kind::Reference) flags |= kThrough;
    Put(node.set ? Op::SetVar : Op::LetRef, symbol.place, value.place, kNowhere, flags);
}

void Generator::EmitLet(Operand variable, const Expression& value) {
    if (IsComputed(value)) {
        Emit(value, variable);
        return;
    }
    if (IsCall(value)) {
        const auto result = Emit(value, variable);
        auto& last = procedure_->code.back();
        if (result.place == variable && last.a == variable) {
            last.flags |= kResolve;
            return;
        }
    }
    const auto result = Emit(value);
    Put(Op::Let, variable, result.place, kNowhere, FreeFlag(result, kFreeB));
}

void Generator::EmitIndexAssignment(const CallExpression& target, const Assignment& node) {
    if (const auto* member = As<MemberExpression>(*target.base))
        return EmitMemberAssignment(member, member->name, target.args, node);
    if (const auto* name = As<NameExpression>(*target.base))
        if (Lookup(name->name).kind == Symbol::Kind::Method)
            return EmitMemberAssignment(nullptr, name->name, target.args, node);
    const auto value = Emit(*node.value);
    auto flags = FreeFlag(value, kFreeA) | (node.set ? unsigned{kSet} : 0U);
    const auto base = EmitTargetReference(*target.base);
    if (base >= kTemporaryBase && base <= kMaxPlace) flags |= kFreeB;
    if (target.args.size() == 1 && target.args[0]) {
        const auto index = Emit(*target.args[0]);
        Put(Op::SetIndex, value.place, base, index.place, flags | FreeFlag(index, kFreeC));
        return;
    }
    // The value goes behind the arguments, where a default property takes it.
    const auto first = EmitArguments(target.args);
    Put(Op::SetIndexMany, value.place, base, AddSite(kNoName, first, target.args.size()), flags);
}

/// What stands in front of the last parentheses of an assignment's target.
Operand Generator::EmitTargetReference(const Expression& expression) {
    if (const auto* name = As<NameExpression>(expression)) {
        const auto symbol = Lookup(name->name);
        if (symbol.kind == Symbol::Kind::Variable || symbol.kind == Symbol::Kind::Reference)
            return symbol.place;
        if (symbol.kind == Symbol::Kind::Unknown) {
            const auto place = Temporary();
            Put(Op::ReadName, place, kNowhere, AddNameSite(name->name, kTemporaryBase + top_, 0),
                kWantRef);
            Temporaries(1);
            --top_;
            return place;
        }
    }
    const auto* call = As<CallExpression>(expression);
    const bool element = call && !call->args.empty() && !As<MemberExpression>(*call->base);
    const auto place = Temporary();
    if (!element) {
        EmitTo(expression, place);
        return place;
    }
    const auto base = EmitTargetReference(*call->base);
    const auto first = EmitArguments(call->args);
    const bool temporary = base >= kTemporaryBase && base <= kMaxPlace;
    Put(Op::IndexRef, place, base, AddSite(kNoName, first, call->args.size()),
        temporary ? unsigned{kFreeB} : 0U);
    return place;
}

void Generator::EmitMemberAssignment(const MemberExpression* member, NameId name,
                                     const std::vector<ExpressionPtr>& args,
                                     const Assignment& node) {
    const auto object_place = Temporary();
    const auto first = Temporaries(args.size() + 2);
    top_ = first - kTemporaryBase + static_cast<std::uint32_t>(args.size()) + 1;
    EmitTo(*node.value, first + static_cast<std::uint32_t>(args.size()));
    unsigned flags = node.set ? unsigned{kSet} : 0U;
    Operand object = kNowhere;
    if (!member || (member->object && As<MeExpression>(*member->object) && owner_)) {
        flags |= kSelf;
    } else if (member->object) {
        const auto result = Emit(*member->object, object_place);
        object = result.place;
        if (object == object_place || result.temporary) flags |= kFreeB;
    } else {
        object = EmitObject(*member).place;
    }
    EmitArgumentsAt(args, first);
    Put(Op::SetMember, kNowhere, object, AddSite(name, first, args.size()), flags);
}

// --- simple statements ---

void Generator::EmitNode(const CallStatement& node) {
    const auto& call = *As<CallExpression>(*node.call);
    const auto result = EmitCall(call, kNowhere, true);
    const auto last = procedure_->code.empty() ? Op::Return : procedure_->code.back().op;
    if (last == Op::CallBuiltin) {
        const auto& site = procedure_->sites[procedure_->code.back().c];
        if (IsConversion(*site.builtin)) PutFail(ErrorNumber::UnsupportedType, kNoName);
    } else if (result.temporary && result.place != kNowhere) {
        Put(Op::Clear, result.place);
    }
}

void Generator::EmitNode(const DimStatement& node) {
    for (const auto& variable : node.variables) {
        if (!variable.is_array) continue;
        const auto symbol = Lookup(variable.name);
        const bool again = procedure_->is_text && !inside_ && symbol.place != kNowhere &&
                           module_.Global(symbol.place).IsArray();
        if (again) {
            PutFail(ErrorNumber::TypeMismatch, kNoName);
            continue;
        }
        procedure_->shapes.push_back(variable);
        Put(Op::DimArray, symbol.place, kNowhere,
            static_cast<std::uint32_t>(procedure_->shapes.size() - 1), inside_ ? kSet : 0);
    }
}

void Generator::EmitNode(const ReDimStatement& node) {
    for (const auto& item : node.items) {
        auto symbol = Lookup(item.name);
        if (symbol.kind == Symbol::Kind::Unknown) {
            // ReDim of a name that nobody declared declares it.
            if (procedure_->is_text && !inside_) {
                symbol.place = module_.GlobalPlace(item.name);
                auto& global = module_.Global(symbol.place);
                if (global.type() == Type::Unset) global = Value();
            } else if (inside_) {
                symbol = VariableToWrite(item.name);
            } else {
                symbol.place = AddLocal(item.name, Symbol::Kind::Variable);
            }
        } else if (symbol.kind != Symbol::Kind::Variable &&
                   symbol.kind != Symbol::Kind::Reference) {
            symbol = VariableToWrite(item.name);
        }
        const auto first = EmitArguments(item.bounds);
        Put(Op::ReDim, symbol.place, kNowhere, AddSite(item.name, first, item.bounds.size()),
            node.preserve ? kPreserve : 0);
        FreeDownTo(0);
    }
}

void Generator::EmitNode(const EraseStatement& node) {
    for (const auto& target : node.targets) {
        const auto place = EmitTargetReference(*target);
        const bool temporary = place >= kTemporaryBase && place <= kMaxPlace;
        Put(Op::Erase, place, kNowhere, kNowhere, temporary ? kFreeA : 0);
    }
}

void Generator::EmitNode(const OnErrorStatement& node) {
    Put(node.resume_next ? Op::OnErrorResume : Op::OnErrorGoto0);
}

void Generator::EmitNode(const NoStatement&) {}

// --- conditions ---

void Generator::EmitNode(const IfStatement& node) {
    const auto end = at_;
    std::vector<std::size_t> to_end;
    for (std::size_t i = 0; i < node.branches.size(); ++i) {
        const auto& branch = node.branches[i];
        if (i > 0) PutMark(branch.at);
        const auto past = EmitJumpUnless(*branch.condition);
        PutMark(branch.at);
        EmitBlock(branch.body, end);
        const bool last = i + 1 == node.branches.size() && !node.otherwise;
        if (!last) to_end.push_back(Put(Op::Jump));
        Patch(past);
    }
    if (node.otherwise) EmitBlock(*node.otherwise, end);
    for (const auto jump : to_end)
        Patch(jump);
    PutMark(end);
}

void Generator::EmitTests(const SelectStatement::Case& one, Operand subject, bool hard,
                          std::vector<std::size_t>& to_body) {
    for (const auto& test : one.tests) {
        const auto result = Emit(*test);
        auto flags = FreeFlag(result, kFreeC);
        if (hard) flags |= kHardLeft;
        if (result.hard) flags |= kHardRight;
        to_body.push_back(Put(Op::JumpIfCase, kNowhere, subject, result.place, flags));
        FreeDownTo(0);
    }
}

void Generator::EmitNode(const SelectStatement& node) {
    const auto end = at_;
    const auto mark = procedure_->marks.size() - 1;
    const auto hidden = Hidden();
    const auto subject = Emit(*node.subject);
    Put(Op::Let, hidden, subject.place, kNowhere, FreeFlag(subject, kFreeB));
    FreeDownTo(0);
    scopes_.push_back({Scope::Kind::Other, hidden, {}});
    std::vector<std::size_t> to_end;
    for (const auto& one : node.cases) {
        PutMark(one.at);
        std::vector<std::size_t> to_body;
        EmitTests(one, hidden, subject.hard, to_body);
        std::optional<std::size_t> past;
        if (!one.tests.empty()) past = Put(Op::Jump);
        for (const auto jump : to_body)
            Patch(jump);
        PutMark(one.at);
        EmitBlock(one.body, end);
        to_end.push_back(Put(Op::Jump));
        if (past) Patch(*past);
    }
    for (const auto jump : to_end)
        Patch(jump);
    scopes_.pop_back();
    procedure_->marks[mark].resume = static_cast<std::uint32_t>(Here());
    PutMark(end);
    Put(Op::Clear, hidden);
}

void Generator::EmitNode(const WithStatement& node) {
    const auto end = at_;
    const auto hidden = Hidden();
    Put(Op::Unset, hidden);
    const auto object = Emit(*node.object);
    Put(Op::WithBegin, hidden, object.place, kNowhere, FreeFlag(object, kFreeB));
    FreeDownTo(0);
    scopes_.push_back({Scope::Kind::Other, hidden, {}});
    withs_.push_back(hidden);
    EmitBlock(node.body, end);
    withs_.pop_back();
    scopes_.pop_back();
    Put(Op::Clear, hidden);
}

// --- loops ---

/// Lets go of what With and For Each hold, from the innermost construct outwards.
void Generator::LeaveScopes(std::size_t down_to) {
    for (std::size_t i = scopes_.size(); i-- > down_to;)
        if (scopes_[i].hidden != kNowhere) Put(Op::Clear, scopes_[i].hidden);
}

void Generator::CloseLoop() {
    for (const auto jump : scopes_.back().exits)
        Patch(jump);
    const auto hidden = scopes_.back().hidden;
    scopes_.pop_back();
    PutMark(at_);
    if (hidden != kNowhere) Put(Op::Clear, hidden);
}

void Generator::EmitNode(const ExitStatement& node) {
    if (node.kind == ExitKind::Procedure) {
        Put(Op::Return);
        return;
    }
    const auto kind = node.kind == ExitKind::Do ? Scope::Kind::Do : Scope::Kind::For;
    for (std::size_t i = scopes_.size(); i-- > 0;) {
        if (scopes_[i].kind != kind) continue;
        LeaveScopes(i + 1);
        scopes_[i].exits.push_back(Put(Op::Jump));
        return;
    }
}

void Generator::EmitNode(const LoopStatement& node) {
    const auto at = at_;
    scopes_.push_back({node.is_do ? Scope::Kind::Do : Scope::Kind::Other, kNowhere, {}});
    const auto top = static_cast<std::uint32_t>(Here());
    std::optional<std::size_t> out;
    const auto test = [&] {
        out = node.until ? EmitJumpIf(*node.condition, true) : EmitJumpUnless(*node.condition);
        FreeDownTo(0);
    };
    PutMark(at);
    if (node.test_first) test();
    PutMark(at);
    EmitBlock(node.body, at);
    if (node.condition && !node.test_first) {
        PutMark(node.condition_at);
        test();
    }
    Put(Op::JumpBack, top);
    if (out) Patch(*out);
    at_ = at;
    CloseLoop();
}

void Generator::EmitNode(const ForStatement& node) {
    const auto at = at_;
    const auto state = Hidden();
    const auto limit = Hidden();
    const auto step = Hidden();
    Put(Op::Unset, state);
    const auto from = Emit(*node.from);
    EmitTo(*node.to, limit);
    if (node.step)
        EmitTo(*node.step, step);
    else
        Put(Op::Copy, step, Constant(Value::Integer(1)));
    const auto variable = VariableToWrite(node.variable);
    const unsigned through = variable.kind == Symbol::Kind::Reference ? unsigned{kThrough} : 0U;
    Put(Op::ForInit, variable.place, from.place, state, FreeFlag(from, kFreeB) | through);
    FreeDownTo(0);
    const auto out = Put(Op::ForTest, kNowhere, variable.place, state, through);
    scopes_.push_back({Scope::Kind::For, kNowhere, {}});
    const auto body = static_cast<std::uint32_t>(Here());
    PutMark(at);
    EmitBlock(node.body, at);
    Put(Op::ForNext, body, variable.place, state, through);
    Patch(out);
    at_ = at;
    CloseLoop();
}

void Generator::EmitNode(const ForEachStatement& node) {
    const auto at = at_;
    const auto hidden = Hidden();
    Put(Op::Unset, hidden);
    const auto collection = Emit(*node.collection);
    const auto variable = VariableToWrite(node.variable);
    Put(Op::EachInit, hidden, collection.place, kNowhere, FreeFlag(collection, kFreeB));
    FreeDownTo(0);
    const auto to_next = Put(Op::Jump);
    scopes_.push_back({Scope::Kind::For, hidden, {}});
    const auto body = static_cast<std::uint32_t>(Here());
    PutMark(at);
    EmitBlock(node.body, at);
    Patch(to_next);
    Put(Op::EachNext, body, variable.place, hidden,
        variable.kind == Symbol::Kind::Reference ? unsigned{kThrough} : 0U);
    at_ = at;
    CloseLoop();
}

} // namespace zentrel::vbscript
