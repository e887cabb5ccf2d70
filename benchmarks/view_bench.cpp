#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include "app/program.h"
#include "clock/clk_dist.h"
#include "screens/qt/theme.h"
#include "synth/pll.h"
#include "tests/view/odd_devices.h"
#include "transport/load_path.h"

/// What the engineer waits for between a key and the window that shows its effect, on a device with
/// 4 PLLs, 2 clock blocks and 1,000 fields: models, load over the simulated board, widgets and
/// painting, into memory. A frame lasts 16.7 ms.
namespace {

using namespace zentrel;

class Bench {
  public:
    static Bench& Only() {
        static Bench bench;
        return bench;
    }
    Program& program() { return *program_; }
    FrmPart& frm() { return program_->frm(); }

    void ShowTab(int tab) {
        frm().guard.Run([&] { frm().tabPart.SelectTab(tab); });
        QApplication::processEvents();
    }
    template<typename W>
    W& Find(const char* name) {
        return *program_->window().findChild<W*>(QLatin1String(name));
    }
    /// Types a number over what stands in a box; Enter applies it.
    void Type(QLineEdit& box, double number) {
        box.setFocus();
        box.selectAll();
        box.insert(QString::number(number));
        Q_EMIT box.textEdited(box.text());
        QTest::keyClick(&box, Qt::Key_Return);
        QApplication::processEvents();
    }

  private:
    Bench() {
        namespace fs = std::filesystem;
        fs::copy(fs::path(ZENTREL_SOURCE_DIR) / "parts", folder_.path().toStdString(),
                 fs::copy_options::recursive);
        odd::WriteDevices(folder_.path().toStdString());
        program_ = std::make_unique<Program>(folder_.path().toStdString());
        program_->Ended = [] {};
        program_->Start();
        program_->window().activateWindow();
        frm().guard.Run([this] { frm().SelectDevice(odd::kLarge, {}); });
        for (int tab = 0; tab < frm().tabPart.TabCount(); ++tab)
            if (frm().tabPart.Page(tab).Visible) ShowTab(tab);
    }

    static inline int argc_ = 0;
    QApplication application_{argc_, nullptr};
    QTemporaryDir folder_;
    std::unique_ptr<Program> program_;
};

void TypeIntoBox(benchmark::State& state, int tab, const char* name, double first, double step) {
    Bench& bench = Bench::Only();
    bench.ShowTab(tab);
    auto& box = bench.Find<QLineEdit>(name);
    double number = first;
    for (auto _ : state) {
        number = number > 2 * first ? first : number + step;
        bench.Type(box, number);
    }
    state.counters["words"] = static_cast<double>(bench.program().bench().board.history().size());
}

void TypeAVcoFrequency(benchmark::State& state) {
    TypeIntoBox(state, Bench::Only().frm().part.PLLs(3).PLLTab(), "txtVCO(3)", 1000, 10);
}
BENCHMARK(TypeAVcoFrequency)->Unit(benchmark::kMillisecond);

void TypeAClockBlocksVcoFrequency(benchmark::State& state) {
    TypeIntoBox(state, Bench::Only().frm().part.ClkDists(1).ClkDistTab, "txtCLK_VCOfreq(1)", 1000,
                10);
}
BENCHMARK(TypeAClockBlocksVcoFrequency)->Unit(benchmark::kMillisecond);

void TypeACounterAmongAThousandFields(benchmark::State& state) {
    TypeIntoBox(state, kBitsTab, "txtCntrVal(0)", 100, 1);
}
BENCHMARK(TypeACounterAmongAThousandFields)->Unit(benchmark::kMillisecond);

void TypeABitAmong128Registers(benchmark::State& state) {
    Bench& bench = Bench::Only();
    bench.ShowTab(kRegistersTab);
    auto& row = bench.Find<QWidget>("txtRegBits(0)");
    row.setFocus();
    char digit = '0';
    for (auto _ : state) {
        bench.frm().guard.Run([&] { bench.frm().registers.ClickBits(0, 30); });
        digit = digit == '0' ? '1' : '0';
        QTest::keyClick(&row, digit);
        QApplication::processEvents();
    }
}
BENCHMARK(TypeABitAmong128Registers)->Unit(benchmark::kMillisecond);

void TurnTheBitOrder(benchmark::State& state) {
    Bench& bench = Bench::Only();
    bench.ShowTab(kRegistersTab);
    for (auto _ : state) {
        bench.frm().guard.Run([&] { bench.frm().registers.ClickBitOrder(); });
        QApplication::processEvents();
    }
}
BENCHMARK(TurnTheBitOrder)->Unit(benchmark::kMillisecond);

void ShowTheFieldsTab(benchmark::State& state) {
    Bench& bench = Bench::Only();
    for (auto _ : state) {
        bench.ShowTab(kBitsTab);
        bench.ShowTab(kPortTab);
    }
}
BENCHMARK(ShowTheFieldsTab)->Unit(benchmark::kMillisecond);

/// The pages of the device before are gone: all widgets are made.
void LoadTheDeviceAndShowItsFields(benchmark::State& state) {
    Bench& bench = Bench::Only();
    for (auto _ : state) {
        bench.frm().guard.Run([&] { bench.frm().SelectDevice(odd::kBare, {}); });
        bench.ShowTab(kBitsTab);
        bench.frm().guard.Run([&] { bench.frm().SelectDevice(odd::kLarge, {}); });
        bench.ShowTab(kBitsTab);
    }
}
BENCHMARK(LoadTheDeviceAndShowItsFields)->Unit(benchmark::kMillisecond);

void DragTheWindowsCornerOverTheFields(benchmark::State& state) {
    Bench& bench = Bench::Only();
    bench.ShowTab(kBitsTab);
    QWidget& window = bench.program().window();
    const QSize usual = window.size();
    int drag = 0;
    for (auto _ : state) {
        window.resize(usual + QSize(1, 1) * (++drag % 40));
        QApplication::processEvents();
    }
    window.resize(usual);
}
BENCHMARK(DragTheWindowsCornerOverTheFields)->Unit(benchmark::kMillisecond);

/// A typed frequency with the board's dock at its fullest.
void TypeAVcoFrequencyBeforeAFullBoard(benchmark::State& state) {
    Bench& bench = Bench::Only();
    const auto& history = bench.program().bench().board.history();
    for (std::size_t before = history.size(), words = 0; words < 110'000; words += 128) {
        LoadAll(bench.frm().part);
        if (history.size() == before && words > 1000) break;
        before = history.size();
    }
    TypeAVcoFrequency(state);
}
BENCHMARK(TypeAVcoFrequencyBeforeAFullBoard)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
