#include "transport/monitor/wire_text.h"

#include <algorithm>
#include <array>
#include <ctime>

#include "device/bit_string.h"
#include "device/number_text.h"
#include "transport/usb_packet.h"

namespace zentrel {
namespace {

struct CommandName {
    std::uint8_t opcode;
    std::string_view name;
};

constexpr CommandName kCommands[] = {
    {usb::kAddCmd, "Add to buffer"},
    {usb::kSetWord, "Set port"},
    {usb::kExecuteBuffer, "Run buffer"},
    {usb::kClearBuffer, "Clear buffer"},
    {usb::kVersion, "Version"},
    {usb::kConfigPins, "Pin configuration"},
    {usb::kConfigFormat, "Word format"},
    {usb::kSendWord, "Send word"},
    {usb::kReadBack, "Send word and read"},
    {usb::kSpiDelay, "Bit timing"},
    {usb::kTriggerPin, "Trigger pin"},
    {usb::kTriggerActive, "Trigger on or off"},
    {usb::kBurstMode, "Burst mode"},
};

std::string CommandText(std::uint8_t opcode) {
    for (const CommandName& command : kCommands) {
        if (command.opcode == opcode) return std::string(command.name);
    }
    return "Command " + HexText(std::int16_t{opcode});
}

std::string Number(long long value, int digits) {
    std::string text = std::to_string(value);
    if (static_cast<int>(text.size()) < digits)
        text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    return text;
}

struct LocalTime {
    std::tm parts{};
    long long micros = 0;
};

LocalTime LocalOf(const WireRecord& record) {
    using namespace std::chrono;
    LocalTime local;
    const auto since = floor<microseconds>(record.time.time_since_epoch());
    local.micros = (since % seconds(1)).count();
    const std::time_t whole = floor<seconds>(since).count();
    localtime_r(&whole, &local.parts);
    return local;
}

int Width(const WireRecord& record) {
    return std::max<int>(record.map->source.length, record.word.BitCount());
}

void Append(std::string& list, std::string_view separator, std::string_view item) {
    if (item.empty()) return;
    if (!list.empty()) list += separator;
    list += item;
}

std::string GroupedHex(const BitWord& word, int bits) {
    auto digits = static_cast<std::int16_t>((std::max(bits, 1) + 3) / 4);
    return FormatHexGrouped(word, digits, 4);
}

// Calls `take(mask)` for each bit of `pins`.
template<typename Take>
void ForEachPin(std::uint16_t pins, Take take) {
    for (int bit = 0; bit < 16; ++bit) {
        const auto mask = static_cast<std::uint16_t>(1U << bit);
        if ((pins & mask) != 0) take(mask);
    }
}

// Latch enable at the end of a record without a word, when it moved.
std::string LatchText(const WireRecord& record) {
    if (record.kind != WireKind::Pins) return {};
    bool first = true;
    bool before = false;
    bool after = false;
    EdgeTape::Play(record.edges, [&](WireLevels levels, int) {
        after = (levels & wire::kLatch) != 0;
        if (first) before = after;
        first = false;
    });
    if (before == after) return {};
    return after ? "LE=1" : "LE=0";
}

std::string_view AnswerText(WireAnswer answer) {
    switch (answer) {
    case WireAnswer::Acknowledged:
        return "acknowledged";
    case WireAnswer::WrongCommand:
        return "another command was acknowledged";
    case WireAnswer::NoAnswer:
        return "no answer";
    case WireAnswer::NotSent:
        return "not sent whole";
    case WireAnswer::Refused:
        return "refused, code ";
    case WireAnswer::None:
        break;
    }
    return {};
}

} // namespace

std::string WireTime(const WireRecord& record) {
    const LocalTime local = LocalOf(record);
    return Number(local.parts.tm_hour, 2) + ':' + Number(local.parts.tm_min, 2) + ':' +
           Number(local.parts.tm_sec, 2) + '.' + Number(local.micros, 6);
}

std::string WireDateAndTime(const WireRecord& record) {
    const LocalTime local = LocalOf(record);
    return Number(local.parts.tm_year + 1900, 4) + '-' + Number(local.parts.tm_mon + 1, 2) + '-' +
           Number(local.parts.tm_mday, 2) + ' ' + WireTime(record);
}

std::string_view WireRouteText(const WireRecord& record) {
    return record.route == WireRoute::Usb ? "USB" : "LPT";
}

std::string WireName(const WireRecord& record) {
    switch (record.kind) {
    case WireKind::Word:
        return record.reg == 0 ? "?"
                               : record.map->registers[static_cast<std::size_t>(record.reg - 1)];
    case WireKind::Pins:
        return "Pins";
    case WireKind::Command:
        return CommandText(record.opcode);
    case WireKind::Port:
        if (record.opened) return "Port opened";
        return record.code == 0 ? "Port closed" : "Port not opened";
    case WireKind::Bridge:
        return record.opened ? "Bridge opened" : "Bridge not opened";
    }
    return {};
}

std::string WireHex(const WireRecord& record) {
    return record.kind == WireKind::Word ? GroupedHex(record.word, Width(record)) : std::string();
}

std::string WireBits(const WireRecord& record) {
    return record.kind == WireKind::Word ? record.word.ToText(Width(record)) : std::string();
}

BitWord WireChangedBits(const WireRecord& record) {
    if (!record.hasBefore) return {};
    return record.word.AndNot(record.before) | record.before.AndNot(record.word);
}

std::vector<WireField> WireFields(const WireRecord& record) {
    std::vector<WireField> fields;
    if (record.reg == 0) return fields;
    const BitWord changed = WireChangedBits(record);
    for (const WireMap::Field& field : record.map->fields) {
        if (field.reg != record.reg) continue;
        fields.push_back({field.name, field.Text(record.word), !(changed & field.Mask()).none()});
    }
    return fields;
}

std::string WireFieldsText(const WireRecord& record) {
    std::string text;
    for (const WireField& field : WireFields(record))
        Append(text, ", ", field.name + '=' + field.value);
    return text;
}

std::string WirePins(const WireRecord& record) {
    std::string text;
    ForEachPin(record.changedPins, [&](std::uint16_t pin) {
        Append(text, ", ", record.map->PinName(pin) + ((record.pins & pin) != 0 ? "=1" : "=0"));
    });
    ForEachPin(record.pulsedPins,
               [&](std::uint16_t pin) { Append(text, ", ", record.map->PinName(pin) + " pulse"); });
    Append(text, ", ", LatchText(record));
    return text;
}

std::string WireReadBack(const WireRecord& record) {
    return record.readBits == 0 ? std::string()
                                : "0x" + GroupedHex(record.readBack, record.readBits);
}

std::string WireRemark(const WireRecord& record) {
    std::string text(AnswerText(record.answer));
    if (record.answer == WireAnswer::Refused) text += NumberToText(record.code);
    if (record.kind == WireKind::Bridge && !record.opened)
        text = "error " + NumberToText(record.code);
    if (record.kind != WireKind::Word || record.answer >= WireAnswer::NotSent) return text;
    if (record.clocks != record.map->source.length)
        Append(text, ", ",
               NumberToText(record.clocks) + " bits for " +
                   NumberToText(record.map->source.length));
    if (!record.latched) Append(text, ", ", "not latched");
    return text;
}

bool WireFailed(const WireRecord& record) {
    if (record.kind == WireKind::Port) return !record.opened && record.code != 0;
    if (record.kind == WireKind::Bridge) return !record.opened;
    return record.answer > WireAnswer::Acknowledged ||
           (record.kind == WireKind::Word &&
            (!record.latched || record.clocks != record.map->source.length));
}

std::vector<WirePacket> WirePackets(const WireRecord& record) {
    std::vector<WirePacket> packets;
    std::span<const std::uint8_t> rest = record.packets;
    while (rest.size() >= 2) {
        const std::size_t length = std::min<std::size_t>(rest[1], rest.size() - 2);
        packets.push_back({rest[0] != 0, rest.subspan(2, length)});
        rest = rest.subspan(2 + length);
    }
    return packets;
}

std::string WireBytes(std::span<const std::uint8_t> bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) text += ' ';
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0xFU];
    }
    return text;
}

