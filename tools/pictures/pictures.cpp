// Takes a picture of every tab and dialog of some devices, with words on the simulated board, and
// of the wire monitor.
// docs/make_pictures runs it for each theme and scale.
//
//   pictures PARTS OUT SUFFIX [WIDTHxHEIGHT [DEVICE...]]
//
// writes OUT/<device>-<what>-SUFFIX.png for devices of the folder PARTS: two of those that are
// shipped, in the window's usual size, unless told otherwise.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <QApplication>
#include <QDialog>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

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
constexpr std::size_t kLongestName = 40;

class Album {
  public:
    Album(Program& program, fs::path out, std::string suffix)
        : program_(program), frm_(program.frm()), out_(std::move(out)), suffix_(std::move(suffix)) {
        // A message box holds the event that shows it: it is taken and answered from here.
        QObject::connect(&watch_, &QTimer::timeout, [this] { TakeBox(); });
        watch_.start(kSettle);
    }

    void Take(const std::string& device) {
        device_ = device;
        boxes_ = 0;
        frm_.guard.Run([&] {
            frm_.SelectDevice(device, "");
            if (frm_.part.Registers.Count() == 0) return;
            LoadAll(frm_.part);
            AddBurstCommand(frm_.part, frm_.part.Registers(1).ID(), 0);
            AddBurstCommand(frm_.part, "", 1);
            AddBurstCommand(frm_.part, "1000", 2);
        });
        for (int tab = 0; tab < frm_.tabPart.TabCount(); ++tab) {
            if (!frm_.tabPart.Page(tab).Visible) continue;
            frm_.guard.Run([&] { frm_.tabPart.SelectTab(tab); });
            QTest::qWait(kSettle);
            Save(program_.window(), frm_.tabPart.TabCaption(tab), tab);
        }
        TakeDialogs();
    }

    /// Words and pins over both routes, with a word selected that changed a few bits.
    void TakeWire() {
        device_ = "Wire_Monitor";
        frm_.guard.Run([this] { frm_.SelectDevice("QVX4100", ""); });
        for (const int route : {1, 0}) {
            frm_.guard.Run([&] { frm_.port.SelectCommMode(route); });
            Click("mnuWireMonitor");
            SendWords();
            frm_.guard.Run([this] { frm_.wire.Select(frm_.wire.RowCount() - 2); });
            QTest::qWait(kSettle);
            Save(program_.window().wire(), route == 0 ? "USB" : "LPT", route);
        }
        frm_.guard.Run([this] { frm_.wire.Close(); });
    }

  private:
    void SendWords() {
        cPart& part = frm_.part;
        Click("mnuLoadPLL");
        frm_.guard.Run([&] { part.PrgmPins("SYNC").Toggle(), UpdateOutputPins(part); });
        frm_.guard.Run([&] { QVX4100ReadRegister(part, "R15"); });
        for (const int dividers : {0x0205, 0x0a05, 0x0a0d}) {
            frm_.guard.Run([&] {
                part.Registers("R4").SetBits(dividers, 4, 16);
                LoadChanges(part);
            });
        }
    }

    void TakeDialogs() {
        frm_.guard.Run([this] { frm_.AddError("Setting LD to 3 failed"); });
        Click("mnuAbout");
        frm_.guard.Run([this] { frm_.frmAbout.ClickVersionInfo(); });
        TakeDialog("frmAbout", "about");
        frm_.guard.Run([this] { frm_.frmAbout.Close(); });
        Click("mnuShowErrors");
        TakeDialog("frmErrorList", "errors");
        frm_.guard.Run([this] { frm_.frmErrorList.ClickOk(); });
        if (frm_.part.ClkDists.Count() > 0) {
            frm_.guard.Run([this] { frm_.loopFilter.Form_Load(); });
            TakeDialog("frmLoopFilter", "loop_filter");
            frm_.guard.Run([this] { frm_.loopFilter.cmdClose_Click(); });
        }
        Click("mnuStatus");
    }

    void Click(const char* entry) {
        frm_.guard.Run([&] { frm_.menu.Click(entry); });
    }

    void TakeDialog(const char* name, const std::string& what) {
        QTest::qWait(kSettle);
        if (auto* dialog = program_.window().findChild<QWidget*>(QLatin1String(name)))
            Save(*dialog, what, 0);
    }

    void TakeBox() {
        auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!box || box->parent() != &program_.window()) return;
        Save(*box, "message", boxes_++);
        box->accept();
    }

    // `number` tells tabs of the same caption apart.
    void Save(QWidget& widget, std::string what, int number) {
        std::replace_if(
            what.begin(), what.end(), [](char c) { return c == '/' || c == ' '; }, '_');
        what.resize(std::min(what.size(), kLongestName));
        std::string name = device_ + "-" + what + "-" + suffix_ + ".png";
        if (!written_.insert(name).second) {
            name = device_ + "-" + what + std::to_string(number) + "-" + suffix_ + ".png";
        }
        const QString path = QString::fromStdString((out_ / name).string());
        if (!widget.grab().save(path))
            throw std::runtime_error("couldn't write " + path.toStdString());
        std::printf("%s\n", name.c_str());
    }

    Program& program_;
    FrmPart& frm_;
    fs::path out_;
    std::string suffix_, device_;
    std::set<std::string> written_;
    QTimer watch_;
    int boxes_ = 0;
};

QSize SizeFrom(const char* text) {
    const QStringList sides = QString::fromLatin1(text).split(QLatin1Char('x'));
    return sides.size() == 2 ? QSize(sides[0].toInt(), sides[1].toInt()) : QSize();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "pictures PARTS OUT SUFFIX [WIDTHxHEIGHT [DEVICE...]]\n");
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
        if (argc > 4) program.window().resize(SizeFrom(argv[4]));
        Album album(program, argv[2], argv[3]);
        std::vector<std::string> devices(argv + std::min(argc, 5), argv + argc);
        const bool shipped = devices.empty();
        if (shipped) devices = {"QVX2961", "QVX4100"};
        for (const std::string& device : devices)
            album.Take(device);
        if (shipped) album.TakeWire();
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "pictures: %s\n", failure.what());
        return 1;
    }
}
