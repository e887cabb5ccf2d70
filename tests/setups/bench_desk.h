#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "burst/burst_list.h"
#include "session/frm_part.h"
#include "tests/partfile/temp_folder.h"
#include "transport/bench/bench.h"
#include "transport/transport.h"

namespace zentrel {

struct ShownMessages : Messages {
    void Show(std::string_view text, std::string_view, MessageIcon) override {
        shown.emplace_back(text);
    }
    std::optional<std::string> Ask(std::string_view prompt, std::string_view title,
                                   std::string_view proposed) override {
        asked = std::string(title) + "|" + std::string(prompt) + "|" + std::string(proposed);
        return answer;
    }
    std::vector<std::string> shown;
    std::string asked;
    std::optional<std::string> answer;
};

/// The whole program but its window, on copies of the shipped part files and a simulated bench.
struct BenchDesk {
    BenchDesk() {
        for (const auto& entry : std::filesystem::directory_iterator(ZENTREL_SOURCE_DIR "/parts"))
            std::filesystem::copy(entry.path(), folder / entry.path().filename().string());
        frm = std::make_unique<FrmPart>(part, files, messages);
        frm->Main();
    }

    void Select(const std::string& device) {
        std::string name = device;
        frm->SetupPartForm(name, "");
    }
    std::vector<double> Words() const {
        std::vector<double> words;
        for (const cRegister& reg : part.Registers)
            words.push_back(reg.Value());
        return words;
    }
    std::string PartFileText() const { return TempFolder::Read(folder / (part.ID + ".ini")); }

    TempFolder folder;
    Session session;
    cPart part{session};
    IniFiles files{AppPath(folder.Path())};
    ShownMessages messages;
    SimulatedBench bench{part};
    Transport transport{part, bench.drivers()};
    std::unique_ptr<FrmPart> frm;
};

} // namespace zentrel
