#pragma once

#include <string_view>

#include "partfile/ini_file.h"

namespace zentrel {

class cPart;
class FileDialogs;

/// Asks for a name and saves the device's setup there, in place of a file of that name. Nothing
/// while a burst runs, or when the dialog is cancelled. A failure is told with file and reason.
void SaveSetupByDialog(cPart& part, IniFiles& files, FileDialogs& dialogs, std::string_view title);

/// Asks for a name and restores the setup. A file that fails in the middle shows no message; the
/// status line says at which key it stopped.
void RestoreSetupByDialog(cPart& part, IniFiles& files, FileDialogs& dialogs,
                          std::string_view title);

} // namespace zentrel
