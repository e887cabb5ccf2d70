#include <QAbstractButton>
#include <QLineEdit>

#include "clock/clk_dist.h"
#include "clock/display_mode.h"
#include "screens/qt/theme.h"
#include "synth/pll.h"
#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

// What a script sets on an element is what the engineer sees.
class ScriptFlagsTest : public WindowTest {
  protected:
    void Change(const std::function<void()>& change) { program_->frm().guard.Run(change); }

    // How much of a widget has a colour.
    static int Pixels(QWidget* widget, const QColor& color) {
        const QImage image = widget->grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == color) ++count;
        return count;
    }
};

TEST_F(ScriptFlagsTest, colours_flags_and_words_reach_the_widgets) {
    Select("QVX2874");
    PllPanel& panel = part().PLLs(1).panel;
    ShowTab(part().PLLs(1).PLLTab());
    const view::Theme& theme = view::Theme::Now();
    auto* toggle = Find<QAbstractButton>("lblCPGain(1)");
    auto* box = Find<QLineEdit>("txtVCO(1)");
    auto* button = Find<QAbstractButton>("txtGetPLLBits(1)");
    EXPECT_EQ(Pixels(toggle, theme.Fill(colors::kGreen)), 0);
    Change([&] {
        panel.lblCPGain.BackColor = colors::kGreen;
        panel.txtVCO.ForeColor = colors::kBlue;
        panel.txtVCO.Enabled = false;
        panel.txtGetPLLBits.BackColor = colors::kYellow;
        panel.txtGetPLLBits.Caption = "Fields";
        panel.txtOsc.Visible = false;
    });
    EXPECT_GT(Pixels(toggle, theme.Fill(colors::kGreen)), toggle->width());
    EXPECT_EQ(box->palette().color(QPalette::Text), theme.Ink(colors::kBlue));
    EXPECT_FALSE(box->isEnabled());
    EXPECT_GT(Pixels(button, theme.Fill(colors::kYellow)), button->width());
    EXPECT_EQ(button->text(), QStringLiteral("Fields"));
    EXPECT_FALSE(Find<QLineEdit>("txtOsc(1)")->isVisible());
    // And back.
    Change([&] {
        panel.lblCPGain.BackColor = colors::kWhite;
        panel.txtGetPLLBits.BackColor = colors::kWhite;
    });
    EXPECT_EQ(Pixels(toggle, theme.Fill(colors::kGreen)), 0);
    EXPECT_EQ(Pixels(button, theme.Fill(colors::kYellow)), 0);
}

TEST_F(ScriptFlagsTest, a_check_box_and_a_label_wear_their_colours) {
    Select("QVX2874");
    ShowTab(2);
    auto& bits = program_->frm().bits;
    const view::Theme& theme = view::Theme::Now();
    ASSERT_TRUE(bits.chkPrgmBit[0].Visible);
    ASSERT_TRUE(bits.lblCntr[0].Visible);
    Change([&] {
        bits.chkPrgmBit[0].ForeColor = colors::kRed;
        bits.lblCntr[0].BackColor = colors::kCyan;
    });
    EXPECT_EQ(Find<QAbstractButton>("chkPrgmBit(0)")->palette().color(QPalette::WindowText),
              theme.Ink(colors::kRed));
    auto* label = Find<QWidget>("lblCntr(0)");
    EXPECT_GT(Pixels(label, theme.Fill(colors::kCyan)), label->width());
}

TEST_F(ScriptFlagsTest, a_hidden_diagram_leaves_nothing_on_its_tab) {
    Select("QVX4100");
    cClkDist& block = part().ClkDists(1);
    ClockPanel& design = program_->frm().clockDesign;
    ShowTab(block.ClkDistTab);
    const auto entries = [&] {
        int visible = 0;
        for (QWidget* widget : program_->window().findChildren<QWidget*>())
            if (widget->isVisible() && widget->objectName().contains(QStringLiteral("CLK")))
                ++visible;
        return visible;
    };
    const int before = entries();
    EXPECT_GT(before, 5);
    Change([&] { Set_CLKDIST_PLL_VCO(design, block, false); });
    EXPECT_EQ(entries(), 0);
    Change([&] { Show_CLKDIST(block); });
    EXPECT_EQ(entries(), before);
}

} // namespace
} // namespace zentrel
