#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "automation/script_host/script_host.h"
#include "session/frm_part.h"
#include "transport/bench/bench.h"
#include "transport/load_path.h"
#include "transport/transport.h"

namespace zentrel::examples {

/// Message boxes of a program without a window: they go to the error stream.
class StderrMessages : public Messages {
  public:
    void Show(std::string_view text, std::string_view, MessageIcon) override {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
        ++shown;
    }
    int shown = 0;
};

/// The whole program but its window: session, device, scripts, screens' models, and a simulated
/// board. Works on a copy of the folder with the part files, so that an example changes nobody's
/// files.
class Headless {
  public:
    explicit Headless(const std::filesystem::path& folder) : copy_(folder) {}

    cPart& part() { return part_; }
    FrmPart& frm() { return frm_; }
    Board& board() { return bench_.board; }
    int messagesShown() const { return messages_.shown; }

    /// Starts the session and selects a device; false when it isn't there.
    bool Select(const std::string& device) {
        if (!started_) frm_.Main();
        started_ = true;
        std::string name = device;
        frm_.SetupPartForm(name, "");
        return !part_.Registers.empty();
    }
    void UseRoute(std::string_view route) { CommMode_Click(part_, route == kRouteUsb ? 0 : 1); }

  private:
    // A folder of our own, gone at the end.
    class FolderCopy {
      public:
        explicit FolderCopy(const std::filesystem::path& from) {
            std::string pattern =
                (std::filesystem::temp_directory_path() / "zentrel-example-XXXXXX").string();
            path_ = mkdtemp(pattern.data());
            for (const auto& entry : std::filesystem::directory_iterator(from)) {
                if (entry.path().extension() == ".ini") {
                    std::filesystem::copy(entry.path(), path_ / entry.path().filename());
                }
            }
        }
        ~FolderCopy() {
            std::error_code ignored;
            std::filesystem::remove_all(path_, ignored);
        }
        FolderCopy(const FolderCopy&) = delete;
        FolderCopy& operator=(const FolderCopy&) = delete;
        std::string path() const { return path_.string(); }

      private:
        std::filesystem::path path_;
    };

    FolderCopy copy_;
    Session session_;
    cPart part_{session_};
    IniFiles files_{AppPath(copy_.path())};
    StderrMessages messages_;
    SimulatedBench bench_{part_};
    Transport transport_{part_, bench_.drivers()};
    FrmPart frm_{part_, files_, messages_};
    PartScripts scripts_{frm_};
    bool started_ = false;
};

} // namespace zentrel::examples
