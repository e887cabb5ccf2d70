#include "automation/vbscript/runtime.h"

#include "automation/vbscript/calendar.h"
#include "automation/vbscript/errors.h"
#include "automation/vbscript/generator.h"
#include "automation/vbscript/parser.h"
#include "automation/vbscript/text.h"

#include <chrono>
#include <ctime>

namespace zentrel::vbscript {

Runtime::Runtime(Callbacks given) : callbacks(std::move(given)), machine(*this) {
    global_module = std::make_unique<ScriptModule>(*this, "Global");
    err_object = MakeErrObject(*this);
}

Runtime::~Runtime() {
    Close();
}

void Runtime::Close() {
    constexpr int kMostLastWords = 100000;
    global_module->ClearGlobals();
    for (auto& module : modules)
        module->ClearGlobals();
    for (int i = 0; tracked; ++i) {
        // A Class_Terminate that makes new objects must not go on for ever.
        closing = i > kMostLastWords;
        auto* one = tracked;
        const Handle<Object> keep(one->Self());
        one->Untrack();
        one->LetGo();
    }
    closing = false;
    modules.clear();
    objects.clear();
    global_module = std::make_unique<ScriptModule>(*this, "Global");
    err.Clear();
}

const ClassInfo& Runtime::DeadClass() {
    static const ClassInfo dead;
    return dead;
}

HostObject* Runtime::FindObject(NameId name) const {
    const auto found = objects.find(name);
    return found == objects.end() ? nullptr : found->second.get();
}

std::string Runtime::SpellingOf(NameId name) const {
    return Utf16ToUtf8(names.Spelling(name));
}

double Runtime::Now() const {
    if (callbacks.now) return callbacks.now();
    using namespace std::chrono;
    const auto now = system_clock::now();
    const auto seconds = system_clock::to_time_t(now);
    std::tm local{};
    localtime_r(&seconds, &local);
    const auto part = duration<double>(now - system_clock::from_time_t(seconds)).count();
    const double time = local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + part;
    return static_cast<double>(DayNumber(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday)) +
           time / 86400.0;
}

void Runtime::RunText(ScriptModule& module, std::u16string_view text) {
    const auto source = std::make_shared<const SourceText>(SourceText{std::u16string(text)});
    CompiledProgram compiled;
    try {
        const auto program = ParseProgram(source->text, names);
        module.DeclareVariables(program);
        compiled = Compile(program, module, source);
    } catch (ScriptError& error) {
        if (error.info.module.empty()) error.info.module = module.Name();
        error.info.line_text = source->Line(error.info.line);
        throw;
    }
    for (auto& info : compiled.classes)
        module.Adopt(std::move(info));
    for (auto& procedure : compiled.procedures)
        module.Adopt(std::move(procedure));
    machine.Run(*compiled.text, nullptr, {});
}

std::string SourceText::Line(int number) const {
    std::size_t at = 0;
    for (int line = 1; line < number && at < text.size(); ++line) {
        const auto end = text.find_first_of(u"\r\n", at);
        if (end == std::u16string::npos) return {};
        at = end + (text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n' ? 2 : 1);
    }
    if (number < 1 || at > text.size()) return {};
    const auto end = text.find_first_of(u"\r\n", at);
    return Utf16ToUtf8(std::u16string_view(text).substr(
        at, end == std::u16string::npos ? std::u16string::npos : end - at));
}

} // namespace zentrel::vbscript
