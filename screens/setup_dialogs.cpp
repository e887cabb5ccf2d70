#include "screens/setup_dialogs.h"

#include "device/part.h"
#include "screens/file_dialogs.h"
#include "setups/setup_file.h"

namespace zentrel {

void SaveSetupByDialog(cPart& part, IniFiles& files, FileDialogs& dialogs, std::string_view title) {
    if (part.BurstRunning()) return;
    const auto name = dialogs.SaveName(title);
    if (!name) return;
    if (!SaveBurstCommands(part, files, *name, OldFile::Replace)) {
        part.upward().messages->Show(WriteFailuresMessage(files.TakeWriteFailures()), {},
                                     MessageIcon::Exclamation);
    }
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
}

} // namespace zentrel
