#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "burst/burst.h"
#include "device/upward.h"

/// The burst list of a device and its editing.
namespace zentrel {

/// Builds a command from the present state and adds it ahead of line `before`, or at the end. For
/// a delay `regName` is the count as text. Throws NotFound for an unknown register, TypeMismatch
/// for a count that is no number, OutOfRange for another `cmd`; the list then stays as it was.
void AddBurstCommand(cPart& part, std::string_view regName, std::int16_t cmd,
                     std::optional<int> before = {});

/// The same at the end of the list without refreshing its text, for a caller that adds many.
void AppendBurstCommand(cPart& part, std::string_view regName, std::int16_t cmd);

/// Rebuilds command `line` in place, with the same errors. Its `LowByte` stays. The list's text
/// isn't refreshed.
void ChangeBurstCommand(cPart& part, int line, std::string_view regName, std::int16_t cmd);

/// Takes one command out: 0 means the first, a number above the count the last one.
void DeleteBurstCommand(cPart& part, int line);
void DeleteBurstCommands(cPart& part);

/// Puts a load's word back into its register, then refreshes. What fails is passed over.
void RestoreBurstCommand(cPart& part, int line);

/// The list's text: each description, or each pattern, followed by CR LF.
std::string BurstText(const cPart& part);
std::string BurstPatternText(const cPart& part);

/// Converts the device's burst list when its route changes.
class BurstRouteObserver : public RouteObserver {
  public:
    explicit BurstRouteObserver(cPart& part) : part_(part) {}
    void RouteChanged(std::string_view from, std::string_view to) override;

  private:
    cPart& part_;
};

} // namespace zentrel
