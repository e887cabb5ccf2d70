#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The three number spaces of pins. A connector pin is 1 to 8, 10, 11, 12 or 14 on the board's
/// header, or a DB-25 contact times 100 for an input line of the parallel port. A port mask has one
/// bit for one line, and which one depends on the route. A pin mask has bit n-1 for pin n on any
/// route. All functions are pure; what has no counterpart gives 0.
namespace zentrel {

/// Bits of a pin mask or port mask that the conversions look at.
inline constexpr int kPinMaskBits = 30;

/// The parallel port's mask of a pin. Throws Overflow for a pin whose bit lies beyond 32.
std::int32_t LptPinToPortValue(std::int32_t pin);
std::int32_t LptPortValueToPin(std::int32_t value);

/// The bridge's mask of a pin; nothing for a pin that it doesn't know.
std::optional<std::int32_t> PinCLHeader2USBLogicalPosition(std::int32_t pin);
std::int32_t UsbPortValueToPin(std::int32_t value);

/// By route, `mode` compared exactly; any route but "LPT" and "USB" gives 0.
std::int32_t PinToPortValue(std::string_view mode, std::int32_t pin);
std::int32_t PortValueToPin(std::string_view mode, std::int32_t value);
std::int32_t PinMaskToPortValue(std::string_view mode, std::int32_t mask);
std::int32_t PortValueToPinMask(std::string_view mode, std::int32_t value);

/// A read-back pin's number holds two homes: hundreds for the parallel port, the last two digits
/// for the bridge. This cuts it to the one of the route. A negative number, which stands for no
/// pin, stays as it is.
std::int32_t CutComposite(std::string_view mode, std::int32_t pin);

/// Options of a pin group on the port screen: 0 to 7 are pins 1 to 8, then 10, 11, 12, 14.
/// Nothing for an index that isn't one.
std::optional<std::int32_t> OptionToPin(int option);
/// Options of a read-back pin's group under "LPT": 1500, 1300, 1200, 1000, 1100.
std::optional<std::int32_t> InputOptionToPin(int option);
/// The inverse of both; 0 for a pin without an option.
int PinToOption(std::int32_t pin);

} // namespace zentrel
