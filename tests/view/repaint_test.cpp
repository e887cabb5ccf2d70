#include <set>

#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpression>

#include "clock/clk_dist.h"
#include "synth/pll.h"
#include "tests/view/odd_devices.h"
#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

/// Notes which named widgets were painted.
class RepaintTest : public WindowTest {
  protected:
    class Watch : public QObject {
      public:
        explicit Watch(QWidget& window) {
            QCoreApplication::processEvents();
            for (QWidget* widget :
                 window.findChildren<QWidget*>(QRegularExpression(QStringLiteral("\\("))))
                widget->installEventFilter(this);
        }
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() == QEvent::Paint) painted_.insert(watched->objectName());
            return false;
        }
        /// The boxes, lists, check boxes and rows that were painted; frames lie under them.
        std::string Painted() {
            QCoreApplication::processEvents();
            QStringList names;
            for (const QString& name : painted_)
                if (!name.startsWith(QLatin1String("fra")) &&
                    !name.startsWith(QLatin1String("spn"), Qt::CaseInsensitive))
                    names << name;
            return names.join(QLatin1Char(' ')).toStdString();
        }

      private:
        std::set<QString> painted_;
    };

    void SetUp() override {
        WindowTest::SetUp();
        odd::WriteDevices(folder_.path().toStdString());
        program_->frm().guard.Run([this] { program_->frm().SelectDevice(odd::kLarge, {}); });
        program_->window().resize(3000, 2000);
    }
    void Do(const std::function<void()>& action) { program_->frm().guard.Run(action); }
};

TEST_F(RepaintTest, a_field_s_new_value_repaints_its_own_element_and_no_other) {
    ShowTab(kBitsTab);
    Watch watch(program_->window());
    ASSERT_EQ(program_->frm().bits.lblCntr[34].Caption, "FIELD_1"); // No block follows it.
    Do([&] { program_->frm().bits.SpinUp(34); });
    EXPECT_EQ(watch.Painted(), "txtCntrVal(34)");
}

TEST_F(RepaintTest, a_bit_of_a_register_repaints_its_row) {
    ShowTab(kRegistersTab);
    Watch watch(program_->window());
    Do([this] {
        Register(3).SetValue(0x4321);
        part().UpdateDisplays();
    });
    EXPECT_EQ(watch.Painted(), "lblHexRegValue(2) txtRegBits(2)");
}

TEST_F(RepaintTest, a_pll_s_frequency_repaints_what_follows_from_it) {
    ShowTab(part().PLLs(3).PLLTab());
    Do([this] { part().PLLs(3).SetVCOFrequency(1000), part().UpdateDisplays(); });
    Watch watch(program_->window());
    Do([this] { part().PLLs(3).SetVCOFrequency(1010), part().UpdateDisplays(); });
    EXPECT_EQ(watch.Painted(), "txtNCounter(3) txtVCO(3)");
}

TEST_F(RepaintTest, a_refresh_that_changes_nothing_repaints_nothing) {
    for (const int tab :
         std::initializer_list<int>{kPortTab, kRegistersTab, kBitsTab, kBurstTab,
                                    part().PLLs(1).PLLTab(), part().ClkDists(1).ClkDistTab}) {
        ShowTab(tab);
        Watch watch(program_->window());
        Do([this] { part().UpdateDisplays(); });
        EXPECT_EQ(watch.Painted(), "") << "tab " << tab;
    }
}

TEST_F(RepaintTest, another_order_of_the_bits_keeps_the_rows_that_stand) {
    ShowTab(kRegistersTab);
    const QWidget* row = Find("txtRegBits(100)");
    Do([this] { program_->frm().registers.ClickBitOrder(); });
    EXPECT_EQ(Find("txtRegBits(100)"), row);
    Do([this] { program_->frm().registers.ClickBits(100, 30); });
    EXPECT_TRUE(Find("lblHexDisplay")->isVisible());
    EXPECT_NEAR(Find("lblHexDisplay")->y(), row->y(), row->height());
}

} // namespace
} // namespace zentrel
