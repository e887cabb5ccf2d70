#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "partfile/part_definition.h"

namespace zentrel {

class FrmPart;
class cPrgmBits;

/// One change of device: takes the old one down, reads the new part file, builds the device from
/// it section by section, and shows it. Whatever the file holds, a usable device stands at the
/// end; what couldn't be used as it stands is told in one message.
class PartLoader {
  public:
    explicit PartLoader(FrmPart& frm) : frm_(frm) {}

    /// `sPartName` comes back as the path of the part file.
    void Load(std::string& sPartName, bool familyGiven);

  private:
    void Begin(std::string& sPartName);
    void Build();
    void Finish(bool familyGiven);

    // The sections, in their order.
    void ApplySetup(const SetupSection& setup);
    void AddPin(const PinEntry& entry);
    void AddRegister(const RegisterEntry& entry);
    void AddField(const FieldEntry& entry);
    cPrgmBits* MakeField(const FieldEntry& entry);
    void AddPLLs();
    void AddClkDists();
    void AddClkDist(const ClkDistEntry& entry);
    void AddModes();
    /// False when a module doesn't compile: the load ends there.
    bool LoadScripts();
    void TellCompileFailure(const ScriptModule& module, int number, const class CompileFailure&);
    /// False when one of them has loaded another device.
    bool RunOnLoadHooks();

    /// Runs a step behind the scripts. Once a module stands, its failures are passed over.
    void Late(const std::function<void()>& step);
    /// Runs a setter with the file's value; one that the model refuses becomes a problem, and
    /// `fallback` is set instead.
    void Set(std::string_view section, std::string_view key, const std::string& value,
             const std::function<void()>& setter, const std::string& used,
             const std::function<void()>& fallback);
    /// A name that a collection can hold: the file's, or the default for an empty one.
    std::string Named(std::string_view section, std::string_view word, int entry,
                      const std::string& name);
    void Note(std::string_view section, std::string key, std::string value, std::string used);
    void TellProblems();

    FrmPart& frm_;
    std::string path_;
    PartDefinition definition_;
    bool scriptsStand_ = false;
};

} // namespace zentrel
