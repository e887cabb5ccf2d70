#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/runtime.h"

namespace zentrel::vbscript {
namespace {

std::string Utf8At(const BuiltinCall& call, std::size_t index) {
    return call.Has(index) ? Text(call, index).ToUtf8() : std::string();
}

/// MsgBox(prompt[, buttons[, title[, helpfile, context]]])
Value MsgBox(BuiltinCall& call) {
    constexpr int kOk = 1;
    const auto prompt = Utf8At(call, 0);
    const auto buttons = call.Has(1) ? ToLong(call[1]) : 0;
    const auto title = Utf8At(call, 2);
    const auto& show = call.runtime.callbacks.message_box;
    return Value::Integer(show ? show(prompt, buttons, title) : kOk);
}

/// InputBox(prompt[, title[, default[, x, y[, helpfile, context]]]]): Empty when cancelled.
Value InputBox(BuiltinCall& call) {
    const auto prompt = Utf8At(call, 0);
    const auto title = Utf8At(call, 1);
    const auto proposal = Utf8At(call, 2);
    const auto& ask = call.runtime.callbacks.input_box;
    const auto answer = ask ? ask(prompt, title, proposal) : std::nullopt;
    return answer ? Value::Utf8(*answer) : Value();
}

constexpr Builtin kFunctions[] = {
    {"InputBox", 1, 7, InputBox},
    {"MsgBox", 1, 5, MsgBox},
};

} // namespace

std::span<const Builtin> InteractionFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
