// Takes a picture of every tab of some shipped devices, with words on the simulated board, and of
// the wire monitor.
// docs/make_pictures runs it for each theme and scale.
//
//   pictures PARTS OUT SUFFIX    writes OUT/<device>-<tab>-SUFFIX.png

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include <QApplication>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTest>

#include "app/program.h"
#include "burst/burst_list.h"
#include "screens/qt/main_window.h"
#include "screens/qt/theme.h"
#include "screens/qt/wire_view.h"
#include "transport/load_path.h"
#include "transport/readback.h"

namespace fs = std::filesystem;
using namespace zentrel;

namespace {

constexpr int kSettle = 150; // ms for a window to lay itself out

std::string FileName(const std::string& device, std::string tab, const std::string& suffix) {
    for (char& c : tab) {
        if (c == '/' || c == ' ') c = '_';
    }
    return device + "-" + tab + "-" + suffix + ".png";
}

void Save(QWidget& window, const fs::path& out, const std::string& name) {
    const QString path = QString::fromStdString((out / name).string());
    if (!window.grab().save(path)) throw std::runtime_error("couldn't write " + path.toStdString());
    std::printf("%s\n", name.c_str());
}

/// Words and pins over both routes, with a word selected that changed a few bits.
void ShowWire(Program& program, const fs::path& out, const std::string& suffix) {
    FrmPart& frm = program.frm();
    cPart& part = frm.part;
    frm.guard.Run([&] { frm.SelectDevice("QVX4100", ""); });
    for (const int route : {1, 0}) {
        frm.guard.Run([&] {
            frm.port.SelectCommMode(route);
            frm.menu.Click("mnuWireMonitor");
        });
        frm.guard.Run([&] { frm.menu.Click("mnuLoadPLL"); });
        frm.guard.Run([&] { part.PrgmPins("SYNC").Toggle(), UpdateOutputPins(part); });
        frm.guard.Run([&] { QVX4100ReadRegister(part, "R15"); });
        for (const int dividers : {0x0205, 0x0a05, 0x0a0d}) {
            frm.guard.Run([&] {
                part.Registers("R4").SetBits(dividers, 4, 16);
                LoadChanges(part);
            });
        }
        frm.guard.Run([&] { frm.wire.Select(frm.wire.RowCount() - 2); });
        QTest::qWait(kSettle);
        Save(program.window().wire(), out,
             std::string("Wire_Monitor-") + (route == 0 ? "USB-" : "LPT-") + suffix + ".png");
    }
    frm.guard.Run([&] { frm.wire.Close(); });
}

void ShowDevice(Program& program, const std::string& device, const fs::path& out,
                const std::string& suffix) {
    FrmPart& frm = program.frm();
    frm.guard.Run([&] {
        frm.SelectDevice(device, "");
        LoadAll(frm.part);
        AddBurstCommand(frm.part, frm.part.Registers(1).ID(), 0);
        AddBurstCommand(frm.part, "", 1);
        AddBurstCommand(frm.part, "1000", 2);
    });
    for (int tab = 0; tab < frm.tabPart.TabCount(); ++tab) {
        if (!frm.tabPart.Page(tab).Visible) continue;
        frm.guard.Run([&] { frm.tabPart.SelectTab(tab); });
        QTest::qWait(kSettle);
        const std::string name = FileName(device, frm.tabPart.TabCaption(tab), suffix);
        Save(program.window(), out, name);
    }
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "pictures PARTS OUT SUFFIX\n");
        return 2;
    }
    try {
        view::DressApplication(qEnvironmentVariable("ZENTREL_THEME"));
        const QTemporaryDir folder;
        fs::copy(argv[1], folder.path().toStdString(), fs::copy_options::recursive);
        fs::create_directories(argv[2]);
        Program program(folder.path().toStdString());
        program.Ended = [] {};
        program.Start();
        for (const char* device : {"QVX2961", "QVX4100"})
            ShowDevice(program, device, argv[2], argv[3]);
        ShowWire(program, argv[2], argv[3]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "pictures: %s\n", failure.what());
        return 1;
    }
}
