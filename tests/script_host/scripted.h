#pragma once

#include <string>
#include <vector>

#include "automation/script_host/script_host.h"
#include "tests/session/window.h"
#include "transport/bench/bench.h"
#include "transport/transport.h"

/// A program with a device that carries scripts.
namespace zentrel::scripted {

/// Boxes that answer as they are told, and remember what they showed.
class Boxes : public window::Boxes {
  public:
    int answer = kMsgOk;
    int MessageBox(std::string_view text, std::string_view, int) override {
        shown.emplace_back(text);
        return answer;
    }
    std::optional<std::string> Ask(std::string_view prompt, std::string_view,
                                   std::string_view proposed) override {
        shown.emplace_back(prompt);
        return std::string(proposed) + "!";
    }
};

/// A script module as a part file stores it.
inline std::string Module(int number, const std::string& name, const std::string& code) {
    std::vector<std::string> lines{""};
    for (const char c : code) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    const std::string key = KeyNumber(number, 3);
    std::string text = "SCRIPTNAME" + key + "=" + name + "\nSCRIPTLINES" + key + "=" +
                       std::to_string(lines.size() - 1) + "\n";
    for (std::size_t i = 0; i < lines.size(); ++i)
        text += name + KeyNumber(static_cast<int>(i), 5) + "=" + lines[i] + "\n";
    return text;
}

/// Two registers of 24 bits, fields A, B and C in R0, pin CE, and the modules that a test gives.
/// `hooks` are further keys of the fields' section.
inline std::string Device(const std::vector<std::pair<std::string, std::string>>& modules,
                          const std::string& hooks = {}, bool execute = true) {
    std::string text = "COMM_MODE=LPT\nREGISTER_LENGTH=24\nCONTROL_LENGTH=2\n"
                       "[PINS]\nCOUNT=1\nNAME00=CE\nLOCATION00=5\nENABLED00=True\n"
                       "[REGISTERS]\nCOUNT=2\nNAME00=R0\nMASK00=3\nVALUE00=0\n"
                       "NAME01=R1\nMASK01=3\nVALUE01=1\n"
                       "[BITS]\nCOUNT=3\n"
                       "NAME00=A\nREG00=R0\nPOS00=2\nLEN00=8\nTYPE00=Counter\nDISPLAY00=True\n"
                       "NAME01=B\nREG01=R0\nPOS01=10\nLEN01=8\nTYPE01=Counter\nDISPLAY01=True\n"
                       "NAME02=C\nREG02=R1\nPOS02=2\nLEN02=4\nTYPE02=Counter\nDISPLAY02=True\n" +
                       hooks + "[SCRIPTS]\nEXECUTE_SCRIPTS=" + (execute ? "True" : "False") +
                       "\nCOUNT=" + std::to_string(modules.size()) + "\n";
    int number = 0;
    for (const auto& [name, code] : modules)
        text += Module(number++, name, code);
    return text;
}

class Program {
  public:
    Program() : files(AppPath(folder.path().string())), frm(part, files, boxes), scripts(frm) {
        frm.Main();
    }
    void Load(const std::string& device, const std::string& name = "QVX9001") {
        folder.WritePart(name, device);
        boxes.shown.clear();
        std::string changed = name;
        frm.guard.Run([&] { frm.SetupPartForm(changed); });
    }
    double A() const { return part.PrgmBits("A").BitValue(); }
    double B() const { return part.PrgmBits("B").BitValue(); }

    window::Folder folder;
    Boxes boxes;
    Session session;
    cPart part{session};
    IniFiles files;
    SimulatedBench bench{part};
    Transport transport{part, bench.drivers()};
    FrmPart frm;
    PartScripts scripts;
};

} // namespace zentrel::scripted
