#include "automation/script_host/script_failed.h"

#include "device/text.h"

namespace zentrel {

std::string FailureText(const vbscript::ErrorInfo& info) {
    std::string text = info.interrupted ? "The script was stopped" : "The script failed";
    if (!info.module.empty()) text += " in module " + info.module;
    if (!info.procedure.empty()) text += ", procedure " + info.procedure;
    if (info.line > 0) text += ", line " + std::to_string(info.line);
    if (!info.line_text.empty()) {
        text += ":\n    " + std::string(TrimBlanks(info.line_text));
    }
    if (info.interrupted) return text;
    return text + "\n" + info.description + " (error " + std::to_string(info.number) + ")";
}

ScriptFailed::ScriptFailed(vbscript::ErrorInfo info)
    : ScriptFailure(info.number, FailureText(info)), info_(std::move(info)) {}

} // namespace zentrel
