#include <QAbstractButton>
#include <QLineEdit>

#include "synth/pll.h"
#include "synth/synth_div.h"
#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

class PllViewTest : public WindowTest {
  protected:
    void Show(const std::string& device, int pll = 1) {
        Select(device);
        ShowTab(part().PLLs(pll).PLLTab());
    }
    cPLL& pll(int i = 1) { return part().PLLs(i); }
    void Type(QLineEdit* box, const QString& text) {
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
    }
    void ExpectNoOverlap(const char* device) {
        const QWidget* canvas = Find<QLineEdit>("txtOsc(1)")->parentWidget();
        std::vector<const QWidget*> shown;
        for (const QWidget* one : canvas->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (!one->isVisible()) continue;
            const std::string name = one->objectName().toStdString();
            EXPECT_TRUE(canvas->rect().contains(one->geometry())) << device << " " << name;
            EXPECT_FALSE(one->accessibleName().isEmpty()) << device << " " << name;
            for (const QWidget* other : shown)
                EXPECT_FALSE(one->geometry().intersects(other->geometry()))
                    << device << " " << name << " " << other->objectName().toStdString();
            shown.push_back(one);
        }
    }
};

TEST_F(PllViewTest, a_vco_frequency_reaches_n_and_the_board_on_enter_and_not_before) {
    Show("QVX2691");
    Entry("mnuLoadPLL")->trigger();
    const double n = pll().NValue();
    const double mhz = pll().VCOFrequency();
    auto* box = Find<QLineEdit>("txtVCO(1)");
    Type(box, QString::number(mhz * 2));
    EXPECT_EQ(pll().panel.txtVCO.Text, box->text().toStdString());
    EXPECT_DOUBLE_EQ(pll().NValue(), n);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(pll().NValue(), 2 * n);
    EXPECT_EQ(Find<QLineEdit>("txtNCounter(1)")->text().toDouble(), 2 * n);
    for (int i = 1; i <= part().Registers.Count(); ++i)
        EXPECT_EQ(program_->bench().board.Content(Register(i).ID()), Register(i).word()) << i;
}

TEST_F(PllViewTest, escape_puts_back_what_the_model_has) {
    Show("QVX2691");
    auto* box = Find<QLineEdit>("txtRCounter(1)");
    const QString before = box->text();
    Type(box, QStringLiteral("77"));
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_EQ(box->text(), before);
    EXPECT_EQ(pll().panel.txtRCounter.Text, before.toStdString());
}

TEST_F(PllViewTest, the_upper_button_of_the_n_spinner_adds_one) {
    Show("QVX2691");
    const double n = pll().NValue();
    auto* spinner = Find<QWidget>("spnNCounter(1)");
    const QPoint middle = spinner->rect().center();
    QTest::mouseClick(spinner, Qt::LeftButton, {}, {middle.x(), 2});
    EXPECT_DOUBLE_EQ(pll().NValue(), n + 1);
    QTest::mouseClick(spinner, Qt::LeftButton, {}, {middle.x(), spinner->height() - 2});
    EXPECT_DOUBLE_EQ(pll().NValue(), n);
}

TEST_F(PllViewTest, gain_goes_up_with_the_left_button_and_down_with_the_right_one) {
    Show("QVX2961");
    auto* gain = Find<QAbstractButton>("lblCPGain(1)");
    cPrgmBits& field = part().PrgmBits(pll().panel.lblCPGain.Tag);
    field.SetBitValue(1);
    QTest::mouseClick(gain, Qt::LeftButton);
    EXPECT_EQ(field.BitValue(), 2);
    QTest::mouseClick(gain, Qt::RightButton);
    EXPECT_EQ(field.BitValue(), 1);
    EXPECT_EQ(gain->text().toStdString(), field.Text());
}

TEST_F(PllViewTest, what_the_block_lacks_is_absent_and_nothing_overlaps) {
    for (const char* device : {"QVX2691", "QVX2874", "QVX2961", "QVX4100", "ADF4351"}) {
        Show(device);
        const bool fraction = !pll().NumeratorName().empty();
        EXPECT_EQ(Find<QLineEdit>("txtFractNum(1)")->isVisible(), fraction) << device;
        EXPECT_EQ(Find<QWidget>("lblDoubler(1)")->isVisible(), !pll().OSC2X().empty()) << device;
        ExpectNoOverlap(device);
    }
}

TEST_F(PllViewTest, dividers_that_a_script_shows_find_room_on_the_way_back) {
    Show("QVX2874");
    program_->frm().guard.Run([&] {
        ShowSynthDiv(part(), 1);
        SetShowExtraDiv(part(), true, 1);
        SetShowManualDiv(part(), true, 1);
    });
    EXPECT_TRUE(Find<QLineEdit>("pllManualDivide(1)")->isVisible());
    ExpectNoOverlap("QVX2874 with all dividers");
}

TEST_F(PllViewTest, the_tab_key_walks_along_the_signal) {
    Show("QVX2874");
    QStringList order;
    QWidget* widget = Find<QLineEdit>("txtOsc(1)");
    const QWidget* canvas = widget->parentWidget();
    widget->setFocus();
    for (int step = 0; step < 20 && widget && widget->parentWidget() == canvas; ++step) {
        order << widget->objectName().section(QLatin1Char('('), 0, 0);
        QTest::keyClick(widget, Qt::Key_Tab);
        widget = QApplication::focusWidget();
    }
    order.removeAll(QStringLiteral("lblDoubler"));
    order.removeAll(QStringLiteral("lblNPrescale"));
    const QString walked = order.join(QLatin1Char(' '));
    EXPECT_TRUE(walked.startsWith(QLatin1String("txtOsc txtRCounter txtFpd")))
        << walked.toStdString();
    EXPECT_LT(order.indexOf("txtVCO"), order.indexOf("txtNCounter")) << walked.toStdString();
    EXPECT_LT(order.indexOf("txtNCounter"), order.indexOf("txtFractNum")) << walked.toStdString();
    EXPECT_GT(order.indexOf("txtVCO"), 0) << walked.toStdString();
}

TEST_F(PllViewTest, a_broken_limit_is_told_in_words_under_the_mouse) {
    Show("QVX2691");
    auto* box = Find<QLineEdit>("txtVCO(1)");
    pll().panel.lblVCO_Range.Tag = "1";
    Type(box, QString::fromStdString(pll().panel.txtVCO.Text));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(pll().panel.txtVCO.BackColor, colors::kRed);
    EXPECT_TRUE(box->toolTip().contains(QLatin1String("above the most")))
        << box->toolTip().toStdString();
}

TEST_F(PllViewTest, the_menu_that_leads_to_a_box_puts_the_focus_there_with_its_text_selected) {
    Show("QVX2692", 2);
    Entry("mnuVCOFreq")->trigger();
    auto* box = Find<QLineEdit>("txtVCO(2)");
    EXPECT_EQ(QApplication::focusWidget(), box);
    EXPECT_EQ(box->selectedText(), box->text());
}

} // namespace
} // namespace zentrel
