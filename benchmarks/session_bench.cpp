#include <benchmark/benchmark.h>
#include <ini.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unordered_map>

#include "session/frm_part.h"

/// Loading a large device into the models, against one linear parse of its file by inih into a
/// hash map; and a refresh of all screens' models for that device.
namespace {

using namespace zentrel;

constexpr int kRegisters = 128;
constexpr int kFields = 1000;
constexpr const char* kName = "QVX7001";

std::string Number(int i) {
    return i < 10 ? "0" + std::to_string(i) : std::to_string(i);
}

// 128 words of 64 bits and 1,000 fields of all kinds: about 20,000 keys.
std::string LargePart() {
    std::ostringstream text;
    text << "[SETUP]\nZENTREL_VERSION=2.3.0\nCOMM_MODE=LPT\nREGISTER_LENGTH=64\nCONTROL_LENGTH=8\n"
            "CLOCK=1\nDATA=2\nLE=3\nVERSION=a\n"
            "[PINS]\nCOUNT=2\nNAME00=CE\nLOCATION00=10\nNAME01=PD\nLOCATION01=11\n"
            "[REGISTERS]\nCOUNT="
         << kRegisters << "\n";
    for (int i = 0; i < kRegisters; ++i) {
        const std::string n = Number(i);
        text << "NAME" << n << "=REG" << i << "\nMASK" << n << "=255\nVALUE" << n << "=" << i
             << "\nLOWBYTE" << n << "=TRUE\n";
    }
    text << "[BITS]\nCOUNT=" << kFields << "\n";
    const char* kinds[] = {"Bit", "Counter", "List", "Bits"};
    for (int i = 0; i < kFields; ++i) {
        const std::string n = Number(i);
        const int kind = i % 4;
        const int length = kind == 0 ? 1 : 5;
        text << "REG" << n << "=REG" << i % kRegisters << "\nNAME" << n << "=FIELD" << i << "\nPOS"
             << n << "=" << 8 + 6 * (i / kRegisters) << "\nLEN" << n << "=" << length << "\nDISPLAY"
             << n << "=True\nFRAME" << n << "=Group " << i / 20 << "\nTYPE" << n << "="
             << kinds[kind] << "\nMINIMUMVALUE" << n << "=0\nMAXIMUMVALUE" << n << "=0\nZEROVALUE"
             << n << "=0\nSTEPVALUE" << n << "=1\nUNITS" << n << "=\nPOLARITY" << n
             << "=FALSE\nDATAINVERTED" << n << "=FALSE\nLINKEDBITS" << n << "=\nMIRRORBITS" << n
             << "=\nGREATERBITS" << n << "=\nDESCRIPTION" << n << "=What field " << i
             << " does on the board\n";
        if (kind == 2) {
            text << "COUNT" << n << "=8\n";
            for (int j = 0; j < 8; ++j)
                text << "VAL" << n << Number(j) << "=entry " << j << "\n";
        }
    }
    return text.str();
}

class Device {
  public:
    Device() : folder_(std::filesystem::temp_directory_path() / "zentrel_session_bench") {
        std::filesystem::create_directories(folder_);
        std::ofstream(folder_ / (std::string(kName) + ".ini"), std::ios::binary) << LargePart();
    }
    ~Device() { std::filesystem::remove_all(folder_); }
    std::string folder() const { return folder_.string(); }
    std::string file() const { return (folder_ / (std::string(kName) + ".ini")).string(); }

  private:
    std::filesystem::path folder_;
};

struct Window {
    explicit Window(const Device& device) : files(AppPath(device.folder())) {
        frm.Main();
        // The load alone, without saving the device that is left.
        frm.menu("mnuSaveDeviceSettings").Checked = false;
        Load();
    }
    void Load() {
        std::string name = kName;
        frm.SetupPartForm(name);
    }
    Session session;
    cPart part{session};
    IniFiles files;
    Messages messages;
    FrmPart frm{part, files, messages};
};

using Map = std::unordered_map<std::string, std::string>;

int Collect(void* user, const char* section, const char* name, const char* value) {
    std::string key(section);
    key.append("=").append(name);
    static_cast<Map*>(user)->emplace(std::move(key), value);
    return 1;
}

void ParseWithInih(benchmark::State& state) {
    const Device device;
    std::size_t keys = 0;
    for (auto _ : state) {
        Map map;
        ini_parse(device.file().c_str(), Collect, &map);
        keys = map.size();
    }
    state.counters["keys"] = static_cast<double>(keys);
}
BENCHMARK(ParseWithInih)->Unit(benchmark::kMillisecond);

void LoadTheDevice(benchmark::State& state) {
    const Device device;
    Window window(device);
    for (auto _ : state)
        window.Load();
    state.counters["fields"] = window.part.PrgmBits.Count();
}
BENCHMARK(LoadTheDevice)->Unit(benchmark::kMillisecond);

void RefreshUnchanged(benchmark::State& state) {
    const Device device;
    Window window(device);
    for (auto _ : state)
        window.part.UpdateDisplays();
}
BENCHMARK(RefreshUnchanged)->Unit(benchmark::kMillisecond);

// Every word differs from what the screens show.
void RefreshWithEveryWordChanged(benchmark::State& state) {
    const Device device;
    Window window(device);
    double value = 0;
    for (auto _ : state) {
        value += 257;
        for (cRegister& reg : window.part.Registers)
            reg.SetValue(value);
        window.part.UpdateDisplays();
    }
}
BENCHMARK(RefreshWithEveryWordChanged)->Unit(benchmark::kMillisecond);

} // namespace
