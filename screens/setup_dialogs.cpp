#include "screens/setup_dialogs.h"

#include "device/part.h"
#include "screens/file_dialogs.h"
#include "setups/setup_file.h"

namespace zentrel {
namespace {

void TellWriteFailures(const cPart& part, IniFiles& files) {
    const std::string failures = WriteFailuresMessage(files.TakeWriteFailures());
    if (!failures.empty()) {
        part.upward().messages->Show(failures, {}, MessageIcon::Exclamation);
    }
}

} // namespace

void SaveSetupByDialog(cPart& part, IniFiles& files, FileDialogs& dialogs, std::string_view title) {
    if (part.BurstRunning()) return;
    const auto name = dialogs.SaveName(title);
    if (!name) return;
    if (!SaveBurstCommands(part, files, *name, OldFile::Replace)) TellWriteFailures(part, files);
}

void RestoreSetupByDialog(cPart& part, IniFiles& files, FileDialogs& dialogs,
                          std::string_view title) {
    if (part.BurstRunning()) return;
    const auto name = dialogs.OpenName(title);
    if (!name) return;
    try {
        LoadBurstCommands(part, files, *name);
    } catch (const ScriptFailure&) {
        throw;
    } catch (const Error& error) {
        part.upward().status->StatusBar_SetString("Restore stopped: " + std::string(error.what()));
    }
    // A restore keeps the extra dividers in the part file.
    TellWriteFailures(part, files);
}

} // namespace zentrel
