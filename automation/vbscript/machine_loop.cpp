#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/machine.h"
#include "automation/vbscript/machine_quick.h"
#include "automation/vbscript/module.h"
#include "automation/vbscript/operators.h"

namespace zentrel::vbscript {

using namespace quick;

/// The heart: fetch, and either do it at once or hand it to the function that knows all the rules.
/// What a function may change (the frame, by a call) is read again behind it.
void Machine::Dispatch() {
    const Instruction* pc = frames_.back().pc;
    Value** banks = frames_.back().procedure->module->Banks();
    const auto reg = [&banks](Operand operand) -> Value& {
        return banks[operand >> kPlaceBits][operand & kMaxPlace];
    };
    const auto slow = [&](auto function, const Instruction& in, auto... more) {
        frames_.back().pc = pc;
        return (this->*function)(in, Cursor{pc, banks}, more...);
    };
    const auto call = [&](auto function, const Instruction& in) {
        frames_.back().pc = pc;
        (this->*function)(in, Cursor{pc, banks});
        pc = frames_.back().pc;
        banks = frames_.back().procedure->module->Banks();
    };
    const auto jump = [&](const Instruction& in) {
        pc = frames_.back().procedure->code.data() + in.a;
    };
    const auto poll = [&] {
        if (--budget_ <= 0) {
            frames_.back().pc = pc;
            AskHost();
        }
    };
    const auto compare = [&](const Instruction& in, auto operation) {
        const auto quick = QuickCompare(reg(in.b), reg(in.c), operation);
        if (quick != Outcome::Unknown && !(in.flags & (kFreeB | kFreeC))) {
            reg(in.a).SetNumber(Type::Boolean, std::int64_t{quick == Outcome::Yes ? -1 : 0});
        } else {
            auto result = slow(&Machine::CompareSlow, in, Op::Equal);
            reg(in.a) = std::move(result);
        }
    };
    const auto jump_unless = [&](const Instruction& in, auto operation) {
        auto quick = QuickCompare(reg(in.b), reg(in.c), operation);
        if (quick == Outcome::Unknown)
            quick = QuickCompare(reg(in.b).Target(), reg(in.c).Target(), operation);
        if (quick == Outcome::Unknown || (in.flags & (kFreeB | kFreeC)))
            quick = Tell(IsTrue(slow(&Machine::CompareSlow, in, Op::JumpUnlessEqual)));
        if (quick == Outcome::No) jump(in);
    };
    const auto truth = [&](const Instruction& in) {
        const auto quick = QuickTruth(reg(in.b));
        if (quick != Outcome::Unknown) return quick == Outcome::Yes;
        frames_.back().pc = pc;
        const Value condition = reg(in.b).Target();
        Free(in, Cursor{pc, banks});
        return IsTrue(condition);
    };
    const auto arithmetic = [&](const Instruction& in, auto operation) {
        // The second try reads through ByRef parameters.
        if (!Quick(reg(in.a), reg(in.b), reg(in.c), operation) &&
            !Quick(reg(in.a), reg(in.b).Target(), reg(in.c).Target(), operation))
            slow(&Machine::BinarySlow, in);
    };
    const auto bits = [&](const Instruction& in, auto operation) {
        if (!QuickBits(reg(in.a), reg(in.b), reg(in.c), operation)) slow(&Machine::BinarySlow, in);
    };

    for (;;) {
        const Instruction& in = *pc++;
        switch (in.op) {
        case Op::Let: {
            const auto& from = reg(in.b);
            if (IsPlainNumber(from) || from.type() == Type::Boolean || from.IsString()) {
                auto& to = reg(in.a);
                if (in.flags & kFreeB)
                    to = std::move(reg(in.b));
                else
                    to = from;
            } else {
                slow(&Machine::DoLet, in);
            }
            break;
        }
        case Op::LetRef:
            slow(&Machine::DoLet, in);
            break;
        case Op::SetVar:
            slow(&Machine::DoSetVar, in);
            break;
        case Op::Copy:
            if (IsPlainNumber(reg(in.b)))
                reg(in.a) = reg(in.b);
            else
                slow(&Machine::DoCopy, in);
            break;
        case Op::TakeRef: {
            auto& variable = reg(in.b);
            const bool already =
                variable.type() == Type::Ref || variable.type() == Type::ElementRef;
            reg(in.a) = already ? variable : Value::Ref(&variable);
            break;
        }
        case Op::Clear:
            reg(in.a).Clear();
            break;
        case Op::Unset:
            reg(in.a) = Value::Unset();
            break;
        case Op::Add:
            arithmetic(in, Plus{});
            break;
        case Op::Subtract:
            arithmetic(in, Minus{});
            break;
        case Op::Multiply:
            arithmetic(in, Times{});
            break;
        case Op::Divide:
            if (!QuickDivide(reg(in.a), reg(in.b), reg(in.c))) slow(&Machine::BinarySlow, in);
            break;
        case Op::IntDivide:
        case Op::Mod:
            if (!QuickDivideIntegers(reg(in.a), reg(in.b), reg(in.c), in.op == Op::Mod))
                slow(&Machine::BinarySlow, in);
            break;
        case Op::And:
            bits(in, AndBits{});
            break;
        case Op::Or:
            bits(in, OrBits{});
            break;
        case Op::Xor:
            bits(in, XorBits{});
            break;
        case Op::Power:
        case Op::Eqv:
        case Op::Imp:
            slow(&Machine::BinarySlow, in);
            break;
        case Op::Equal:
            compare(in, Eq{});
            break;
        case Op::NotEqual:
            compare(in, Ne{});
            break;
        case Op::Less:
            compare(in, Lt{});
            break;
        case Op::Greater:
            compare(in, Gt{});
            break;
        case Op::LessEqual:
            compare(in, Le{});
            break;
        case Op::GreaterEqual:
            compare(in, Ge{});
            break;
        case Op::Is:
            slow(&Machine::DoIs, in);
            break;
        case Op::Not:
        case Op::Negate:
        case Op::Plus:
            slow(&Machine::DoUnary, in);
            break;
        case Op::Concat:
            slow(&Machine::DoConcat, in);
            break;
        case Op::ConcatMany:
            slow(&Machine::DoConcatMany, in);
            break;
        case Op::Jump:
            jump(in);
            break;
        case Op::JumpBack:
            poll();
            jump(in);
            break;
        case Op::JumpIfFalse:
            if (!truth(in)) jump(in);
            break;
        case Op::JumpIfTrue:
            if (truth(in)) jump(in);
            break;
        case Op::JumpUnlessEqual:
            jump_unless(in, Eq{});
            break;
        case Op::JumpUnlessNotEqual:
            jump_unless(in, Ne{});
            break;
        case Op::JumpUnlessLess:
            jump_unless(in, Lt{});
            break;
        case Op::JumpUnlessGreater:
            jump_unless(in, Gt{});
            break;
        case Op::JumpUnlessLessEqual:
            jump_unless(in, Le{});
            break;
        case Op::JumpUnlessGreaterEqual:
            jump_unless(in, Ge{});
            break;
        case Op::JumpIfCase: {
            auto quick = QuickCompare(reg(in.b), reg(in.c), Eq{});
            if (quick == Outcome::Unknown || (in.flags & kFreeC))
                quick = Tell(IsTrue(slow(&Machine::CompareSlow, in, Op::JumpIfCase)));
            if (quick == Outcome::Yes) jump(in);
            break;
        }
        case Op::ForInit:
            slow(&Machine::DoForInit, in);
            break;
        case Op::ForTest:
            if (!slow(&Machine::ForContinues, in)) jump(in);
            break;
        case Op::ForNext: {
            auto& variable = reg(in.b);
            const auto* state = &reg(in.c);
            const auto& limit = state[1];
            const auto& step = state[2];
            if (--budget_ > 0 && variable.IsInteger() && step.IsInteger() && limit.IsInteger()) {
                const auto type = Wider(variable, step);
                const auto next = variable.AsInteger() + step.AsInteger();
                if (Fits(type, next) && state->type() == Type::Boolean) {
                    variable.SetNumber(type, next);
                    const bool on = step.AsInteger() >= 0 ? next <= limit.AsInteger()
                                                          : next >= limit.AsInteger();
                    if (on) jump(in);
                    break;
                }
            }
            if (slow(&Machine::DoForNext, in)) jump(in);
            break;
        }
        case Op::EachInit:
            slow(&Machine::DoEachInit, in);
            break;
        case Op::EachNext:
            if (slow(&Machine::DoEachNext, in)) jump(in);
            break;
        case Op::ReadName:
            call(&Machine::DoReadName, in);
            break;
        case Op::BindName:
            slow(&Machine::DoBindName, in);
            break;
        case Op::Index: {
            const auto* element = QuickElement(reg(in.b), reg(in.c));
            if (element && IsPlainNumber(*element) && !(in.flags & kFreeB))
                reg(in.a) = *element;
            else
                slow(&Machine::DoIndex, in);
            break;
        }
        case Op::IndexMany:
            slow(&Machine::DoIndexMany, in);
            break;
        case Op::IndexRef:
            slow(&Machine::DoIndexRef, in);
            break;
        case Op::SetIndex: {
            const auto& value = reg(in.a);
            auto& base = reg(in.b).Target();
            if (IsPlainNumber(value) && base.IsArray() && reg(in.c).IsInteger() &&
                !(in.flags & (kFreeB | kSet)) && base.AsArray()->References() == 1) {
                if (auto* element = base.AsArray()->Element(reg(in.c).AsInteger())) {
                    *element = value;
                    break;
                }
            }
            slow(&Machine::DoSetIndex, in);
            break;
        }
        case Op::SetIndexMany:
            slow(&Machine::DoSetIndexMany, in);
            break;
        case Op::Call:
            poll();
            call(&Machine::DoCall, in);
            break;
        case Op::CallBuiltin:
            call(&Machine::DoCallBuiltin, in);
            break;
        case Op::Invoke:
            call(&Machine::DoInvoke, in);
            break;
        case Op::SetMember:
            call(&Machine::DoSetMember, in);
            break;
        case Op::Me:
            slow(&Machine::DoMe, in);
            break;
        case Op::New:
            slow(&Machine::DoNew, in);
            break;
        case Op::DimArray:
            slow(&Machine::DoDimArray, in);
            break;
        case Op::ReDim:
            slow(&Machine::DoReDim, in);
            break;
        case Op::Erase:
            slow(&Machine::DoErase, in);
            break;
        case Op::WithBegin:
            slow(&Machine::DoWithBegin, in);
            break;
        case Op::OnErrorResume:
            SetErrorMode(true);
            break;
        case Op::OnErrorGoto0:
            SetErrorMode(false);
            break;
        case Op::Return: {
            auto& frame = frames_.back();
            Value result = std::move(frame.base[frame.procedure->result]);
            const bool leaves = frame.entry;
            Pop();
            if (leaves) {
                result_ = std::move(result);
                return;
            }
            pc = frames_.back().pc;
            banks = frames_.back().procedure->module->Banks();
            if (IsPlainNumber(result) && pc[-1].a != kNowhere)
                reg(pc[-1].a) = result;
            else
                Store(pc[-1], Cursor{pc, banks}, std::move(result));
            break;
        }
        case Op::Fail:
            slow(&Machine::DoFail, in);
            break;
        }
    }
}

} // namespace zentrel::vbscript
