#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>

#include "tests/view/odd_devices.h"
#include "tests/view/window_fixture.h"

namespace zentrel {
namespace {

/// Devices that go to the limits, in windows of all sizes: nothing lies on anything else, and
/// everything can be scrolled into view.
class OddDevicesTest : public WindowTest, public ::testing::WithParamInterface<const char*> {
  protected:
    void SetUp() override {
        WindowTest::SetUp();
        odd::WriteDevices(folder_.path().toStdString());
    }
    void Load(const std::string& device) {
        program_->frm().guard.Run([&] { program_->frm().SelectDevice(device, {}); });
        ASSERT_EQ(part().ID, device);
    }
    void Resize(const QSize& size) {
        program_->window().resize(size);
        QCoreApplication::processEvents();
    }

    // A page's own widgets: those that hold no others but their own parts.
    static bool Holds(const QWidget& widget) {
        return !widget
                    .findChildren<QWidget*>(QRegularExpression(QStringLiteral("\\(")),
                                            Qt::FindDirectChildrenOnly)
                    .isEmpty() &&
               !qobject_cast<const QLineEdit*>(&widget);
    }
    static void ExpectApart(const QWidget& parent) {
        const auto children = parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        for (const QWidget* one : children) {
            if (!one->isVisible()) continue;
            EXPECT_FALSE(one->geometry().isEmpty()) << Name(*one);
            EXPECT_TRUE(parent.rect().contains(one->geometry()))
                << Name(*one) << " leaves " << Name(parent);
            for (const QWidget* other : children) {
                if (other == one) break;
                EXPECT_FALSE(other->isVisible() && other->geometry().intersects(one->geometry()))
                    << Name(*one) << " lies on " << Name(*other);
            }
            if (Holds(*one)) ExpectApart(*one);
        }
    }
    static std::string Name(const QWidget& widget) {
        return widget.objectName().isEmpty() ? widget.metaObject()->className()
                                             : widget.objectName().toStdString();
    }
    // Whatever the page holds lies within what its bars reach.
    static void ExpectInReach(const QScrollArea& page) {
        const QSize room = page.viewport()->size();
        const QSize content = page.widget()->size();
        EXPECT_GE(room.width() + page.horizontalScrollBar()->maximum(), content.width());
        EXPECT_GE(room.height() + page.verticalScrollBar()->maximum(), content.height());
        EXPECT_GT(room.width(), 100);
        EXPECT_GT(room.height(), 40);
    }
    void ExpectGoodPages() {
        const auto& tabs = program_->frm().tabPart;
        for (int tab = 0; tab < tabs.TabCount(); ++tab) {
            if (!tabs.Page(tab).Visible) continue;
            SCOPED_TRACE("tab " + std::to_string(tab) + ", " + tabs.TabCaption(tab));
            ShowTab(tab);
            QCoreApplication::processEvents();
            for (const auto* page : program_->window().findChildren<QScrollArea*>()) {
                if (!page->isVisible() || !page->widget()) continue;
                ExpectApart(*page->widget());
                ExpectInReach(*page);
            }
        }
    }
};

TEST_P(OddDevicesTest, nothing_overlaps_and_all_is_in_reach_at_any_size_of_window) {
    Load(GetParam());
    for (const QSize size :
         {QSize(641, 427), QSize(641, 2000), QSize(1264, 800), QSize(3840, 2160)}) {
        SCOPED_TRACE(std::to_string(size.width()) + " by " + std::to_string(size.height()));
        Resize(size);
        EXPECT_EQ(program_->window().size(), size);
        ExpectGoodPages();
    }
}

INSTANTIATE_TEST_SUITE_P(Devices, OddDevicesTest,
                         ::testing::Values("ODD-CHANNELS", "ODD-MANY", "ODD-NAMES", "ODD-BARE",
                                           "ODD-WORDS", "QVX4100", "QVX2961"));

TEST_F(OddDevicesTest, a_name_stands_whole_on_the_strip_and_its_tab_can_be_scrolled_to) {
    Load(odd::kMany);
    Resize({641, 427});
    auto* bar = program_->window().findChild<QTabBar*>();
    const int last = bar->count() - 1;
    EXPECT_EQ(bar->tabText(last), QStringLiteral("Synthesiser 12"));
    const int needed = bar->fontMetrics().horizontalAdvance(bar->tabText(last));
    EXPECT_GE(bar->tabRect(last).width(), needed);
    ShowTab(last);
    QCoreApplication::processEvents();
    EXPECT_TRUE(bar->rect().contains(bar->tabRect(last).center()));
}

TEST_F(OddDevicesTest, tabs_of_the_same_caption_show_each_their_own_block) {
    Load(odd::kNames);
    auto* bar = program_->window().findChild<QTabBar*>();
    QList<int> twins;
    for (int tab = 0; tab < bar->count(); ++tab)
        if (bar->tabText(tab) == QStringLiteral("Twin")) twins << tab;
    ASSERT_EQ(twins.size(), 2);
    bar->setCurrentIndex(twins[0]);
    EXPECT_TRUE(Find("txtVCO(2)")->isVisible());
    bar->setCurrentIndex(twins[1]);
    EXPECT_FALSE(Find("txtVCO(2)")->isVisible());
    EXPECT_TRUE(Find("txtCLK_VCOfreq(1)")->isVisible());
}

TEST_F(OddDevicesTest, a_message_while_a_device_loads_leaves_the_board_its_size) {
    auto* dock = Find("dockBoard");
    const int before = dock->height();
    program_->boxes().SetAttended(true);
    QTimer answer;
    int boxes = 0;
    QObject::connect(&answer, &QTimer::timeout, [&boxes] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        ++boxes;
        QTest::qWait(20); // The window under it comes to rest.
        box->accept();
    });
    answer.start(1);
    Load(odd::kNames); // Several things are missing from it.
    EXPECT_GT(boxes, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(dock->height(), before);
}

TEST_F(OddDevicesTest, a_description_of_ten_thousand_characters_scrolls_above_its_button) {
    Load(odd::kNames);
    program_->boxes().SetAttended(true);
    QSize size;
    QTimer::singleShot(0, [&size] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        size = box->size();
        EXPECT_GT(box->findChild<QPlainTextEdit*>()->toPlainText().size(), 10'000 - 1);
        box->accept();
    });
    program_->frm().guard.Run([this] { program_->frm().bits.HelpOnBit(0); });
    EXPECT_LT(size.height(), 600);
    EXPECT_LT(size.width(), 800);
}

} // namespace
} // namespace zentrel
