#include "automation/script_host/script_host.h"

#include <utility>

#include "automation/object_model/classes.h"
#include "automation/script_host/host_object.h"
#include "automation/script_host/script_failed.h"
#include "automation/script_host/script_values.h"
#include "device/number_text.h"
#include "session/frm_part.h"

namespace zentrel {

namespace {

using vbscript::ErrorInfo;
using vbscript::ScriptError;

constexpr int kDuplicateKey = 457;
constexpr int kSubscriptOutOfRange = 9;
constexpr int kOutOfStack = 28;
constexpr std::string_view kPartName = "Part";

// Scripts that set each other going. An engine watches its own stack alone, and each load of a
// device by a script brings a fresh one.
constexpr int kDeepest = 48;

// A script that is over sooner is never looked at.
constexpr std::chrono::milliseconds kQuiet{250};
constexpr std::chrono::milliseconds kBetweenLooks{100};

} // namespace

/// One script's stay on the thread.
class PartScripts::Stay {
  public:
    explicit Stay(PartScripts& scripts) : scripts_(scripts) {
        if (scripts_.depth_ >= kDeepest) throw ScriptFailed(ScriptError(kOutOfStack).info);
        if (scripts_.depth_++ == 0) scripts_.nextLook_ = Clock::time_point();
    }
    ~Stay() {
        if (--scripts_.depth_ == 0) scripts_.retired_.clear();
    }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

  private:
    PartScripts& scripts_;
};

PartScripts::PartScripts(FrmPart& form) : form_(form), engine_(MakeEngine()) {
    form_.links.scripts = this;
    Upward upward = form_.part.upward();
    upward.hooks = this;
    form_.part.Connect(upward);
}

PartScripts::~PartScripts() {
    form_.links.scripts = nullptr;
    Upward upward = form_.part.upward();
    upward.hooks = Upward::None().hooks;
    form_.part.Connect(upward);
}

std::unique_ptr<vbscript::Engine> PartScripts::MakeEngine() {
    vbscript::Callbacks callbacks;
    callbacks.message_box = [this](std::string_view prompt, int buttons, std::string_view title) {
        return MessageBox(prompt, buttons, title);
    };
    callbacks.input_box = [this](std::string_view prompt, std::string_view title,
                                 std::string_view proposal) {
        return form_.part.upward().messages->Ask(prompt, title, proposal);
    };
    callbacks.interrupt = [this] { return Interrupted(); };
    return std::make_unique<vbscript::Engine>(std::move(callbacks));
}

void PartScripts::Reset() {
    if (!engine_->Running()) {
        engine_->Reset();
        return;
    }
    retired_.push_back(std::exchange(engine_, MakeEngine()));
}

void PartScripts::AddObject(std::string_view name) {
    const objects::ObjectRef object =
        name == kPartName ? objects::RefTo(form_.part) : objects::RefTo(form_);
    engine_->AddObject(name, vbscript::Make<ProgramObject>(object));
}

void PartScripts::AddModule(std::string_view name) {
    try {
        engine_->AddModule(name);
    } catch (const ScriptError& error) {
        if (error.info.number == kDuplicateKey) throw DuplicateKey("Modules", name);
        throw ScriptFailed(error.info);
    }
}

void PartScripts::AddCode(std::string_view module, std::string_view text) {
    const Stay stay(*this);
    try {
        Item(module).AddCode(text);
    } catch (const ScriptError& error) {
        throw CompileFailure(error.info.number, error.info.description, error.info.line);
    }
}

vbscript::Module& PartScripts::Item(std::string_view module) const {
    if (vbscript::Module* found = engine_->FindModule(module)) return *found;
    ErrorInfo info = ScriptError(kSubscriptOutOfRange).info;
    info.description += ": the part file has no script module \"" + std::string(module) + "\"";
    throw ScriptFailed(info);
}

vbscript::Value PartScripts::Run(std::string_view module, std::string_view procedure,
                                 std::span<vbscript::Value> arguments) {
    const Stay stay(*this);
    vbscript::Module& item = Item(module);
    try {
        return item.Run(procedure, arguments);
    } catch (const ScriptError& error) {
        ErrorInfo info = error.info;
        if (info.module.empty()) info.module = module;
        if (info.procedure.empty() && info.line == 0) info.procedure = procedure;
        throw ScriptFailed(std::move(info));
    }
}

void PartScripts::ExecuteScript(std::string_view module, std::string_view procedure) {
    if (form_.session.bExecuteScripts) Run(module, procedure, {});
}

bool PartScripts::HasModule(std::string_view module) const {
    const vbscript::Module* found = engine_->FindModule(module);
    return found != nullptr && found->Name() == module;
}

std::int16_t PartScripts::RunWithText(std::string_view module, std::string_view procedure,
                                      std::string_view argument) {
    vbscript::Value text = vbscript::Value::Utf8(argument);
    const vbscript::Value result = Run(module, procedure, std::span(&text, 1));
    try {
        return objects::ToInt16(FromScript(result));
    } catch (const ScriptError& error) {
        throw ScriptFailed(error.info);
    } catch (const Error& error) {
        ErrorInfo info;
        info.number = error.number();
        info.module = module;
        info.procedure = procedure;
        info.description = error.what();
        throw ScriptFailed(std::move(info));
    }
}

int PartScripts::MessageBox(std::string_view prompt, int buttons, std::string_view title) {
    return form_.part.upward().messages->MessageBox(prompt, title, buttons);
}

bool PartScripts::Interrupted() {
    if (!BreakPressed) return false;
    const auto now = Clock::now();
    if (nextLook_ == Clock::time_point()) nextLook_ = now + kQuiet;
    if (now < nextLook_) return false;
    const bool pressed = BreakPressed();
    const bool stop =
        pressed && form_.part.upward().messages->MessageBox(
                       "A script is running. Stop it?\n\nWhat it has written so far stays.",
                       "Script", kMsgYesNo | kMsgQuestion | kMsgSecondButton) == kMsgYes;
    nextLook_ = Clock::now() + kBetweenLooks;
    return stop;
}

} // namespace zentrel
