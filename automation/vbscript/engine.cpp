#include "automation/vbscript/errors.h"
#include "automation/vbscript/runtime.h"
#include "automation/vbscript/text.h"
#include "automation/vbscript/vbscript.h"

namespace zentrel::vbscript {

Engine::Engine(Callbacks callbacks) : runtime_(std::make_unique<Runtime>(std::move(callbacks))) {}

Engine::~Engine() = default;

void Engine::Reset() {
    if (Running()) Raise(ErrorNumber::InvalidCall);
    runtime_->Close();
    runtime_->last_error = {};
}

void Engine::AddObject(std::string_view name, const Handle<HostObject>& object) {
    const auto id = runtime_->names.Intern(Utf8ToUtf16(name));
    if (!runtime_->objects.try_emplace(id, object).second) Raise(ErrorNumber::KeyExists);
}

Module& Engine::AddModule(std::string_view name) {
    if (FindModule(name)) Raise(ErrorNumber::KeyExists);
    runtime_->modules.push_back(std::make_unique<ScriptModule>(*runtime_, std::string(name)));
    return *runtime_->modules.back();
}

Module* Engine::FindModule(std::string_view name) const {
    const auto wanted = Utf8ToUtf16(name);
    for (const auto& module : runtime_->modules)
        if (CompareText(Utf8ToUtf16(module->Name()), wanted, true) == 0) return module.get();
    return nullptr;
}

std::vector<Module*> Engine::Modules() const {
    std::vector<Module*> modules;
    for (const auto& module : runtime_->modules)
        modules.push_back(module.get());
    return modules;
}

Module& Engine::GlobalModule() const {
    return *runtime_->global_module;
}

const ErrorInfo& Engine::LastError() const {
    return runtime_->last_error;
}

bool Engine::Running() const {
    return runtime_->machine.Running();
}

void SetMemoryLimit(std::size_t bytes) {
    memory::SetLimit(bytes);
}

} // namespace zentrel::vbscript
