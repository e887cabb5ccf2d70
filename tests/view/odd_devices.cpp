#include "tests/view/odd_devices.h"

#include <fstream>
#include <string_view>

namespace zentrel::odd {

namespace {

std::string Number(int value, std::size_t digits = 2) {
    std::string text = std::to_string(value);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

/// A part file that grows entry by entry: `Entry` opens one, `Key` writes into it.
class PartFile {
  public:
    PartFile(const std::filesystem::path& folder, const std::string& name, int bits, int control)
        : file_(folder / (name + ".ini")) {
        Section("SETUP");
        file_ << "ZENTREL_VERSION=2.3.0\nCOMM_MODE=LPT\nREGISTER_LENGTH=" << bits
              << "\nCONTROL_LENGTH=" << control << "\nCLOCK=1\nDATA=2\nLE=4\n";
    }

    PartFile& Section(std::string_view name, int count = -1) {
        file_ << "[" << name << "]\n";
        if (count >= 0) file_ << "COUNT=" << count << "\n";
        entry_ = -1;
        return *this;
    }
    PartFile& Entry() {
        ++entry_;
        return *this;
    }
    template<typename T>
    PartFile& Key(std::string_view word, const T& value) {
        file_ << word << Number(entry_) << "=" << value << "\n";
        return *this;
    }
    template<typename T>
    PartFile& Key(std::string_view word, int second, const T& value) {
        file_ << word << Number(entry_) << Number(second) << "=" << value << "\n";
        return *this;
    }
    /// A key of a clock block's channel, which stands ahead of the block.
    PartFile& Channel(std::string_view word, int channel, const std::string& value) {
        file_ << word << Number(channel) << Number(entry_) << "=" << value << "\n";
        return *this;
    }

    PartFile& Registers(int count) {
        Section("REGISTERS", count);
        for (int i = 0; i < count; ++i)
            Entry().Key("NAME", "R" + std::to_string(i)).Key("MASK", 0).Key("VALUE", 0x111 * i);
        return *this;
    }
    PartFile& Field(const std::string& name, int reg, int position, int length,
                    std::string_view type, std::string_view frame) {
        return Field(name, "R" + std::to_string(reg), position, length, type, frame);
    }
    PartFile& Field(const std::string& name, const std::string& reg, int position, int length,
                    std::string_view type, std::string_view frame) {
        Entry().Key("NAME", name).Key("REG", reg).Key("POS", position);
        Key("LEN", length).Key("DISPLAY", "True").Key("TYPE", type).Key("FRAME", frame);
        return type == "List" ? Texts({"Off", "Low", "High", "Highest"}) : *this;
    }
    PartFile& Texts(std::initializer_list<std::string_view> texts) {
        Key("COUNT", texts.size());
        int at = 0;
        for (const auto text : texts)
            Key("VAL", at++, text);
        return *this;
    }

  private:
    std::ofstream file_;
    int entry_ = -1;
};

/// 200 characters with a blank here and there, told apart by `number`.
std::string Long(const std::string& number) {
    std::string name = number + " ";
    while (name.size() < 200)
        name += "a name without end ";
    return name.substr(0, 199) + "!";
}

void WriteClockBlock(PartFile& file, const std::string& name, int channels, std::string_view type) {
    file.Entry().Key("NAME", name).Key("Clocks", channels).Key("PLL", "PLL" + name);
    file.Key("DISPLAY_TYPE", type).Key("INPUT_DIV", "VCO_DIV").Key("LF_R3", "R3");
    for (int c = 0; c < channels; ++c) {
        const std::string n = std::to_string(c % 8);
        file.Channel("CLK_DIV_", c, "DIV" + n).Channel("CLK_DELAY_", c, "DLY" + n);
        file.Channel("CLK_MUX_", c, "MUX" + n).Channel("CLK_EN_", c, "EN" + n);
    }
}

void WriteChannels(const std::filesystem::path& folder) {
    PartFile file(folder, kChannels, 32, 4);
    file.Registers(10).Section("BITS", 4 * 8 + 5);
    for (int c = 0; c < 8; ++c) {
        const std::string n = std::to_string(c);
        const std::string frame = "Channel " + n;
        file.Field("DIV" + n, c, 8, 8, "Counter", frame).Field("DLY" + n, c, 4, 2, "List", frame);
        file.Field("MUX" + n, c, 17, 2, "List", frame).Field("EN" + n, c, 16, 1, "Bit", frame);
    }
    file.Field("VCO_DIV", 8, 8, 4, "Counter", "VCO").Field("R3", 8, 4, 2, "List", "VCO");
    file.Field("N", 9, 12, 16, "Counter", "PLL").Field("R", 9, 4, 8, "Counter", "PLL");
    file.Field("MODE", 8, 16, 3, "List", "VCO");
    file.Section("PLLS", 3);
    for (const char* block : {"Nine", "None", "Fan"})
        file.Entry().Key("NAME", std::string("PLL") + block).Key("N", "N").Key("R", "R");
    file.Section("CLKDISTS", 3);
    WriteClockBlock(file, "Nine", 9, "VCO_extVCO");
    WriteClockBlock(file, "None", 0, "PLL_internalVCO");
    WriteClockBlock(file, "Fan", 8, "Distribution");
}

void WriteMany(const std::filesystem::path& folder) {
    constexpr int kPlls = 12, kFields = 300;
    PartFile file(folder, kMany, 24, 2);
    file.Registers(40).Section("BITS", kFields + 2 * kPlls);
    constexpr std::string_view kKinds[] = {"Bit", "Counter", "List"};
    for (int i = 0; i < kFields; ++i)
        file.Field("FIELD_" + std::to_string(i), i % 28, 2 + 2 * (i / 28), i % 3 == 0 ? 1 : 2,
                   kKinds[i % 3], "All of them");
    for (int i = 0; i < kPlls; ++i) {
        file.Field("N" + std::to_string(i), 28 + i, 12, 12, "Counter", "Counters");
        file.Field("R" + std::to_string(i), 28 + i, 2, 10, "Counter", "Counters");
    }
    file.Section("PLLS", kPlls);
    for (int i = 0; i < kPlls; ++i)
        file.Entry()
            .Key("NAME", "Synthesiser " + std::to_string(i + 1))
            .Key("N", "N" + std::to_string(i))
            .Key("R", "R" + std::to_string(i))
            .Key("OSCINPIN", "OSCin")
            .Key("FOUTPIN", "Fout");
}

void WriteNames(const std::filesystem::path& folder) {
    PartFile file(folder, kNames, 24, 2);
    file.Section("PINS", 4);
    for (const std::string& name : {Long("Pin"), std::string(), std::string("A&B"), Long("&")})
        file.Entry().Key("NAME", name).Key("LOCATION", 5);
    file.Section("REGISTERS", 3);
    for (const std::string& name : {Long("Register"), std::string("&R"), std::string("R & S")})
        file.Entry().Key("NAME", name).Key("MASK", 0).Key("VALUE", name == "&R" ? 0xFFFFFF : 0);
    file.Section("BITS", 10);
    int at = 0;
    for (const char* type : {"Bit", "Counter", "List"}) {
        for (const std::string& name : {Long(type), std::string(type) + " & more", std::string()}) {
            file.Field(name, at % 2 == 0 ? "R & S" : Long("Register"), 2 + 2 * at, 2, type,
                       at < 2   ? Long("Frame")
                       : at < 6 ? "A & B"
                                : "");
            ++at;
            std::string description;
            while (description.size() < 10'000)
                description += "What this does takes many <b>words</b> to tell. ";
            file.Key("DESCRIPTION", description);
        }
    }
    file.Field("Beyond", "&R", 2, 3, "List", "Lists");
    file.Section("PLLS", 3);
    for (const std::string& name : {Long("PLL"), std::string("Twin"), std::string("Twin & Co")})
        file.Entry()
            .Key("NAME", name)
            .Key("N", Long("Counter"))
            .Key("R", "Counter & more")
            .Key("DOUBLER", Long("Bit"))
            .Key("IPO", Long("List"))
            .Key("OSCBIT", Long("Bit"))
            .Key("OSCINPIN", Long("In"))
            .Key("FOUTPIN", Long("Out"))
            .Key("CPOUTPIN", "A&B")
            .Key("OUT0_DIV", Long("Counter"))
            .Key("OUT0PIN", Long("RF"));
    file.Section("CLKDISTS", 2);
    file.Entry().Key("NAME", "Twin").Key("Clocks", 1).Key("PLL", Long("PLL"));
    file.Channel("CLK_DIV_", 0, "Counter & more").Channel("CLK_MUX_", 0, Long("List"));
    file.Entry().Key("NAME", Long("Clock & Co")).Key("Clocks", 1).Key("PLL", "Twin & Co");
    file.Key("DISPLAY_TYPE", "VCO_extVCO");
}

void WriteLargeBlocks(PartFile& file) {
    file.Section("PLLS", 4);
    for (int i = 0; i < 4; ++i) {
        const std::string n = std::to_string(i);
        file.Entry().Key("NAME", "PLL" + n).Key("N", "N" + n).Key("R", "R" + n).Key("OSCIN", 10);
        file.Key("FRACTNUM", "NUM" + n).Key("FRACTDEN", "DEN" + n).Key("VCO_MAX", 3000);
    }
    file.Section("CLKDISTS", 2);
    for (int block = 0; block < 2; ++block) {
        file.Entry().Key("NAME", "Clocks " + std::to_string(block)).Key("Clocks", 8);
        file.Key("PLL", "PLL" + std::to_string(block)).Key("DISPLAY_TYPE", "PLL_internalVCO");
        file.Key("INPUT_DIV", "VCO_DIV" + std::to_string(block)).Key("IntVCO_Freq", 1200);
        for (int c = 0; c < 8; ++c) {
            const std::string n = std::to_string(8 * block + c);
            file.Channel("CLK_DIV_", c, "DIV" + n).Channel("CLK_DELAY_", c, "DLY" + n);
            file.Channel("CLK_MUX_", c, "MUX" + n).Channel("CLK_EN_", c, "EN" + n);
        }
    }
}

void WriteLarge(const std::filesystem::path& folder) {
    constexpr int kFields = 1000, kOfBlocks = 4 * 4 + 2 + 16 * 4;
    PartFile file(folder, kLarge, 32, 2);
    file.Registers(128).Section("BITS", kFields);
    for (int i = 0; i < 4; ++i) {
        const std::string n = std::to_string(i), frame = "Synthesiser " + n;
        file.Field("N" + n, 2 * i, 2, 14, "Counter", frame);
        file.Field("R" + n, 2 * i, 16, 10, "Counter", frame);
        file.Field("NUM" + n, 2 * i + 1, 2, 12, "Counter", frame);
        file.Field("DEN" + n, 2 * i + 1, 14, 12, "Counter", frame);
    }
    for (int i = 0; i < 2; ++i)
        file.Field("VCO_DIV" + std::to_string(i), 8 + i, 2, 4, "Counter", "Dividers");
    for (int i = 0; i < 16; ++i) {
        const std::string n = std::to_string(i), frame = "Channel " + n;
        file.Field("DIV" + n, 10 + i, 2, 8, "Counter", frame);
        file.Field("DLY" + n, 10 + i, 10, 2, "List", frame);
        file.Field("MUX" + n, 10 + i, 12, 2, "List", frame);
        file.Field("EN" + n, 10 + i, 14, 1, "Bit", frame);
    }
    constexpr std::string_view kKinds[] = {"Bit", "Counter", "List"};
    for (int i = 0; i < kFields - kOfBlocks; ++i)
        file.Field("FIELD_" + std::to_string(i), 26 + i % 102, 2 + 2 * (i / 102),
                   i % 3 == 0 ? 1 : 2, kKinds[i % 3], "Group " + std::to_string(i / 20));
    WriteLargeBlocks(file);
}

} // namespace

void WriteDevices(const std::filesystem::path& folder) {
    WriteChannels(folder);
    WriteMany(folder);
    WriteNames(folder);
    WriteLarge(folder);
    PartFile(folder, kBare, 24, 3);
    PartFile(folder, kWords, 64, 5).Registers(80);
}

} // namespace zentrel::odd
