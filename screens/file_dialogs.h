#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zentrel {

/// The file dialog. A call waits for the answer.
class FileDialogs {
  public:
    virtual ~FileDialogs() = default;
    /// A name to save to, or to open; nothing when cancelled. Setup files (*.mac) are proposed
    /// first; text files and all files can be chosen too.
    virtual std::optional<std::string> SaveName(std::string_view title) {
        (void)title;
        return {};
    }
    virtual std::optional<std::string> OpenName(std::string_view title) {
        (void)title;
        return {};
    }

    /// A name to export to, with other kinds of file than setups: "Name (*.x)|*.x|..." as in
    /// kSetupFileFilter, the first of which is selected and lends its suffix to a bare name.
    virtual std::optional<std::string> ExportName(std::string_view title, std::string_view filter) {
        (void)title, (void)filter;
        return {};
    }

    /// Nobody to ask: every dialog is cancelled.
    static FileDialogs& None() {
        static FileDialogs none;
        return none;
    }
};

/// The kinds of file that both dialogs offer; the third is selected at first.
inline constexpr std::string_view kSetupFileFilter =
    "All Files (*.*)|*.*|Text Files (*.txt)|*.txt|BurstCommand Files (*.mac)|*.mac";
inline constexpr int kSetupFileFilterIndex = 3;

} // namespace zentrel
