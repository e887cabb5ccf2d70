#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "session/frm_part.h"

/// What the tests of the session share: a program folder of their own, and the window in it.
namespace zentrel::window {

class Boxes : public Messages {
  public:
    std::vector<std::string> shown;
    void Show(std::string_view text, std::string_view, MessageIcon) override {
        shown.emplace_back(text);
    }
};

class Folder {
  public:
    Folder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zentrelXXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = pattern;
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(path_ / name, std::ios::binary) << text;
    }
    std::string Read(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// A part file of the current format.
    void WritePart(const std::string& name, const std::string& text) const {
        Write(name + ".ini", "[SETUP]\nZENTREL_VERSION=2.3.0\n" + text);
    }

  private:
    std::filesystem::path path_;
};

/// A disk that refuses every write.
class ReadOnlyStore : public FileStore {
  public:
    FileStamp Check(const std::string& path) override { return disk_->Check(path); }
    StoredFile Read(const std::string& path) override { return disk_->Read(path); }
    std::string Replace(const std::string&, const std::string&) override {
        return "Read-only file system";
    }

  private:
    std::unique_ptr<FileStore> disk_ = MakeDiskStore();
};

/// The window over a folder. Nothing stands behind the ports.
class Window {
  public:
    explicit Window(const Folder& folder, std::unique_ptr<FileStore> store = MakeDiskStore())
        : files(AppPath(folder.path().string()), std::move(store)), frm(part, files, boxes) {}

    /// Starts the program.
    void Start() {
        frm.Main();
        boxes.shown.clear();
    }
    /// Loads a device as a client does.
    void Load(const std::string& name) {
        std::string changed = name;
        frm.SetupPartForm(changed);
    }

    Session session;
    cPart part{session};
    IniFiles files;
    Boxes boxes;
    FrmPart frm;
};

/// Two registers, a switch, a counter, a list and a pin.
inline constexpr const char* kSmallPart = R"(COMM_MODE=LPT
REGISTER_LENGTH=24
CONTROL_LENGTH=2
CLOCK=1
DATA=2
LE=3
VERSION=b7
[PINS]
COUNT=1
NAME00=CE
LOCATION00=10
ENABLED00=True
[REGISTERS]
COUNT=2
NAME00=R0
VALUE00=256
MASK00=3
NAME01=R1
VALUE01=1
MASK01=3
[BITS]
COUNT=3
REG00=R0
NAME00=ENABLE
POS00=8
LEN00=1
DISPLAY00=True
TYPE00=Bit
FRAME00=Switches
DESCRIPTION00=Turns it on
DESCRIPTIONWHY00=Off saves power
REG01=R0
NAME01=N
POS01=9
LEN01=8
DISPLAY01=True
TYPE01=Counter
FRAME01=Counters
REG02=R1
NAME02=GAIN
POS02=2
LEN02=2
DISPLAY02=True
TYPE02=List
FRAME02=Counters
COUNT02=3
VAL0200=Low
VAL0201=Middle
VAL0202=High
[MODES]
COUNT=2
MODE00=Receive & send
MODE01=Sleep
)";

} // namespace zentrel::window
