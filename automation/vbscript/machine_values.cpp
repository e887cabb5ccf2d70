#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/machine.h"
#include "automation/vbscript/operators.h"
#include "automation/vbscript/runtime.h"

namespace zentrel::vbscript {
namespace {

Operator OperatorOf(Op op, Op first, Operator first_operator) {
    const int offset = static_cast<int>(op) - static_cast<int>(first);
    return static_cast<Operator>(static_cast<int>(first_operator) + offset);
}

Hard HardOf(const Instruction& in) {
    return static_cast<Hard>((in.flags & kHardLeft ? 1 : 0) | (in.flags & kHardRight ? 2 : 0));
}

/// An array that lends an element out is copied at once: a later write through the loan must not
/// reach the copy.
Value Snapshot(const Value& value) {
    if (value.IsArray() && value.AsArray()->Locked())
        return Value::FromArray(ArrayData::Copy(*value.AsArray()).get());
    return value;
}

/// A value that a For loop counts with.
Value LoopNumber(const Value& value) {
    auto number = Binary(Operator::Add, Plain(value), Value::Integer(0));
    if (number.IsNull()) Raise(ErrorNumber::InvalidNull);
    return number;
}

} // namespace

/// Ends the temporaries that an instruction has used up.
void Machine::Free(const Instruction& in, const Cursor& at) {
    if (in.flags & kFreeB) at[in.b].Clear();
    if (in.flags & kFreeC) at[in.c].Clear();
}

void Machine::Store(const Instruction& in, const Cursor& at, Value&& value) {
    if (in.a == kNowhere) return;
    if ((in.flags & kResolve) && value.IsObject()) value = DefaultValue(value.AsObject());
    at[in.a] = std::move(value);
}

void Machine::BinarySlow(const Instruction& in, const Cursor& at) {
    auto result = Binary(OperatorOf(in.op, Op::Add, Operator::Add), at[in.b], at[in.c]);
    Free(in, at);
    at[in.a] = std::move(result);
}

Value Machine::CompareSlow(const Instruction& in, const Cursor& at, Op from) {
    const auto op =
        from == Op::JumpIfCase ? Operator::Equal : OperatorOf(in.op, from, Operator::Equal);
    auto result = Compare(op, at[in.b], at[in.c], HardOf(in));
    Free(in, at);
    return result;
}

void Machine::DoLet(const Instruction& in, const Cursor& at) {
    auto value = Snapshot(at[in.b].Target());
    if (value.IsObject()) value = DefaultValue(value.AsObject());
    Free(in, at);
    (in.flags & kThrough ? at[in.a].Target() : at[in.a]) = std::move(value);
}

void Machine::DoSetVar(const Instruction& in, const Cursor& at) {
    Value value = at[in.b].Target();
    Free(in, at);
    if (!value.IsObject()) Raise(ErrorNumber::ObjectRequired);
    (in.flags & kThrough ? at[in.a].Target() : at[in.a]) = std::move(value);
}

void Machine::DoCopy(const Instruction& in, const Cursor& at) {
    auto value = Snapshot(at[in.b].Target());
    Free(in, at);
    at[in.a] = std::move(value);
}

void Machine::DoIs(const Instruction& in, const Cursor& at) {
    const bool same = Same(at[in.b], at[in.c]);
    Free(in, at);
    at[in.a] = Value::Boolean(same);
}

void Machine::DoUnary(const Instruction& in, const Cursor& at) {
    Value result;
    if (in.op == Op::Not)
        result = Not(at[in.b]);
    else if (in.op == Op::Negate)
        result = Negate(at[in.b]);
    else
        result = at[in.b].Target();
    Free(in, at);
    at[in.a] = std::move(result);
}

void Machine::DoConcat(const Instruction& in, const Cursor& at) {
    auto& target = in.flags & kThrough ? at[in.a].Target() : at[in.a];
    const auto& left = at[in.b].Target();
    const auto& right = at[in.c].Target();
    if (left.IsString()) {
        const auto text = right.IsString() ? right
                          : right.IsNull() ? Value::String({})
                                           : ToText(right);
        // A string that grows onto itself, or that ends here anyway, grows in place.
        if (&left == &target && target.IsString()) {
            target.Append(text.AsText());
            if (in.flags & kFreeC) at[in.c].Clear();
            return;
        }
        Value result;
        if (in.flags & kFreeB)
            result.Swap(at[in.b].Target());
        else
            result = left;
        result.Append(text.AsText());
        Free(in, at);
        target = std::move(result);
        return;
    }
    Value* parts[] = {&at[in.b], &at[in.c]};
    auto result = Concatenate(parts);
    Free(in, at);
    target = std::move(result);
}

void Machine::DoConcatMany(const Instruction& in, const Cursor& at) {
    auto& target = in.flags & kThrough ? at[in.a].Target() : at[in.a];
    auto* first = &at[in.b];
    std::vector<Value*> parts;
    for (std::uint32_t i = 0; i < in.c; ++i)
        parts.push_back(first + i);
    const bool grows = first != &target && target.IsString() && &first->Target() == &target;
    if (grows) parts.erase(parts.begin());
    auto result = Concatenate(parts);
    for (std::uint32_t i = 0; i < in.c; ++i)
        first[i].Clear();
    if (!grows)
        target = std::move(result);
    else if (result.IsString())
        target.Append(result.AsText());
}

// --- loops ---

/// The state of a For: whether it is under way (a Boolean), its limit, its step.
void Machine::DoForInit(const Instruction& in, const Cursor& at) {
    auto* state = &at[in.c];
    auto from = LoopNumber(at[in.b]);
    state[1] = LoopNumber(state[1]);
    state[2] = LoopNumber(state[2]);
    if (in.flags & kFreeB) at[in.b].Clear();
    (in.flags & kThrough ? at[in.a].Target() : at[in.a]) = std::move(from);
    *state = Value::Boolean(true);
}

bool Machine::ForContinues(const Instruction& in, const Cursor& at) {
    const auto* state = &at[in.c];
    const auto op = ToDouble(state[2]) >= 0 ? Operator::LessEqual : Operator::GreaterEqual;
    return IsTrue(Compare(op, LoopNumber(at[in.b]), state[1], Hard::None));
}

bool Machine::DoForNext(const Instruction& in, const Cursor& at) {
    if (budget_ <= 0) AskHost();
    const auto* state = &at[in.c];
    if (state->type() == Type::Unset) Raise(ErrorNumber::ForNotInitialized);
    auto next = Binary(Operator::Add, LoopNumber(at[in.b]), state[2]);
    (in.flags & kThrough ? at[in.b].Target() : at[in.b]) = std::move(next);
    return ForContinues(in, at);
}

void Machine::DoEachInit(const Instruction& in, const Cursor& at) {
    const auto iteration = Make<Iteration>(at[in.b]);
    Free(in, at);
    at[in.a] = Value::FromObject(iteration);
}

bool Machine::DoEachNext(const Instruction& in, const Cursor& at) {
    Poll();
    if (!at[in.c].IsObject()) return false;
    const Handle<Object> keep(at[in.c].AsObject());
    Value item;
    if (!static_cast<Iteration&>(*keep).Next(item)) return false;
    (in.flags & kThrough ? at[in.b].Target() : at[in.b]) = Snapshot(item.Target());
    return true;
}

// --- statements ---

void Machine::DoWithBegin(const Instruction& in, const Cursor& at) {
    Value object = at[in.b].Target();
    Free(in, at);
    if (!object.IsObject()) RaiseObjectRequired(in.b);
    at[in.a] = std::move(object);
}

void Machine::SetErrorMode(bool resume_next) {
    frames_.back().resume_next = resume_next;
    runtime_.err.Clear();
}

void Machine::DoFail(const Instruction& in, const Cursor&) {
    Raise(static_cast<ErrorNumber>(in.a), runtime_.names.Spelling(SiteOf(in).name));
}

void Machine::DoDimArray(const Instruction& in, const Cursor& at) {
    const auto& shape = frames_.back().procedure->shapes[in.c];
    auto& variable = at[in.a].Target();
    if ((in.flags & kSet) && variable.IsArray()) Raise(ErrorNumber::TypeMismatch);
    // A Dim that is passed again leaves a fixed array as it is.
    if (variable.IsArray() && variable.AsArray()->Fixed()) return;
    variable = Value::FromArray(ArrayData::New(shape.bounds, !shape.bounds.empty()).get());
}

void Machine::DoReDim(const Instruction& in, const Cursor& at) {
    const auto& site = SiteOf(in);
    const auto args = SiteArguments(site, at);
    const auto bounds = Indices(args);
    for (auto& arg : args)
        arg.Clear();
    auto& variable = at[in.a].Target();
    const bool is_array = variable.IsArray();
    if (is_array && (variable.AsArray()->Fixed() || variable.AsArray()->Locked()))
        Raise(ErrorNumber::ArrayLocked);
    if ((in.flags & kPreserve) && is_array)
        variable.WritableArray()->Resize(bounds);
    else
        variable = Value::FromArray(ArrayData::New(bounds, false).get());
}

void Machine::DoErase(const Instruction& in, const Cursor& at) {
    auto& variable = at[in.a].Target();
    if (!variable.IsArray()) Raise(ErrorNumber::TypeMismatch);
    if (variable.AsArray()->Locked() && !variable.AsArray()->Fixed())
        Raise(ErrorNumber::ArrayLocked);
    if (variable.AsArray()->Fixed())
        variable.WritableArray()->Blank();
    else
        variable = Value::FromArray(ArrayData::New({}, false).get());
    if (in.flags & kFreeA) at[in.a].Clear();
}

} // namespace zentrel::vbscript