std::string WirePacketName(const WirePacket& packet) {
    const auto& bytes = packet.bytes;
    if (bytes.size() < 2) return "Part of a packet";
    if (packet.sent) {
        std::string name = CommandText(bytes[1]);
        if (bytes[1] == usb::kAddCmd && bytes.size() > 4) name += ": " + CommandText(bytes[4]);
        return name;
    }
    if (bytes.size() < 3 || bytes.size() < bytes[0]) return "Part of a reply";
    if (bytes[1] == usb::kAcknowledged) return "Acknowledged: " + CommandText(bytes[2]);
    if (bytes[1] == usb::kRefused) return "Refused: " + CommandText(bytes[2]);
    return "Reply that means nothing";
}

std::string WireLine(const WireRecord& record) {
    std::string line =
        WireTime(record) + ' ' + std::string(WireRouteText(record)) + ' ' + WireName(record);
    if (record.kind == WireKind::Word) {
        std::string hex = WireHex(record);
        std::erase(hex, ' ');
        line += " 0x" + hex;
    }
    std::string rest;
    Append(rest, "; ", WireFieldsText(record));
    const std::string pins = WirePins(record);
    if (!pins.empty()) Append(rest, "; ", "pins " + pins);
    const std::string read = WireReadBack(record);
    if (!read.empty()) Append(rest, "; ", "read " + read);
    Append(rest, "; ", WireRemark(record));
    return rest.empty() ? line : line + ' ' + rest;
}

} // namespace zentrel
