#pragma once

#include "automation/vbscript/machine.h"
#include "automation/vbscript/module.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace zentrel::vbscript {

/// The state behind Err.
struct ErrorState {
    int number = 0;
    std::u16string source;
    std::u16string description;
    std::u16string help_file;
    int help_context = 0;

    void Clear() { *this = {}; }
};

/// Everything that belongs to one engine.
class Runtime {
  public:
    explicit Runtime(Callbacks callbacks);
    ~Runtime();
    Runtime(const Runtime&) = delete;
    Runtime& operator=(const Runtime&) = delete;

    /// Compiles and runs a text in a module; null scope means the module itself.
    void RunText(ScriptModule& module, std::u16string_view text);
    HostObject* FindObject(NameId name) const;
    std::string SpellingOf(NameId name) const;
    /// Local time as a serial number.
    double Now() const;
    /// Ends all objects, circles included, then drops all code.
    void Close();
    bool closing = false; ///< no more Class_Terminate
    /// A class without members: that of instances whose engine is gone.
    static const ClassInfo& DeadClass();

    NameTable names;
    Callbacks callbacks;
    Tracked* tracked = nullptr;
    std::unordered_map<NameId, Handle<HostObject>> objects;
    ErrorState err;
    ErrorInfo last_error;
    std::uint32_t random_state = 0x50000; ///< 24 bits
    Machine machine;
    std::unique_ptr<ScriptModule> global_module;
    std::vector<std::unique_ptr<ScriptModule>> modules;
    Handle<HostObject> err_object;
};

/// The Err object.
Handle<HostObject> MakeErrObject(Runtime& runtime);

} // namespace zentrel::vbscript
