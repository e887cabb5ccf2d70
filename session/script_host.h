#pragma once

#include <string>
#include <string_view>

#include "device/errors.h"

namespace zentrel {

/// Code that doesn't compile: the engine's own error number, its words, and the line from 1.
class CompileFailure : public Error {
  public:
    CompileFailure(int number, const std::string& description, int line)
        : Error(number, description), line_(line) {}
    int line() const { return line_; }

  private:
    int line_;
};

/// What the session needs of a script engine to load the modules of a part file. Running them is
/// ScriptHooks' side. Every member has a default that does nothing: files without scripts need no
/// engine, and without one the modules are passed over.
class ScriptHost {
  public:
    virtual ~ScriptHost() = default;
    /// Drops all modules, code and named objects.
    virtual void Reset() {}
    virtual void SetAllowUI(bool allow) { (void)allow; }
    virtual void SetLanguage(std::string_view language) { (void)language; }
    virtual void SetUseSafeSubset(bool safe) { (void)safe; }
    /// Makes the program's object of that name ("Part", "frmPart") visible to all code.
    virtual void AddObject(std::string_view name) { (void)name; }
    /// Throws DuplicateKey for a name that stands already.
    virtual void AddModule(std::string_view name) { (void)name; }
    /// Compiles text into a module. Throws CompileFailure.
    virtual void AddCode(std::string_view module, std::string_view text) {
        (void)module, (void)text;
    }
};

} // namespace zentrel
