// A large device's part file: 128 registers, 1,000 fields, about 20,000 keys. The yardstick is one
// linear parse of the same file into a hash map by inih.

#include <benchmark/benchmark.h>
#include <ini.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <unordered_map>

#include "device/number_text.h"
#include "partfile/part_definition.h"

namespace {

using zentrel::AppPath;
using zentrel::IniFiles;
using zentrel::KeyNumber;

constexpr int kRegisters = 128;
constexpr int kFields = 1000;

std::string Numbered(std::string_view word, int number) {
    return std::string(word).append(KeyNumber(number));
}

class LargePart {
  public:
    LargePart() {
        std::string folder = (std::filesystem::temp_directory_path() / "zentrel-XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) std::abort();
        folder_ = folder;
        std::ofstream(File(), std::ios::binary) << Text();
    }
    ~LargePart() { std::filesystem::remove_all(folder_); }
    LargePart(const LargePart&) = delete;
    LargePart& operator=(const LargePart&) = delete;

    std::string File() const { return folder_ + "/qvxlarge.ini"; }
    const std::string& Folder() const { return folder_; }
    int Keys() const { return keys_; }

  private:
    void Key(std::string& text, const std::string& key, const std::string& value) {
        text.append(key).append("=").append(value).append("\r\n");
        ++keys_;
    }

    std::string Text() {
        std::string text = "[SETUP]\r\n";
        Key(text, "ZENTREL_VERSION", "2.3.0");
        Key(text, "REGISTER_LENGTH", "64");
        text += "[REGISTERS]\r\n";
        Key(text, "COUNT", std::to_string(kRegisters));
        for (int i = 0; i < kRegisters; ++i) {
            const std::string number = KeyNumber(i);
            Key(text, "NAME" + number, Numbered("R", i));
            Key(text, "MASK" + number, "&H7");
            Key(text, "VALUE" + number, std::to_string(i * 4096));
            Key(text, "LOWBYTE" + number, "True");
        }
        text += "[BITS]\r\n";
        Key(text, "COUNT", std::to_string(kFields));
        for (int i = 0; i < kFields; ++i)
            Field(text, i);
        return text;
    }

    void Field(std::string& text, int i) {
        const std::string number = KeyNumber(i);
        Key(text, "REG" + number, Numbered("R", i % kRegisters));
        Key(text, "NAME" + number, "FIELD_" + number);
        Key(text, "POS" + number, std::to_string(i / kRegisters * 8));
        Key(text, "LEN" + number, "8");
        Key(text, "DISPLAY" + number, "True");
        Key(text, "FRAME" + number, Numbered("Frame ", i % 12));
        Key(text, "TYPE" + number, i % 2 == 0 ? "List" : "Counter");
        Key(text, "MINIMUMVALUE" + number, "0");
        Key(text, "MAXIMUMVALUE" + number, "255");
        Key(text, "STEPVALUE" + number, "0.5");
        Key(text, "UNITS" + number, "mA");
        Key(text, "DESCRIPTION" + number, "Charge pump current, in steps of half a milliampere");
        Key(text, "DESCRIPTIONWHY" + number, "Sets the loop bandwidth together with the filter");
        if (i % 2 == 0) {
            Key(text, "COUNT" + number, "13");
            for (int j = 0; j < 13; ++j) {
                Key(text, Numbered("VAL" + number, j), Numbered("Choice ", j));
            }
        }
    }

    std::string folder_;
    int keys_ = 0;
};

const LargePart& Part() {
    static const LargePart part;
    return part;
}

void InihIntoHashMap(benchmark::State& state) {
    using Map = std::unordered_map<std::string, std::string>;
    const std::string file = Part().File();
    for (auto _ : state) {
        Map map;
        ini_parse(
            file.c_str(),
            [](void* user, const char* section, const char* name, const char* value) {
                std::string key(section);
                key.append("\n").append(name);
                static_cast<Map*>(user)->try_emplace(std::move(key), value);
                return 1;
            },
            &map);
        if (static_cast<int>(map.size()) != Part().Keys()) state.SkipWithError("keys are missing");
        benchmark::DoNotOptimize(map);
    }
}

void LoadPartDefinitionFromDisk(benchmark::State& state) {
    for (auto _ : state) {
        IniFiles files{AppPath(Part().Folder())};
        auto part = zentrel::LoadPartDefinition(files, files.Folder().PartFilePath("qvxlarge"));
        if (part.fields.size() != kFields) state.SkipWithError("fields are missing");
        benchmark::DoNotOptimize(part);
    }
}

// As another room reads: one call per key, in a read scope.
void GetEachKeyInAReadScope(benchmark::State& state) {
    IniFiles files{AppPath(Part().Folder())};
    const std::string file = Part().File();
    for (auto _ : state) {
        const zentrel::ReadScope scope(files);
        for (int i = 0; i < kFields; ++i) {
            benchmark::DoNotOptimize(
                files.GetPrivateSetting(file, "BITS", Numbered("NAME", i), ""));
        }
    }
    state.SetItemsProcessed(state.iterations() * kFields);
}

void SaveRegistersInAWriteScope(benchmark::State& state) {
    IniFiles files{AppPath(Part().Folder())};
    const std::string file = Part().File();
    int round = 0;
    for (auto _ : state) {
        const zentrel::WriteScope scope(files);
        ++round;
        for (int i = 0; i < kRegisters; ++i) {
            files.SetPrivateSetting(file, "REGISTERS", Numbered("VALUE", i),
                                    std::to_string(i + round));
        }
    }
}

BENCHMARK(InihIntoHashMap)->Unit(benchmark::kMillisecond);
BENCHMARK(LoadPartDefinitionFromDisk)->Unit(benchmark::kMillisecond);
BENCHMARK(GetEachKeyInAReadScope)->Unit(benchmark::kMicrosecond);
BENCHMARK(SaveRegistersInAWriteScope)->Unit(benchmark::kMillisecond);

} // namespace
