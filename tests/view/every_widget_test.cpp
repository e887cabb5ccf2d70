#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabBar>
#include <QToolTip>
#include <QWheelEvent>

#include "screens/qt/entry_box.h"
#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

/// What holds for each widget of the window, whatever the tab: walked on two devices that between
/// them have all kinds.
class EveryWidgetTest : public WindowTest, public ::testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        Select(GetParam());
        program_->window().resize(1600, 1600);
    }
    void OnEachTab(const std::function<void()>& check) {
        const auto& tabs = program_->frm().tabPart;
        for (int tab = 0; tab < tabs.TabCount(); ++tab) {
            if (!tabs.Page(tab).Visible) continue;
            SCOPED_TRACE(tabs.TabCaption(tab));
            ShowTab(tab);
            QCoreApplication::processEvents();
            check();
        }
    }
    template<typename W = QWidget>
    QList<W*> Shown(const char* pattern = "") {
        QList<W*> shown =
            program_->window().findChildren<W*>(QRegularExpression(QLatin1String(pattern)));
        shown.removeIf([](const W* widget) { return !widget->isVisible(); });
        return shown;
    }
    static std::string Name(const QWidget& widget) {
        return widget.objectName().isEmpty() ? widget.metaObject()->className()
                                             : widget.objectName().toStdString();
    }
    static QString TipOf(QWidget& widget) {
        // A tip stays for a while after it was hidden: one letter stands for none.
        QToolTip::showText(widget.mapToGlobal(QPoint(0, 0)), QStringLiteral("-"), &widget);
        QHelpEvent event(QEvent::ToolTip, {4, 4}, widget.mapToGlobal(QPoint(4, 4)));
        QApplication::sendEvent(&widget, &event);
        return QToolTip::text();
    }
    std::vector<BitWord> Words() {
        std::vector<BitWord> words;
        for (int i = 1; i <= part().Registers.Count(); ++i)
            words.push_back(Register(i).word());
        return words;
    }
};

TEST_P(EveryWidgetTest, whatever_the_tab_key_visits_has_a_name_for_a_screen_reader) {
    OnEachTab([this] {
        for (QWidget* widget : Shown()) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy()) continue;
            const auto* spoken = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(spoken, nullptr) << Name(*widget);
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << Name(*widget);
        }
    });
}

TEST_P(EveryWidgetTest, fields_registers_and_diagram_elements_explain_themselves) {
    OnEachTab([this] {
        for (QWidget* widget : Shown(
                 "^(chkPrgmBit|lblCntr|txtCntrVal|lblCmbBits|cmbBits|lblRegName|txtRegBits|txtOsc|"
                 "txtFpd|txtVCO|txtRCounter|txtNCounter|txtFract|lblDoubler|lblNPrescale|lblPDPol|"
                 "lblCP|txtOUT|txtCLK|cbClk|CB_CLK|CLKtxt_InputDiv\\(|CLK_VCODIV|chDivText|divCB|"
                 "clkdist_[RC])"))
            EXPECT_GT(TipOf(*widget).size(), 5) << Name(*widget);
    });
}

TEST_P(EveryWidgetTest, the_wheel_over_what_has_no_focus_changes_nothing_and_scrolls_the_page) {
    const std::vector<BitWord> before = Words();
    OnEachTab([this] {
        program_->window().setFocus();
        for (QWidget* widget : Shown("\\(")) {
            if (widget->hasFocus()) continue;
            QWheelEvent turn({4, 4}, widget->mapToGlobal(QPointF(4, 4)), {}, {0, -120},
                             Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            turn.ignore();
            QCoreApplication::sendEvent(widget, &turn);
            EXPECT_FALSE(turn.isAccepted()) << Name(*widget);
        }
    });
    EXPECT_TRUE(Words() == before);
}

TEST_P(EveryWidgetTest, esc_puts_back_what_the_model_has_in_every_box) {
    OnEachTab([this] {
        for (view::EntryBox* box : Shown<view::EntryBox>()) {
            if (!box->isEnabled() || box->isReadOnly()) continue;
            const QString before = box->text();
            box->setFocus();
            box->selectAll();
            QTest::keyClicks(box, QStringLiteral("12345"));
            EXPECT_TRUE(box->typed()) << Name(*box);
            QTest::keyClick(box, Qt::Key_Escape);
            EXPECT_EQ(box->text(), before) << Name(*box);
        }
    });
}

TEST_P(EveryWidgetTest, the_tab_key_comes_to_every_element_that_can_be_used) {
    OnEachTab([this] {
        QSet<QWidget*> wanted;
        for (QWidget* widget : Shown("\\(")) {
            const bool entry = qobject_cast<QLineEdit*>(widget) ||
                               qobject_cast<QComboBox*>(widget) ||
                               qobject_cast<QAbstractButton*>(widget);
            if (entry && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus))
                wanted << widget;
        }
        QWidget* first = program_->window().findChild<QTabBar*>();
        QWidget* last = first;
        first->setFocus(Qt::TabFocusReason);
        for (int step = 0; step < 2000; ++step) {
            QWidget* now = program_->window().focusWidget();
            ASSERT_NE(now, nullptr);
            wanted.remove(now);
            QTest::keyClick(now, Qt::Key_Tab);
            if (program_->window().focusWidget() == first) break;
            last = program_->window().focusWidget();
        }
        EXPECT_TRUE(Find("dockBoard")->isAncestorOf(last)) << Name(*last);
        for (const QWidget* left : wanted)
            ADD_FAILURE() << Name(*left) << " is never visited";
    });
}

INSTANTIATE_TEST_SUITE_P(Devices, EveryWidgetTest, ::testing::Values("QVX4100", "QVX2961"));

using MenuTest = WindowTest;

TEST_F(MenuTest, every_entry_is_live_once_a_device_is_loaded) {
    Select("QVX4100");
    for (const QAction* action : program_->window().findChildren<QAction*>()) {
        if (!action->isVisible() || action->objectName().isEmpty()) continue;
        EXPECT_TRUE(action->isEnabled()) << action->objectName().toStdString();
    }
}

} // namespace
} // namespace zentrel
