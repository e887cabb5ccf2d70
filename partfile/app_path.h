#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zentrel {

/// The program's folder as the program spells it, and the way from such a path to the real one.
class AppPath {
  public:
    /// `programFolder`: the real folder, as the platform has it.
    explicit AppPath(std::string_view programFolder);

    /// The program's folder in lower case with a backslash at its end.
    const std::string& Text() const { return text_; }

    /// The real path behind `path`. A path that begins with Text(), whatever the case of its
    /// letters, lies in the program's folder, and below it a name that stands there exactly wins
    /// over one that differs in case alone; backslash and slash both separate. Any other path is
    /// taken as the platform has it. Nothing for a path that no file can have (empty, or with a
    /// NUL in it).
    std::optional<std::string> Resolve(std::string_view path) const;

    /// The path of a device's part file: Text(), the name cut to 30 characters (to 29 when the
    /// 30th is "/"), ".ini". Empty when the name holds a separator or "..": no such file can
    /// exist, so reads give their defaults and writes create nothing.
    std::string PartFilePath(std::string_view partName) const;

    /// The path of the device catalogue.
    std::string CataloguePath() const;

  private:
    std::string text_;
    std::string realFolder_; // without a separator at its end
};

} // namespace zentrel
