// Loads arbitrary text as the script of a real device and runs it, hooks included. A script may
// fail; the program may not. Nothing is written: files live in memory.

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/script_host/script_host.h"
#include "automation/vbscript/vbscript.h"
#include "device/number_text.h"
#include "session/frm_part.h"
#include "transport/bench/bench.h"
#include "transport/load_path.h"
#include "transport/transport.h"

namespace {

using namespace zentrel;

constexpr const char* kFolder = "/program/";
constexpr const char* kName = "QVX9001";
constexpr std::size_t kMemory = std::size_t{48} << 20;

// A PLL with a linked clock block, fields of every kind, and hooks at all three moments.
constexpr const char* kDevice =
    "[SETUP]\nZENTREL_VERSION=2.3.0\nCOMM_MODE=LPT\nREGISTER_LENGTH=24\nCONTROL_LENGTH=2\n"
    "[PINS]\nCOUNT=1\nNAME00=CE\nLOCATION00=5\n"
    "[REGISTERS]\nCOUNT=2\nNAME00=R0\nMASK00=3\nVALUE00=40\nNAME01=R1\nMASK01=3\nVALUE01=81\n"
    "[BITS]\nCOUNT=8\n"
    "NAME00=R\nREG00=R0\nPOS00=2\nLEN00=8\nTYPE00=Counter\nDISPLAY00=True\n"
    "NAME01=N\nREG01=R1\nPOS01=2\nLEN01=5\nTYPE01=Counter\nLINKEDBITS01=NHIGH\nDISPLAY01=True\n"
    "NAME02=NHIGH\nREG02=R1\nPOS02=7\nLEN02=8\nSTEPVALUE02=32\n"
    "NAME03=LIST\nREG03=R0\nPOS03=10\nLEN03=2\nTYPE03=List\nDISPLAY03=True\nCOUNT03=3\n"
    "FORMAT03=String\nVAL0300=One\nVAL0301=2\nVAL0302=Three\n"
    "NAME04=DIV\nREG04=R0\nPOS04=12\nLEN04=4\nCOUNT04=3\nFORMAT04=Number\nVAL0400=1\nVAL0401=4\n"
    "VAL0402=9\nCOUNTB04=3\nVALB0400=1\nVALB0401=2\nVALB0402=7\n"
    "NAME05=BIT\nREG05=R0\nPOS05=16\nLEN05=1\nTYPE05=Bit\nDISPLAY05=True\n"
    "NAME06=MODE\nREG06=R0\nPOS06=17\nLEN06=3\nNAME07=INPUT_MUX\nREG07=R0\nPOS07=20\nLEN07=2\n"
    "script_name00=M\nscript_on_load00=F\nscript_name03=M\nscript_before_prog03=F\n"
    "script_name05=M\nscript_after_prog05=F\n"
    "[PLLS]\nCOUNT=1\nNAME00=P\nN00=N\nR00=R\nOSCIN00=10\n"
    "[CLKDISTS]\nCOUNT=1\nNAME00=C\nVCO00=1\nClocks00=1\nPLL00=P\nDISPLAY_TYPE00=VCO_extVCO\n"
    "CLK_DIV_0000=DIV\nCLK_DELAY_0000=NHIGH\nCLK_MUX_0000=LIST\nCLK_EN_0000=BIT\n"
    "[MODES]\nCOUNT=1\nMODE00=Quiet\nNAME0000=R0\nVALUE0000=132\nNAME0001=R1\nVALUE0001=1\n"
    "[SCRIPTS]\nEXECUTE_SCRIPTS=True\nCOUNT=2\nSCRIPTNAME000=M\nSCRIPTLINES000=";

/// Files in memory: the part file, and what scripts have the program write.
class MemoryStore final : public FileStore {
  public:
    explicit MemoryStore(std::string partFile) { files_[PartFile()] = std::move(partFile); }

    static std::string PartFile() { return std::string(kFolder) + kName + ".ini"; }

    FileStamp Check(const std::string& path) override {
        FileStamp stamp;
        const auto found = files_.find(path);
        stamp.exists = found != files_.end();
        stamp.modifiedNs = version_;
        if (stamp.exists) stamp.size = found->second.size();
        return stamp;
    }
    StoredFile Read(const std::string& path) override {
        StoredFile file;
        file.stamp = Check(path);
        file.settled = true;
        if (file.stamp.exists) file.bytes = files_[path];
        return file;
    }
    std::string Replace(const std::string& path, const std::string& bytes) override {
        if (files_.size() > kMostFiles) return "No space left on device";
        files_[path] = bytes;
        ++version_;
        return {};
    }

  private:
    static constexpr std::size_t kMostFiles = 16;
    std::map<std::string, std::string> files_;
    std::int64_t version_ = 0;
};

std::string PartFile(std::string_view script) {
    std::vector<std::string> lines{""};
    for (const char c : script) {
        if (c == '\n') {
            lines.emplace_back();
        } else if (c != '\r' && c != '\0') {
            lines.back() += c;
        }
    }
    std::string text = kDevice + std::to_string(lines.size() - 1) + "\n";
    int number = 0;
    for (const std::string& line : lines)
        text += "M" + KeyNumber(number++, 5) + "=" + line + "\n";
    return text + "SCRIPTNAME001=Hook_CheckProgramRegister_LoadAll\nSCRIPTLINES001=2\n"
                  "Hook_CheckProgramRegister_LoadAll00000=Function "
                  "Hook_CheckProgramRegister_LoadAll(n)\n"
                  "Hook_CheckProgramRegister_LoadAll00001=frmPart.ExecuteScript \"M\", \"F\"\n"
                  "Hook_CheckProgramRegister_LoadAll00002=End Function\n";
}

/// The whole program but its window, over files in memory and a simulated board.
struct Program {
    explicit Program(std::string_view script)
        : files(AppPath(kFolder), std::make_unique<MemoryStore>(PartFile(script))) {
        // Whatever takes long is stopped: the question is answered with Yes.
        scripts.BreakPressed = [] { return true; };
        Upward upward = part.upward();
        upward.pause = &pause;
        part.Connect(upward);
        frm.Main();
    }
    // What an engineer does; each ends at the guard, as the window's events do.
    void Use() {
        frm.guard.Run([this] {
            std::string name = kName;
            frm.SetupPartForm(name, "");
        });
        frm.guard.Run([this] { LoadAll(part); });
        frm.guard.Run([this] { part.PrgmBits("LIST").SetBitValue(2); });
        frm.guard.Run([this] { part.PrgmBits("BIT").ToggleBit(); });
        frm.guard.Run([this] { frm.RestoreMode(0); });
        frm.guard.Run([this] { LoadChanges(part); });
        frm.guard.Run([this] { frm.CleanUp(); });
    }

    struct Boxes : Messages {
        int MessageBox(std::string_view, std::string_view, int buttons) override {
            return (buttons & 15) == kMsgYesNo ? kMsgYes : MessageBoxDefault(buttons);
        }
    };

    /// Ends the endless burst that a script has set going.
    struct Stop final : EventPause {
        explicit Stop(cPart& part) : part(part) {}
        void Pause() override { part.upward().burst->StopBurstCommands(); }
        cPart& part;
    };

    Session session;
    cPart part{session};
    IniFiles files;
    Boxes boxes;
    SimulatedBench bench{part};
    Transport transport{part, bench.drivers()};
    FrmPart frm{part, files, boxes};
    PartScripts scripts{frm};
    Stop pause{part};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vbscript::SetMemoryLimit(kMemory);
    Program(std::string_view(reinterpret_cast<const char*>(data), size)).Use();
    return 0;
}
