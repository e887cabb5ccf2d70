#include "automation/vbscript/generator.h"

namespace zentrel::vbscript {
namespace {

Op OpOf(Operator op) {
    switch (op) {
    case Operator::Add:
        return Op::Add;
    case Operator::Subtract:
        return Op::Subtract;
    case Operator::Multiply:
        return Op::Multiply;
    case Operator::Divide:
        return Op::Divide;
    case Operator::IntDivide:
        return Op::IntDivide;
    case Operator::Mod:
        return Op::Mod;
    case Operator::Power:
        return Op::Power;
    case Operator::And:
        return Op::And;
    case Operator::Or:
        return Op::Or;
    case Operator::Xor:
        return Op::Xor;
    case Operator::Eqv:
        return Op::Eqv;
    case Operator::Imp:
        return Op::Imp;
    case Operator::Equal:
        return Op::Equal;
    case Operator::NotEqual:
        return Op::NotEqual;
    case Operator::Less:
        return Op::Less;
    case Operator::Greater:
        return Op::Greater;
    case Operator::LessEqual:
        return Op::LessEqual;
    case Operator::GreaterEqual:
        return Op::GreaterEqual;
    case Operator::Is:
        return Op::Is;
    case Operator::Not:
        return Op::Not;
    case Operator::Negate:
        return Op::Negate;
    default:
        return Op::Plus;
    }
}

bool IsComparison(Operator op) {
    return op >= Operator::Equal && op <= Operator::GreaterEqual;
}

Op JumpUnless(Operator op) {
    const int offset = static_cast<int>(op) - static_cast<int>(Operator::Equal);
    return static_cast<Op>(static_cast<int>(Op::JumpUnlessEqual) + offset);
}

} // namespace

Generator::Result Generator::Emit(const Expression& expression, Operand wanted) {
    if (const auto* literal = As<LiteralExpression>(expression)) {
        const auto type = literal->value.type();
        const bool hard = type == Type::String || type == Type::Date || type == Type::Boolean ||
                          (type >= Type::Integer && type <= Type::Double);
        return {Constant(literal->value), false, hard};
    }
    if (const auto* name = As<NameExpression>(expression))
        return EmitName(name->name, wanted, false);
    if (const auto* member = As<MemberExpression>(expression)) return EmitMember(*member, wanted);
    if (const auto* call = As<CallExpression>(expression)) return EmitCall(*call, wanted, false);
    if (const auto* unary = As<UnaryExpression>(expression)) return EmitUnary(*unary, wanted);
    if (const auto* binary = As<BinaryExpression>(expression)) return EmitBinary(*binary, wanted);
    if (const auto* chain = As<ConcatExpression>(expression)) return EmitConcat(*chain, wanted);
    const auto place = Destination(wanted);
    if (const auto* made = As<NewExpression>(expression))
        Put(Op::New, place, kNowhere, AddSite(made->class_name));
    else if (owner_)
        Put(Op::Me, place);
    else
        PutFail(ErrorNumber::ObjectRequired, names_.Intern("Me"));
    return Made(place, wanted);
}

void Generator::EmitTo(const Expression& expression, Operand temporary) {
    const auto result = Emit(expression, temporary);
    if (result.place != temporary)
        Put(Op::Copy, temporary, result.place, kNowhere, FreeFlag(result, kFreeB));
}

Generator::Result Generator::EmitName(NameId name, Operand wanted, bool statement) {
    const auto symbol = Lookup(name);
    switch (symbol.kind) {
    case Symbol::Kind::Variable:
    case Symbol::Kind::Reference:
        return {symbol.place, false};
    case Symbol::Kind::Constant:
        return {Constant(symbol.value), false};
    case Symbol::Kind::Method:
        return EmitSelfCall(name, {}, wanted, statement);
    default:
        break;
    }
    const auto place = Destination(wanted);
    Put(Op::ReadName, place, kNowhere,
        AddNameSite(name, kTemporaryBase + top_, 0, symbol.kind == Symbol::Kind::Procedure));
    // The frame of a procedure that the name turns out to be begins behind the temporaries in use.
    Temporaries(1);
    --top_;
    return Made(place, wanted);
}

Generator::Result Generator::EmitObject(const MemberExpression& member) {
    if (member.object) return Emit(*member.object);
    if (!withs_.empty()) return {withs_.back(), false};
    PutFail(ErrorNumber::UnqualifiedReference, kNoName);
    return {Temporary(), true};
}

Generator::Result Generator::EmitMember(const MemberExpression& member, Operand wanted) {
    return EmitInvoke(member, nullptr, wanted, false);
}

Generator::Result Generator::EmitInvoke(const MemberExpression& member,
                                        const std::vector<ExpressionPtr>* args, Operand wanted,
                                        bool statement) {
    const auto top = top_;
    const bool on_me = member.object && As<MeExpression>(*member.object) && owner_;
    const auto object = on_me ? Result{kNowhere, false} : EmitObject(member);
    static const std::vector<ExpressionPtr> kNone;
    const auto first = EmitArguments(args ? *args : kNone);
    FreeDownTo(top);
    const auto place = statement ? kNowhere : Destination(wanted);
    auto flags = FreeFlag(object, kFreeB);
    if (statement) flags |= kSet;
    if (on_me) flags |= kSelf;
    Put(Op::Invoke, place, object.place, AddSite(member.name, first, args ? args->size() : 0),
        flags);
    return Made(place, wanted);
}

Generator::Result Generator::EmitSelfCall(NameId name, const std::vector<ExpressionPtr>& args,
                                          Operand wanted, bool statement) {
    const auto top = top_;
    const auto first = EmitArguments(args);
    FreeDownTo(top);
    const auto place = statement ? kNowhere : Destination(wanted);
    Put(Op::Invoke, place, kNowhere, AddSite(name, first, args.size()),
        kSelf | (statement ? unsigned{kSet} : 0U));
    return Made(place, wanted);
}

Generator::Result Generator::EmitCall(const CallExpression& call, Operand wanted, bool statement) {
    if (const auto* name = As<NameExpression>(*call.base)) {
        if (!call.base->parenthesized) return EmitNamedCall(name->name, call, wanted, statement);
    } else if (const auto* member = As<MemberExpression>(*call.base)) {
        return EmitInvoke(*member, &call.args, wanted, statement);
    }
    return EmitIndex(Emit(*call.base), call.args, wanted);
}

Generator::Result Generator::EmitNamedCall(NameId name, const CallExpression& call, Operand wanted,
                                           bool statement) {
    const auto top = top_;
    // Inside a function its name with parentheses is the function, not the result.
    if (name == own_name_ && own_name_ != kNoName && owner_)
        return EmitSelfCall(name, call.args, wanted, statement);
    const auto symbol =
        name == own_name_ && own_name_ != kNoName ? LookupGlobal(name) : Lookup(name);
    if (symbol.kind == Symbol::Kind::Variable || symbol.kind == Symbol::Kind::Reference)
        return EmitIndex({symbol.place, false}, call.args, wanted);
    if (symbol.kind == Symbol::Kind::Constant)
        return EmitIndex({Constant(symbol.value), false}, call.args, wanted);
    if (symbol.kind == Symbol::Kind::Method)
        return EmitSelfCall(name, call.args, wanted, statement);
    const auto first = EmitArguments(call.args);
    FreeDownTo(top);
    const auto place = statement ? kNowhere : Destination(wanted);
    const auto site =
        AddNameSite(name, first, call.args.size(), symbol.kind == Symbol::Kind::Procedure);
    const bool builtin =
        symbol.kind == Symbol::Kind::Unknown && procedure_->sites[site].builtin != nullptr;
    Put(builtin ? Op::CallBuiltin : Op::Call, place, kNowhere, site,
        statement ? unsigned{kSet} : 0U);
    return Made(place, wanted);
}

/// `base(args)` where base is a value: an element, or what an object's default member gives.
Generator::Result Generator::EmitIndex(Result base, const std::vector<ExpressionPtr>& args,
                                       Operand wanted) {
    const auto top = base.temporary ? base.place - kTemporaryBase : top_;
    if (args.size() == 1 && args[0] && !base.hard) {
        const auto index = Emit(*args[0]);
        FreeDownTo(top);
        const auto place = Destination(wanted);
        Put(Op::Index, place, base.place, index.place,
            FreeFlag(base, kFreeB) | FreeFlag(index, kFreeC));
        return Made(place, wanted);
    }
    const auto first = EmitArguments(args);
    FreeDownTo(top);
    const auto place = Destination(wanted);
    Put(Op::IndexMany, place, base.place, AddSite(kNoName, first, args.size()),
        FreeFlag(base, kFreeB));
    return Made(place, wanted);
}

std::uint32_t Generator::EmitArguments(const std::vector<ExpressionPtr>& args) {
    // One place more than there are arguments: where a callee without any begins its frame.
    const auto first = Temporaries(args.size() + 1);
    top_ = first - kTemporaryBase + static_cast<std::uint32_t>(args.size());
    EmitArgumentsAt(args, first);
    return first;
}

void Generator::EmitArgumentsAt(const std::vector<ExpressionPtr>& args, std::uint32_t first) {
    for (std::size_t i = 0; i < args.size(); ++i)
        EmitArgument(args[i].get(), first + static_cast<std::uint32_t>(i));
}

void Generator::EmitArgument(const Expression* argument, Operand temporary) {
    const auto top = top_;
    if (!argument)
        Put(Op::Copy, temporary, Constant(Value::Missing()));
    else if (argument->parenthesized || !EmitReference(*argument, temporary))
        EmitTo(*argument, temporary);
    FreeDownTo(top);
}

/// A variable or element as a reference; false when the expression is neither.
bool Generator::EmitReference(const Expression& expression, Operand temporary) {
    if (const auto* name = As<NameExpression>(expression)) {
        const auto symbol = Lookup(name->name);
        if (symbol.kind == Symbol::Kind::Variable || symbol.kind == Symbol::Kind::Reference) {
            Put(Op::TakeRef, temporary, symbol.place);
            return true;
        }
        if (symbol.kind != Symbol::Kind::Unknown) return false;
        const auto site = AddNameSite(name->name, kTemporaryBase + top_, 0);
        Temporaries(1);
        --top_;
        Put(Op::ReadName, temporary, kNowhere, site, kWantRef);
        return true;
    }
    const auto* call = As<CallExpression>(expression);
    const auto* base = call ? As<NameExpression>(*call->base) : nullptr;
    if (!base || call->args.empty() || base->name == own_name_) return false;
    const auto symbol = Lookup(base->name);
    const auto first = kTemporaryBase + top_;
    if (symbol.kind == Symbol::Kind::Unknown) {
        if (FindBuiltin(names_.Spelling(base->name))) return false;
        EmitArguments(call->args);
        Put(Op::Call, temporary, kNowhere, AddNameSite(base->name, first, call->args.size()),
            kWantRef);
        return true;
    }
    if (symbol.kind != Symbol::Kind::Variable && symbol.kind != Symbol::Kind::Reference)
        return false;
    EmitArguments(call->args);
    Put(Op::IndexRef, temporary, symbol.place, AddSite(kNoName, first, call->args.size()));
    return true;
}

Generator::Result Generator::EmitUnary(const UnaryExpression& unary, Operand wanted) {
    const auto top = top_;
    const auto operand = Emit(*unary.operand);
    FreeDownTo(top);
    if (unary.op == Operator::Plus) {
        const auto place = Destination(wanted);
        Put(Op::Plus, place, operand.place, kNowhere, FreeFlag(operand, kFreeB));
        return Made(place, wanted);
    }
    const auto place = Destination(wanted);
    Put(OpOf(unary.op), place, operand.place, kNowhere, FreeFlag(operand, kFreeB));
    return Made(place, wanted);
}

Generator::Result Generator::EmitBinary(const BinaryExpression& binary, Operand wanted) {
    const auto top = top_;
    const auto left = Emit(*binary.left);
    const auto right = Emit(*binary.right);
    FreeDownTo(top);
    const auto place = Destination(wanted);
    auto flags = FreeFlag(left, kFreeB) | FreeFlag(right, kFreeC);
    if (left.hard) flags |= kHardLeft;
    if (right.hard) flags |= kHardRight;
    Put(OpOf(binary.op), place, left.place, right.place, flags);
    return Made(place, wanted);
}

Generator::Result Generator::EmitConcat(const ConcatExpression& chain, Operand wanted) {
    const auto top = top_;
    if (chain.parts.size() == 2) {
        const auto left = Emit(*chain.parts[0]);
        const auto right = Emit(*chain.parts[1]);
        FreeDownTo(top);
        const auto place = Destination(wanted);
        Put(Op::Concat, place, left.place, right.place,
            FreeFlag(left, kFreeB) | FreeFlag(right, kFreeC));
        return Made(place, wanted);
    }
    const auto first = Temporaries(chain.parts.size());
    for (std::size_t i = 0; i < chain.parts.size(); ++i) {
        const auto& part = *chain.parts[i];
        const auto place = first + static_cast<std::uint32_t>(i);
        if (!As<NameExpression>(part) || !EmitReference(part, place)) EmitTo(part, place);
    }
    FreeDownTo(top);
    const auto place = Destination(wanted);
    Put(Op::ConcatMany, place, first, static_cast<std::uint32_t>(chain.parts.size()));
    return Made(place, wanted);
}

std::size_t Generator::EmitJumpUnless(const Expression& condition) {
    const auto* binary = As<BinaryExpression>(condition);
    if (!binary || !IsComparison(binary->op)) return EmitJumpIf(condition, false);
    const auto top = top_;
    const auto left = Emit(*binary->left);
    const auto right = Emit(*binary->right);
    FreeDownTo(top);
    auto flags = FreeFlag(left, kFreeB) | FreeFlag(right, kFreeC);
    if (left.hard) flags |= kHardLeft;
    if (right.hard) flags |= kHardRight;
    return Put(JumpUnless(binary->op), kNowhere, left.place, right.place, flags);
}

std::size_t Generator::EmitJumpIf(const Expression& condition, bool when) {
    const auto top = top_;
    const auto result = Emit(condition);
    FreeDownTo(top);
    return Put(when ? Op::JumpIfTrue : Op::JumpIfFalse, kNowhere, result.place, kNowhere,
               FreeFlag(result, kFreeB));
}

} // namespace zentrel::vbscript
