#include <ctime>

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QWheelEvent>

#include "screens/qt/wire_diagram.h"
#include "screens/qt/wire_table.h"
#include "screens/qt/wire_view.h"
#include "tests/view/window_fixture.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

class WireViewTest : public WindowTest {
  protected:
    void Open() {
        Select("QVX4100");
        Entry("mnuWireMonitor")->trigger();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&monitor()));
        table_ = monitor().findChild<QTableView*>(QStringLiteral("wireTable"));
        diagram_ = static_cast<view::WireDiagram*>(
            monitor().findChild<QWidget*>(QStringLiteral("wireDiagram")));
    }
    view::WireView& monitor() { return program_->window().wire(); }
    QString Cell(int row, WireScreen::Column column) {
        return table_->model()->index(row, column).data().toString();
    }
    void Press(const char* name) {
        QTest::mouseClick(monitor().findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
    }

    QTableView* table_ = nullptr;
    view::WireDiagram* diagram_ = nullptr;
};

TEST_F(WireViewTest, ctrl_m_opens_a_window_that_lists_the_words_as_they_go_out) {
    EXPECT_EQ(Entry("mnuWireMonitor")->shortcut(), QKeySequence(QStringLiteral("Ctrl+M")));
    Open();
    const QAbstractItemModelTester tester(table_->model());
    Entry("mnuLoadPLL")->trigger();
    const int rows = table_->model()->rowCount();
    EXPECT_GE(rows, part().Registers.Count());
    EXPECT_EQ(Cell(rows - 1, WireScreen::kRegister), QStringLiteral("R15"));
    EXPECT_EQ(Cell(rows - 1, WireScreen::kHex), QStringLiteral("4001 2C0F"));
    EXPECT_EQ(table_->verticalScrollBar()->value(), table_->verticalScrollBar()->maximum())
        << "it follows the newest";
    auto* filter = monitor().findChild<QLineEdit*>(QStringLiteral("wireFilter"));
    QTest::keyClicks(filter, QStringLiteral("PLL_N"));
    EXPECT_EQ(table_->model()->rowCount(), 1);
    monitor().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&monitor()));
    filter->setFocus();
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_EQ(table_->model()->rowCount(), rows);
    Press("wirePause");
    Entry("mnuLoadPLL")->trigger();
    EXPECT_EQ(table_->model()->rowCount(), rows);
    Press("wireClear");
    EXPECT_EQ(table_->model()->rowCount(), 0);
}

TEST_F(WireViewTest, the_keys_select_words_and_closing_stops_the_recording) {
    Open();
    Entry("mnuLoadPLL")->trigger();
    table_->setFocus();
    QTest::keyClick(table_, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(program_->frm().wire.SelectedRow(), 0);
    QTest::keyClick(table_, Qt::Key_Down);
    EXPECT_EQ(program_->frm().wire.SelectedRow(), 1);
    Entry("mnuLoadPLL")->trigger();
    EXPECT_EQ(program_->frm().wire.SelectedRow(), 1)
        << "what comes doesn't take the selection away";
    QTest::keyClick(table_, Qt::Key_Escape);
    EXPECT_EQ(program_->frm().wire.SelectedRow(), -1);
    EXPECT_TRUE(program_->frm().wire.monitor.followed());
    monitor().close();
    EXPECT_FALSE(monitor().isVisible());
    EXPECT_FALSE(program_->frm().wire.monitor.followed());
    Entry("mnuWireMonitor")->trigger();
    EXPECT_TRUE(monitor().isVisible());
    program_->window().close();
    EXPECT_FALSE(monitor().isVisible()) << "it goes with the main window";
}

TEST_F(WireViewTest, the_diagram_zooms_where_the_pointer_is_and_its_cursor_steps_along_the_edges) {
    Open();
    Entry("mnuLoadPLL")->trigger();
    const double whole = diagram_->visibleSteps();
    const QPointF middle = diagram_->rect().center();
    QWheelEvent wheel(middle, diagram_->mapToGlobal(middle), {}, {0, 240}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(diagram_, &wheel);
    EXPECT_NEAR(diagram_->visibleSteps(), whole / 1.5625, whole / 100);
    QTest::keyClick(diagram_, Qt::Key_Minus);
    QTest::keyClick(diagram_, Qt::Key_Minus);
    EXPECT_NEAR(diagram_->visibleSteps(), whole, whole / 100) << "and not beyond the whole";
    QTest::keyClick(diagram_, Qt::Key_Home);
    EXPECT_TRUE(diagram_->Readout().startsWith(QStringLiteral("0 ns   bit 31 = 0   CLK 0")))
        << diagram_->Readout().toStdString();
    QTest::keyClick(diagram_, Qt::Key_Right);
    EXPECT_TRUE(diagram_->Readout().contains(QStringLiteral("bit 31 = 0   CLK 1   DATA 0   LE 0")))
        << diagram_->Readout().toStdString();
    QTest::keyClick(diagram_, Qt::Key_End);
    QTest::keyClick(diagram_, Qt::Key_Left);
    QTest::keyClick(diagram_, Qt::Key_Left);
    EXPECT_TRUE(diagram_->Readout().contains(QStringLiteral("CLK 0   DATA 0   LE 1")))
        << diagram_->Readout().toStdString();
}

TEST_F(WireViewTest, a_full_list_still_answers_at_once) {
    Open();
    program_->frm().guard.Run([this] {
        for (int i = 0; i < 120000; ++i)
            LoadRegister(part(), "R0");
    });
    EXPECT_EQ(table_->model()->rowCount(), 100000);
    const std::clock_t start = std::clock(); // The machine may have other work.
    for (const int row : {0, 50000, 99999}) {
        table_->scrollTo(table_->model()->index(row, 0));
        table_->viewport()->repaint();
    }
    program_->frm().guard.Run([this] { LoadRegister(part(), "R1"); });
    EXPECT_EQ(Cell(99999, WireScreen::kRegister), QStringLiteral("R1"));
    EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC / 2);
}

} // namespace
} // namespace zentrel
