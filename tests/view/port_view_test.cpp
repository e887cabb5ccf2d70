#include <QAbstractButton>
#include <QLineEdit>
#include <QRadioButton>

#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

/// A device with a read-back pin: QVX4100, its pins in rows 0 to 3, the last one read back.
class PortViewTest : public WindowTest {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        Select("QVX4100");
        ShowTab(kPortTab);
    }
    void Click(const char* option) {
        QTest::mouseClick(Find<QRadioButton>(option), Qt::LeftButton, {}, {8, 8});
    }
    int OptionsOfRow(int row) {
        int shown = 0;
        for (int option = 12 * row; option < 12 * (row + 1); ++option)
            shown += Find(qPrintable(QStringLiteral("optPrgmBit(%1)").arg(option)))->isVisible();
        return shown;
    }
    Color HeaderPin(std::size_t pin) { return program_->frm().port.Pinheader[pin].BackColor; }
};

TEST_F(PortViewTest, a_click_on_a_connector_option_moves_the_line_and_its_colour) {
    Click("optClockBit(7)");
    EXPECT_EQ(part().ClockPosition(), 8);
    EXPECT_TRUE(Find<QRadioButton>("optClockBit(7)")->isChecked());
    EXPECT_FALSE(Find<QRadioButton>("optClockBit(0)")->isChecked());
    EXPECT_EQ(HeaderPin(8), colors::kCyan);
    Click("optDataBit(7)");
    EXPECT_EQ(HeaderPin(8), colors::kRed) << "two signals on one pin";
}

TEST_F(PortViewTest, the_read_back_pin_has_five_options_under_lpt_and_twelve_under_usb) {
    EXPECT_EQ(OptionsOfRow(3), 5);
    Click("CommMode(0)");
    EXPECT_EQ(part().session().CommMode_Select, "USB");
    EXPECT_EQ(OptionsOfRow(3), 12);
    EXPECT_EQ(OptionsOfRow(0), 12);
    Click("CommMode(1)");
    EXPECT_EQ(OptionsOfRow(3), 5);
}

TEST_F(PortViewTest, the_arrow_keys_choose_within_a_line_and_tab_leaves_it) {
    auto* first = Find<QRadioButton>("optClockBit(0)");
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Right);
    EXPECT_EQ(part().ClockPosition(), 2);
    QTest::keyClick(program_->window().focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(
        program_->window().focusWidget()->objectName().startsWith(QLatin1String("optDataBit")));
}

TEST_F(PortViewTest, only_other_lets_an_address_be_typed_and_usb_greys_them_all) {
    auto* address = Find<QLineEdit>("txtPortAdr");
    EXPECT_FALSE(address->isEnabled());
    Click("optPortAdr(3)");
    ASSERT_TRUE(address->isEnabled());
    address->setFocus();
    address->selectAll();
    QTest::keyClicks(address, QStringLiteral("2bc"));
    QTest::keyClick(address, Qt::Key_Return);
    EXPECT_EQ(part().PortAddress, 0x2BC);
    Click("CommMode(0)");
    EXPECT_FALSE(address->isEnabled());
    EXPECT_FALSE(Find("optPortAdr(0)")->isEnabled());
}

} // namespace
} // namespace zentrel
