#include "device/number_text.h"
#include "session/frm_part.h"
#include "session/part_loader.h"

namespace zentrel {

// The script modules of a part file go to the engine.

namespace {

constexpr std::string_view kScripts = "SCRIPTS";
constexpr int kModuleDigits = 3;
constexpr int kLineDigits = 5;

} // namespace

bool PartLoader::LoadScripts() {
    frm_.session.bExecuteScripts = definition_.executeScripts;
    ScriptHost* host = frm_.links.scripts;
    if (host == nullptr) return true;
    host->Reset();
    host->SetAllowUI(true);
    host->SetLanguage("VBScript");
    host->SetUseSafeSubset(false);
    host->AddObject("Part");
    host->AddObject("frmPart");
    int number = 0;
    for (const ScriptModule& module : definition_.scripts) {
        try {
            host->AddModule(module.name);
            host->AddCode(module.name, module.Code());
            scriptsStand_ = true;
        } catch (const CompileFailure& failure) {
            TellCompileFailure(module, number, failure);
            return false;
        } catch (const DuplicateKey&) {
            Note(kScripts, "SCRIPTNAME" + KeyNumber(number, kModuleDigits), module.name,
                 "left out");
        }
        ++number;
    }
    return true;
}

// The quoted line is the one whose number is the module's, not the faulty one.
void PartLoader::TellCompileFailure(const ScriptModule& module, int number,
                                    const CompileFailure& failure) {
    const std::string line = frm_.files.GetPrivateSetting(
        path_, kScripts, module.name + KeyNumber(number, kLineDigits), "");
    frm_.messages.Show("Error loading script " + module.name + " on line " +
                       std::to_string(module.lastLine + 2) + ":\r\n" + line + "\r\n\r\n" +
                       std::to_string(failure.number()) + ":" + failure.what() + " in line " +
                       std::to_string(failure.line()));
    frm_.messages.Show(module.Code());
}

} // namespace zentrel
