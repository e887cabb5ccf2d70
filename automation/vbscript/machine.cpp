#include "automation/vbscript/machine.h"

#include "automation/vbscript/convert.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/generator.h"
#include "automation/vbscript/parser.h"
#include "automation/vbscript/runtime.h"
#include "automation/vbscript/text.h"

#include <algorithm>
#include <new>

namespace zentrel::vbscript {

Machine::Machine(Runtime& runtime)
    : runtime_(runtime),
      memory_(std::make_unique_for_overwrite<std::byte[]>(kStackSize * sizeof(Value))),
      stack_(reinterpret_cast<Value*>(memory_.get())), stack_end_(stack_ + kStackSize) {
    frames_.reserve(kMaxFrames);
}

Machine::~Machine() = default;

Value* Machine::Top() const {
    return frames_.empty() ? stack_ : frames_.back().base + frames_.back().procedure->frame_size;
}

/// A ByVal argument: the value behind a reference, an array that lends an element out as a copy.
void Machine::TakeValue(Value& argument) {
    Value own(argument.Target());
    if (own.IsArray() && own.AsArray()->Locked())
        own = Value::FromArray(ArrayData::Copy(*own.AsArray()).get());
    argument = std::move(own);
}

/// Lays out a frame over arguments that lie on the stack already. They end with the frame, or here
/// when there is to be none.
void Machine::Push(const Procedure& procedure, Instance* self, Value* args, std::size_t count,
                   bool entry) {
    const auto drop = [&](ErrorNumber error) {
        for (std::size_t i = 0; i < count; ++i)
            args[i].Clear();
        Raise(error, error == ErrorNumber::WrongArguments ? runtime_.names.Spelling(procedure.name)
                                                          : std::u16string_view());
    };
    if (count != procedure.parameter_count) drop(ErrorNumber::WrongArguments);
    if (frames_.size() >= kMaxFrames || stack_end_ - args <= procedure.frame_size)
        drop(ErrorNumber::OutOfStack);
    for (std::size_t i = 0; i < count; ++i)
        if (procedure.by_value[i]) TakeValue(args[i]);
    for (auto* place = args + count; place != args + procedure.frame_size; ++place)
        new (place) Value();
    if (self) self->Retain();
    frames_.push_back({&procedure, procedure.code.data(), args, self, false, entry});
    for (const auto place : procedure.unknown)
        args[place] = Value::Unset();
    Activate();
}

void Machine::Pop() {
    const auto frame = frames_.back();
    for (auto* place = frame.base; place != frame.base + frame.procedure->frame_size; ++place)
        place->Clear();
    frames_.pop_back();
    if (!extras_.empty()) extras_.erase(frames_.size());
    Activate();
    if (frame.self) frame.self->Release();
}

/// Points the banks at the topmost frame.
void Machine::Activate() {
    if (frames_.empty()) return;
    const auto& frame = frames_.back();
    auto** banks = frame.procedure->module->Banks();
    banks[kFrameBank] = frame.base;
    banks[kConstantBank] = const_cast<Value*>(frame.procedure->constants.data());
    banks[kFieldBank] = frame.self ? frame.self->Fields() : nullptr;
}

Value Machine::Run(const Procedure& procedure, Instance* self, std::span<Value> args) {
    if (nested_ >= kMaxNested) Raise(ErrorNumber::OutOfStack);
    Poll();
    auto* top = Top();
    if (stack_end_ - top <= static_cast<std::ptrdiff_t>(args.size()))
        Raise(ErrorNumber::OutOfStack);
    for (std::size_t i = 0; i < args.size(); ++i) {
        // A plain value is handed over by reference, so that the procedure may change it.
        const bool direct = args[i].type() == Type::Ref || args[i].type() == Type::ElementRef;
        new (top + i) Value(direct ? args[i] : Value::Ref(&args[i]));
    }
    const auto depth = frames_.size();
    Push(procedure, self, top, args.size(), true);
    return RunAbove(depth);
}

/// Runs the frame just pushed; the outermost run's end is the end of an interruption, too.
Value Machine::RunAbove(std::size_t depth) {
    struct Level {
        explicit Level(Machine& m) : machine(m) { ++machine.nested_; }
        ~Level() {
            if (--machine.nested_ == 0) machine.stopping_ = false;
        }
        Machine& machine;
    };
    const Level level(*this);
    Execute(depth);
    return std::move(result_);
}

void Machine::RunTerminate(Instance& instance) noexcept {
    if (stopping_) return;
    const auto err = runtime_.err;
    try {
        Run(*instance.info().terminate, &instance, {});
    } catch (...) {
        // An object's end has nobody to report to.
        result_.Clear();
    }
    runtime_.err = err;
}

/// Runs until the frames above `depth` have ended; an error goes to the nearest of them that has
/// On Error Resume Next, or out.
void Machine::Execute(std::size_t depth) {
    for (;;) {
        ErrorInfo info;
        try {
            Dispatch();
            return;
        } catch (const ScriptError& error) {
            info = error.info;
        } catch (const std::bad_alloc&) {
            info = ScriptError(static_cast<int>(ErrorNumber::OutOfMemory)).info;
        } catch (const std::exception& error) {
            info = ScriptError(440).info;
            info.description = error.what();
        }
        if (!Recover(info, depth)) throw ScriptError(info);
    }
}

bool Machine::Recover(ErrorInfo& info, std::size_t depth) {
    Locate(info);
    while (frames_.size() > depth) {
        auto& frame = frames_.back();
        if (frame.resume_next && !info.interrupted) {
            const auto& procedure = *frame.procedure;
            for (auto i = procedure.local_count; i < procedure.frame_size; ++i)
                frame.base[i].Clear();
            const auto pc = static_cast<std::size_t>(frame.pc - procedure.code.data()) - 1;
            const auto* here = MarkAt(frame, pc, false);
            const auto* next = MarkAt(frame, pc, true);
            const auto resume = here && here->resume != 0 ? here->resume
                                : next                    ? next->start
                                       : static_cast<std::uint32_t>(procedure.code.size() - 1);
            frame.pc = procedure.code.data() + resume;
            runtime_.err.number = info.number;
            runtime_.err.source = Utf8ToUtf16(info.source);
            runtime_.err.description = Utf8ToUtf16(info.description);
            return true;
        }
        Pop();
    }
    return false;
}

/// The mark of the statement that the instruction belongs to, or the one behind it.
const Mark* Machine::MarkAt(const Frame& frame, std::size_t pc, bool next) const {
    const auto& marks = frame.procedure->marks;
    const auto behind =
        std::upper_bound(marks.begin(), marks.end(), pc,
                         [](std::size_t place, const Mark& mark) { return place < mark.start; });
    if (next) return behind == marks.end() ? nullptr : &*behind;
    return behind == marks.begin() ? nullptr : &*(behind - 1);
}

/// Adds where it happened, unless a deeper place has done so.
void Machine::Locate(ErrorInfo& info) const {
    if (frames_.empty() || !info.module.empty()) return;
    const auto& frame = frames_.back();
    const auto& procedure = *frame.procedure;
    info.module = procedure.module->Name();
    if (!procedure.is_text) info.procedure = runtime_.SpellingOf(procedure.name);
    if (info.line != 0) return; // a compile error of Execute: its own text's line
    const auto pc = static_cast<std::size_t>(frame.pc - procedure.code.data()) - 1;
    if (const auto* mark = MarkAt(frame, pc, false)) {
        info.line = mark->at.line;
        info.column = mark->at.column;
        if (procedure.source) info.line_text = procedure.source->Line(mark->at.line);
    }
}

void Machine::AskHost() {
    budget_ = kStepsPerQuestion;
    if (!stopping_ && (!runtime_.callbacks.interrupt || !runtime_.callbacks.interrupt())) return;
    // Also what a Class_Terminate was doing ends, and the script around it at its next step.
    stopping_ = true;
    budget_ = 0;
    ScriptError error(static_cast<int>(ErrorNumber::UserInterrupt));
    error.info.interrupted = true;
    throw error;
}

ScriptModule& Machine::CurrentModule() {
    return frames_.empty() ? *runtime_.global_module : *frames_.back().procedure->module;
}

// --- Execute and Eval ---

/// The frame whose variables the running code sees: Execute's own frames belong to it.
std::size_t Machine::ScopeFrame() const {
    auto index = frames_.size() - 1;
    while (index > 0 && frames_[index].procedure->borrows)
        --index;
    return index;
}

/// Runs code that uses the variables of the procedure around it.
Value Machine::RunBorrowing(const Procedure& procedure) {
    const auto scope = ScopeFrame();
    const auto outer = frames_[scope];
    const auto find = [&](NameId name) -> Value* {
        for (const auto& local : outer.procedure->locals)
            if (local.name == name) return &outer.base[local.place];
        const auto extras = extras_.find(scope);
        if (extras == extras_.end()) return nullptr;
        const auto extra = extras->second.find(name);
        return extra == extras->second.end() ? nullptr : extra->second.get();
    };
    for (const auto name : procedure.declares) {
        auto* variable = find(name);
        if (!variable) extras_[scope][name] = std::make_unique<Value>();
        if (variable && variable->type() == Type::Unset) variable->Clear();
    }
    if (nested_ >= kMaxNested) Raise(ErrorNumber::OutOfStack);
    const auto depth = frames_.size();
    auto* base = Top();
    Push(procedure, outer.self, base, 0, true);
    const auto bind = [&](NameId name, Operand place) {
        auto* variable = find(name);
        if (variable && variable->type() != Type::Unset) base[place] = Value::Ref(variable);
    };
    for (const auto& local : procedure.locals)
        bind(local.name, local.place);
    return RunAbove(depth);
}

void Machine::ExecuteHere(std::u16string_view text) {
    const auto scope = ScopeFrame();
    const auto* inside = frames_[scope].procedure;
    if (inside->is_text) return ExecuteGlobal(text);
    auto& module = *inside->module;
    const auto source = std::make_shared<const SourceText>(SourceText{std::u16string(text)});
    const auto program = ParseProgram(source->text, runtime_.names);
    auto compiled = Compile(program, module, source, inside);
    for (auto& info : compiled.classes)
        module.Adopt(std::move(info));
    for (auto& procedure : compiled.procedures)
        module.Adopt(std::move(procedure));
    RunBorrowing(*compiled.text);
}

Value Machine::EvalHere(std::u16string_view text) {
    const auto scope = ScopeFrame();
    const auto* inside = frames_[scope].procedure;
    const auto source = std::make_shared<const SourceText>(SourceText{std::u16string(text)});
    const auto expression = ParseExpressionText(source->text, runtime_.names);
    const auto* procedure_scope = inside->is_text ? nullptr : inside;
    const auto compiled = CompileExpression(*expression, *inside->module, source, procedure_scope);
    return procedure_scope ? RunBorrowing(*compiled) : Run(*compiled, nullptr, {});
}

void Machine::ExecuteGlobal(std::u16string_view text) {
    runtime_.RunText(CurrentModule(), text);
}

} // namespace zentrel::vbscript
