#include "transport/monitor/wire_export.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <tuple>
#include <utility>

#include "device/number_text.h"
#include "transport/monitor/wire_picture.h"
#include "transport/monitor/wire_text.h"

namespace zentrel {
namespace {

constexpr double kTickNs = 10;
constexpr std::int64_t kLongestPause = 10000; // ticks
constexpr std::int64_t kLead = 100;

void AppendNumber(std::string& text, std::int64_t number) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text.append(digits.data(), end);
}

/// The wires of a dump: a name each, and the level that was written last.
class Wires {
  public:
    /// The wire of that name, made when there is none yet.
    std::size_t Find(std::string_view name) {
        std::string plain;
        for (const char c : name) {
            const bool kept = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                              (c >= '0' && c <= '9') || c == '_';
            plain += kept ? c : '_'; // A blank would end the name.
        }
        const auto found = std::find_if(wires_.begin(), wires_.end(),
                                        [&](const Wire& wire) { return wire.name == plain; });
        if (found != wires_.end()) return static_cast<std::size_t>(found - wires_.begin());
        wires_.push_back({std::move(plain), Code(wires_.size())});
        return wires_.size() - 1;
    }

    std::string Declarations() const {
        std::string text;
        for (const Wire& wire : wires_)
            text += "$var wire 1 " + wire.code + ' ' + wire.name + " $end\n";
        return text;
    }

    std::string FirstLevels() const {
        std::string text = "$dumpvars\n";
        for (const Wire& wire : wires_)
            text += (wire.first ? '1' : '0') + wire.code + '\n';
        return text + "$end\n";
    }

    /// What a wire stood at before anything moved: the first one to say so has it.
    void SetFirst(std::size_t wire, bool high) {
        if (std::exchange(wires_[wire].known, true)) return;
        wires_[wire].first = wires_[wire].high = high;
    }

    /// Writes a level down if it is another one.
    void Put(std::string& text, std::int64_t tick, std::size_t wire, bool high) {
        if (std::exchange(wires_[wire].high, high) == high) return;
        if (tick != tick_) {
            text += '#';
            AppendNumber(text, tick_ = tick);
            text += '\n';
        }
        text += high ? '1' : '0';
        text += wires_[wire].code;
        text += '\n';
    }

  private:
    struct Wire {
        std::string name, code;
        bool known = false, first = false, high = false;
    };

    static std::string Code(std::size_t index) {
        constexpr std::size_t kPrintable = 94;
        std::string code;
        do {
            code += static_cast<char>('!' + index % kPrintable);
            index /= kPrintable;
        } while (index > 0);
        return code;
    }

    std::vector<Wire> wires_;
    std::int64_t tick_ = 0;
};

struct Change {
    int step;
    std::size_t wire;
    bool high;
};

std::vector<Change> ChangesOf(const WirePicture& picture, Wires& wires) {
    std::vector<Change> changes;
    for (const WirePicture::Line& line : picture.lines) {
        const std::size_t wire = wires.Find(line.name);
        for (std::size_t i = 0; i < line.edges.size(); ++i) {
            // The level before counts at the start, unless an edge stands there.
            const bool gone = i + 1 < line.edges.size() && line.edges[i + 1].step <= 0;
            if (!gone)
                changes.push_back({std::max(line.edges[i].step, 0), wire, line.edges[i].high});
        }
        if (!line.edges.empty()) wires.SetFirst(wire, line.edges.front().high);
    }
    std::sort(changes.begin(), changes.end(), [](const Change& a, const Change& b) {
        return std::tie(a.step, a.wire) < std::tie(b.step, b.wire);
    });
    return changes;
}

std::string Quoted(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

constexpr std::string_view kColumns =
    "Number,Time,Microseconds,Route,Register,Hex,Bits,Changed,Fields,Pins,Read,Remark,Packets\r\n";

std::string PacketsText(const WireRecord& record) {
    std::string text;
    for (const WirePacket& packet : WirePackets(record)) {
        if (!text.empty()) text += "; ";
        text += (packet.sent ? "> " : "< ") + WireBytes(packet.bytes);
    }
    return text;
}

} // namespace

std::string VcdOf(std::span<const WireRecord* const> records) {
    Wires wires;
    for (const std::string_view name : {"CLK", "DATA", "LE"})
        wires.Find(name);
    std::string body;
    std::int64_t tick = kLead;
    std::chrono::system_clock::time_point end;
    for (const WireRecord* record : records) {
        const WirePicture picture = PictureOf(*record);
        if (picture.empty()) continue;
        if (!body.empty()) {
            const std::chrono::duration<double, std::nano> pause = record->time - end;
            tick += std::clamp(static_cast<std::int64_t>(pause.count() / kTickNs), std::int64_t{1},
                               kLongestPause);
        }
        const double stepTicks = std::max(1.0, picture.stepNs / kTickNs);
        for (const Change& change : ChangesOf(picture, wires))
            wires.Put(body, tick + std::llround(change.step * stepTicks), change.wire, change.high);
        tick += std::llround(picture.steps * stepTicks);
        end = record->time + record->length;
    }
    body += '#';
    AppendNumber(body, tick + kLead);
    body += '\n';

    std::string head;
    if (!records.empty()) head += "$date " + WireDateAndTime(*records.front()) + " $end\n";
    head += "$version Zentrel wire monitor $end\n$timescale 10 ns $end\n$scope module board $end\n";
    return head + wires.Declarations() + "$upscope $end\n$enddefinitions $end\n#0\n" +
           wires.FirstLevels() + body;
}

std::string CsvOf(std::span<const WireRecord* const> records) {
    std::string text(kColumns);
    for (const WireRecord* record : records) {
        const BitWord changed = WireChangedBits(*record);
        std::string hex = WireHex(*record);
        std::erase(hex, ' ');
        if (!hex.empty()) hex.insert(0, "0x");
        const std::string bits = WireBits(*record);
        const std::string cells[] = {
            std::to_string(record->serial),
            WireDateAndTime(*record),
            NumberToText(static_cast<double>(record->length.count()) / 1000),
            std::string(WireRouteText(*record)),
            WireName(*record),
            hex,
            bits,
            changed.none() ? "" : changed.ToText(static_cast<int>(bits.size())),
            WireFieldsText(*record),
            WirePins(*record),
            WireReadBack(*record),
            WireRemark(*record),
            PacketsText(*record),
        };
        for (std::size_t i = 0; i < std::size(cells); ++i) {
            if (i > 0) text += ',';
            text += Quoted(cells[i]);
        }
        text += "\r\n";
    }
    return text;
}

} // namespace zentrel
