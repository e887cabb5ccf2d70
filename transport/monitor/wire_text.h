#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "transport/monitor/wire_record.h"

/// Records as an engineer reads them. Made when somebody looks, from what the record holds: the
/// device that it went to may have gone.
namespace zentrel {

/// The local time of day, "13:05:59.123456".
std::string WireTime(const WireRecord& record);
/// Date and time, "2026-11-23 13:05:59.123456".
std::string WireDateAndTime(const WireRecord& record);
/// "LPT" or "USB".
std::string_view WireRouteText(const WireRecord& record);
/// The register of a word, "?" when its address bits name none; else what happened: "Pins",
/// "Pin configuration", "Bridge opened".
std::string WireName(const WireRecord& record);

/// The word at its full width: "0012 3450", groups counted from the right.
std::string WireHex(const WireRecord& record);
/// The word's bits, most significant first, `RegisterLength` of them. Empty without a word.
std::string WireBits(const WireRecord& record);
/// The bits in which the word differs from the one latched into the same register before. None
/// for the first.
BitWord WireChangedBits(const WireRecord& record);

/// A field of the word.
struct WireField {
    std::string name, value;
    bool changed = false; ///< One of its bits differs from the word before.
};
/// The fields of the register that the word's address bits name, in the part file's order.
std::vector<WireField> WireFields(const WireRecord& record);
/// "N=125, R=10".
std::string WireFieldsText(const WireRecord& record);

/// The pins that changed: "CE=1, SYNC=0, Trigger pulse". Latch enable, set by itself, is among
/// them.
std::string WirePins(const WireRecord& record);
/// What came back, in hexadecimal; empty when nothing was read.
std::string WireReadBack(const WireRecord& record);
/// What the bridge answered, and what was odd about a word: "acknowledged", "refused, code 3",
/// "20 of 24 bits", "not latched".
std::string WireRemark(const WireRecord& record);
/// Whether the remark tells of something that went wrong.
bool WireFailed(const WireRecord& record);

/// A packet to the bridge, or what one receive brought.
struct WirePacket {
    bool sent = false;
    std::span<const std::uint8_t> bytes;
};
std::vector<WirePacket> WirePackets(const WireRecord& record);
/// Bytes in hexadecimal, "05 10 12 34 56".
std::string WireBytes(std::span<const std::uint8_t> bytes);
/// What a packet is: "Send word", "Acknowledged: Send word".
std::string WirePacketName(const WirePacket& packet);

/// The whole record on one line, what is empty left out:
/// "13:05:59.123456 LPT R0 0x123450 N=125, R=10; pins CE=1; read 0x12; acknowledged".
std::string WireLine(const WireRecord& record);

} // namespace zentrel
