#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "screens/about.h"
#include "screens/error_list.h"
#include "screens/menu_model.h"
#include "screens/status_bar.h"
#include "screens/tab_model.h"
#include "screens/timers.h"
#include "tests/screens/desk.h"

namespace zentrel {
namespace {

using testing::ElementsAre;

std::vector<std::string> Captions(const std::deque<MenuNode>& nodes) {
    std::vector<std::string> captions;
    for (const MenuNode& node : nodes)
        captions.push_back(node.Caption);
    return captions;
}

TEST(MenuBar, stands_in_its_order_with_shortcuts) {
    MenuModel menu;
    EXPECT_THAT(Captions(menu.Bar()),
                ElementsAre("&File", "&Keyboard Controls", "&Select Device", "&Options", "&Mode",
                            "&LPT/USB", "&Bench", "&Help"));
    EXPECT_THAT(Captions(menu("mnuStepFreq").children),
                ElementsAre("Increase N By 1", "Decrease N by 1", "Increase N by 10",
                            "Decrease N by 10", "Increase Fractional Numerator ",
                            "Decrease Fractional Numerator"));
    EXPECT_THAT(Captions(menu("mnuOptions").children),
                ElementsAre("Fixed VCO Frequency", "&AutoReload on Interval",
                            "AutoReload &with Changes", "Save Device Settings"));
    EXPECT_EQ(menu("mnuFcomp").shortcut, "Ctrl+C");
    EXPECT_EQ(menu("mnuDecFrac").shortcut, "F5");
    EXPECT_TRUE(menu("mnuAutoReloadChange").Checked);
    EXPECT_TRUE(menu("mnuSaveDeviceSettings").Checked);
    EXPECT_TRUE(menu.AutoReloadWithChanges());
    EXPECT_EQ(menu.ItemCount("mnuRecent"), 5);
    EXPECT_EQ(menu("mnuRecent", 4).Caption, "....");
    EXPECT_FALSE(menu("mnuMode", 0).Visible);
}

TEST(MenuBar, an_entry_without_an_action_is_disabled_and_one_with_it_acts) {
    MenuModel menu;
    EXPECT_FALSE(menu("mnuSave").Enabled);
    int clicks = 0;
    menu.Connect("mnuSave", [&] { ++clicks; });
    menu.Click("mnuSave");
    menu("mnuSave").Visible = false;
    menu.Click("mnuSave");
    EXPECT_EQ(clicks, 1);

    int index = -1;
    menu.ConnectArray("mnuMode", [&](int i) { index = i; });
    menu.MakeItem("mnuMode", 2).Visible = true;
    menu.Click("mnuMode", 2);
    EXPECT_EQ(index, 2);
    menu.Click("mnuMode", 1);
    EXPECT_EQ(index, 2) << "a hidden item can't be clicked";
    EXPECT_THROW(menu.Click("mnuMode", 3), NotFound);
}

TEST(Tabs, device_tabs_come_behind_the_six_fixed_ones) {
    TabModel tabs;
    EXPECT_EQ(tabs.TabCount(), 6);
    EXPECT_EQ(FindTab(tabs, "__pll__"), 4);
    EXPECT_EQ(FindTab(tabs, "nowhere"), -1);
    EXPECT_EQ(tabs.AddTab("Registers"), 6);
    EXPECT_EQ(tabs.SelectedTab(), 6);
    EXPECT_EQ(FindTab(tabs, "REGISTERS"), 6) << "the last of that caption";
    EXPECT_EQ(tabs.TabsPerRow(), 7);
    tabs.KeepTabs(6);
    EXPECT_EQ(tabs.SelectedTab(), 0);
    EXPECT_EQ(tabs.TabsPerRow(), 6);
    EXPECT_THROW(tabs.TabCaption(6), OutOfRange);
}

TEST(Tabs, a_selection_is_heard_once) {
    TabModel tabs;
    std::vector<int> heard;
    tabs.Selected = [&](int left, int now) { heard.insert(heard.end(), {left, now}); };
    tabs.SelectTab(2);
    tabs.SelectTab(2);
    tabs.SelectTab(99);
    EXPECT_THAT(heard, ElementsAre(0, 2));
}

TEST(StatusBarModel, shows_route_and_last_event) {
    StatusBar bar;
    bar.StatusBar_CommMode("USB");
    bar.StatusBar_SetString("Ready");
    EXPECT_EQ(bar.Panels[0].Text, "COMM Mode: USB");
    EXPECT_EQ(bar.StatusBar_GetString(), "Ready");
}

class Later : public Events {
  public:
    bool Run(const std::function<void()>& event) override {
        event();
        return true;
    }
    void RunWhenIdle(std::function<void()> event) override { waiting.push_back(event); }
    std::vector<std::function<void()>> waiting;
};

TEST(TimersOfTheWindow, ticks_that_pile_up_behind_a_message_box_are_one) {
    Timers timers;
    Later events;
    int loads = 0;
    timers.tmrAutoReload.Tick = [&] { ++loads; };
    timers.tmrAutoReload.Fire(events);
    EXPECT_TRUE(events.waiting.empty()) << "off at the start";
    timers.tmrAutoReload.Enabled = true;
    for (int i = 0; i < 5; ++i)
        timers.tmrAutoReload.Fire(events);
    ASSERT_EQ(events.waiting.size(), 1U);
    events.waiting[0]();
    EXPECT_EQ(loads, 1);
    timers.tmrAutoReload.Fire(events);
    EXPECT_EQ(events.waiting.size(), 2U);
}

TEST(ErrorLog, an_error_is_dated_and_told_in_the_status_line) {
    desk::Desk desk;
    AddErrorAt(desk.session, desk.recorder, desk.recorder, "R5 didn't lock", "1/2/26 10:11:12");
    ASSERT_EQ(desk.session.logged_errors.size(), 1U);
    EXPECT_EQ(desk.session.logged_errors[0], "------------------------\r\n1/2/26 10:11:12\r\n"
                                             "R5 didn't lock\r\n------------------------");
    EXPECT_EQ(desk.recorder.status, "R5 didn't lock");
    EXPECT_TRUE(desk.recorder.shown.empty());
    desk.session.msgbox_errors = true;
    AddError(desk.session, desk.recorder, desk.recorder, "again");
    EXPECT_THAT(desk.recorder.shown, ElementsAre("again"));
}

TEST(ErrorLog, the_dialog_appends_while_open_and_starts_empty_after_ok) {
    desk::Desk desk;
    ErrorList dialog(desk.session);
    dialog.Show();
    EXPECT_EQ(dialog.Text1.Text, "");
    desk.session.logged_errors = {"one", "two"};
    dialog.Show();
    EXPECT_EQ(dialog.Text1.Text, "one\r\n\r\ntwo\r\n\r\n");
    dialog.Show();
    EXPECT_EQ(dialog.Text1.Text, "one\r\n\r\ntwo\r\n\r\none\r\n\r\ntwo\r\n\r\n");
    dialog.ClickOk();
    EXPECT_EQ(desk.session.logged_errors.size(), 2U);
    dialog.Show();
    EXPECT_EQ(dialog.Text1.Text, "one\r\n\r\ntwo\r\n\r\n");
    dialog.ClickClear();
    EXPECT_TRUE(dialog.Open);
    EXPECT_TRUE(desk.session.logged_errors.empty());
}

TEST(About, tells_versions_and_on_demand_the_history) {
    Session session;
    AboutDialog about(session);
    about.Show();
    EXPECT_EQ(about.lblPrgmVersion.Caption, "Program Version:   4.2.1");
    EXPECT_EQ(about.lblPartVersion.Caption, "Part File Version: ");
    about.ClickVersionInfo();
    about.ClickVersionInfo();
    EXPECT_EQ(about.Height, 4500);
    EXPECT_THAT(about.Text1.Text, testing::StartsWith("---- Ver 4.0.40 ----\r\nUpgraded visuals"));
    EXPECT_THAT(about.Text1.Text, testing::HasSubstr("on PLL Screen---- Ver 2.1.3 ----"));
    EXPECT_THAT(about.Text1.Text, testing::EndsWith("Fix Data Entry"));
    about.Close();
    session.txtINIVersion = "b3";
    about.Show();
    EXPECT_EQ(about.lblPartVersion.Caption, "Part File Version: b3");
    EXPECT_EQ(about.Text1.Text, "");
}

} // namespace
} // namespace zentrel
