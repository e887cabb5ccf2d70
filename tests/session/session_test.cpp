#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/session/window.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using window::Folder;
using window::kSmallPart;
using window::Window;

constexpr const char* kCatalogue = "[MENU]\nCOUNT=1\nITEM00=QVX1\n"
                                   "[MENUSINGPLL]\nCOUNT=2\nITEM00=QVX2\nITEM01=QVX3 & co\n"
                                   "[MENUENGINEERING]\nCOUNT=1\n"
                                   "[RECENTPARTS]\nCOUNT=3\nITEM00=QVX1\nITEM01=QVX2\n";

class SessionStart : public testing::Test {
  protected:
    void Start() {
        folder.Write("zentrel.ini", kCatalogue);
        window.Start();
    }
    std::vector<std::string> Recent() {
        std::vector<std::string> captions;
        for (const MenuNode& item : frm.menu("mnuRecent").children)
            captions.push_back(item.Caption);
        return captions;
    }
    Folder folder;
    Window window{folder};
    FrmPart& frm = window.frm;
    cPart& part = window.part;
};

TEST_F(SessionStart, stands_without_a_device) {
    Start();
    EXPECT_TRUE(frm.Visible);
    EXPECT_EQ(part.ID, "");
    EXPECT_EQ(window.session.CommMode_Select, "None");
    EXPECT_EQ(part.RegisterLength(), 20);
    EXPECT_EQ(part.ControlLength, 2);
    EXPECT_EQ(window.session.raw_tab_tally, 6);
    EXPECT_FALSE(frm.tabPart.Page(kPllTemplateTab).Visible);
    EXPECT_FALSE(frm.tabPart.Page(kClkDistTemplateTab).Visible);
    EXPECT_TRUE(frm.tabPart.Page(kBurstTab).Visible);
    EXPECT_EQ(frm.StatusBar1.StatusBar_GetString(), "Zentrel 4");
    EXPECT_FALSE(frm.SimulatedBoard());
}

TEST_F(SessionStart, the_catalogue_fills_the_device_menus) {
    Start();
    EXPECT_TRUE(frm.menu("mnuQVXxxxx", 0).Visible);
    EXPECT_EQ(frm.menu("mnuSingQVXxxxx", 1).Caption, "QVX3 & co");
    EXPECT_TRUE(frm.menu("mnuSingQVXxxxx", 1).plainCaption);
    EXPECT_TRUE(frm.menu("mnuSingPLL").Visible);
    EXPECT_FALSE(frm.menu("mnuVCO").Visible);
    EXPECT_EQ(frm.menu("mnuEngineeringQVXxxxx", 0).Caption, "QVX");
    EXPECT_THAT(Recent(), ElementsAre("QVX1", "QVX2", "..........", "....", "...."));
}

TEST_F(SessionStart, without_a_catalogue_only_the_placeholders_stand) {
    window.Start();
    EXPECT_FALSE(frm.menu("mnuQVXxxxx", 0).Visible);
    EXPECT_FALSE(frm.menu("mnuClkDist").Visible);
    EXPECT_THAT(Recent(), ElementsAre("....", "....", "....", "....", "...."));
    frm.menu.Click("mnuRecent", 0);
    EXPECT_EQ(part.ID, "....");
}

TEST_F(SessionStart, choosing_a_device_loads_it_and_heads_the_recent_list) {
    Start();
    frm.menu.Click("mnuSingQVXxxxx", 1);
    EXPECT_EQ(part.ID, "QVX3 & co");
    EXPECT_TRUE(frm.burst.panel.cmdDelay.Visible);
    EXPECT_THAT(Recent(), ElementsAre("QVX3 & co", "QVX1", "QVX2", "....", "...."));
    EXPECT_THAT(folder.Read("zentrel.ini"), testing::Not(HasSubstr("ITEM00=QVX3")))
        << "the file lags one device behind";
    frm.menu.Click("mnuRecent", 2);
    EXPECT_EQ(part.ID, "QVX2");
    EXPECT_THAT(Recent(), ElementsAre("QVX3 & co", "QVX1", "QVX2", "....", "...."));
    EXPECT_THAT(folder.Read("zentrel.ini"), HasSubstr("[RECENTPARTS]\nCOUNT=3\nITEM00=QVX3 & co"));
}

TEST_F(SessionStart, a_device_of_the_plain_menu_leaves_the_burst_screen_as_it_was) {
    Start();
    frm.menu.Click("mnuQVXxxxx", 0);
    EXPECT_EQ(part.ID, "QVX1");
    EXPECT_FALSE(frm.burst.panel.cmdDelay.Visible);
    EXPECT_THAT(Recent(), ElementsAre("QVX1", "QVX2", "..........", "....", "...."));
}

TEST_F(SessionStart, the_old_devices_settings_are_saved_before_anything_is_taken_down) {
    folder.WritePart("QVX9001", kSmallPart);
    Start();
    window.Load("QVX9001");
    EXPECT_THAT(folder.Read("QVX9001.ini"), HasSubstr("VALUE00=256")) << "no device to save before";
    part.Registers("R0").SetValue(260);
    window.Load("QVX9001");
    EXPECT_THAT(folder.Read("QVX9001.ini"), HasSubstr("VALUE00=260"));
    EXPECT_EQ(part.Registers("R0").Value(), 260) << "and it is read anew";
    frm.menu.Click("mnuSaveDeviceSettings");
    part.Registers("R0").SetValue(300);
    window.Load("QVX0000");
    EXPECT_THAT(folder.Read("QVX9001.ini"), HasSubstr("VALUE00=260"));
}

TEST_F(SessionStart, exit_saves_and_ends) {
    int ended = 0;
    frm.links.Unloaded = [&] { ++ended; };
    Start();
    frm.menu.Click("mnuSingQVXxxxx", 0);
    frm.menu.Click("mnuExit");
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(frm.Visible);
    EXPECT_EQ(part.ID, "");
    EXPECT_THAT(folder.Read("zentrel.ini"), HasSubstr("ITEM00=QVX2"));
}

TEST_F(SessionStart, closing_while_a_burst_runs_stops_it_first) {
    Start();
    window.Load("QVX1");
    part.SetBurstRunning(true);
    frm.Unload();
    EXPECT_TRUE(frm.burst.run.StopRequested());
    EXPECT_TRUE(frm.Visible);
    EXPECT_EQ(part.ID, "QVX1");
    part.SetBurstRunning(false);
    frm.Unload();
    EXPECT_FALSE(frm.Visible);
}

TEST_F(SessionStart, the_window_stays_while_a_client_holds_the_program) {
    Start();
    window.Load("QVX1");
    window.session.bOLEServer = true;
    bool cancel = false;
    frm.Form_Unload(cancel);
    EXPECT_TRUE(cancel);
    EXPECT_EQ(part.ID, "QVX1");
}

TEST_F(SessionStart, another_device_waits_for_a_running_burst_to_end) {
    Start();
    window.Load("QVX1");
    frm.guard.Run([&] {
        part.SetBurstRunning(true);
        frm.guard.Run([&] { frm.menu.Click("mnuSingQVXxxxx", 0); });
        EXPECT_TRUE(frm.burst.run.StopRequested());
        frm.guard.ServePause();
        EXPECT_EQ(part.ID, "QVX1") << "the run still stands on the thread";
        part.SetBurstRunning(false);
    });
    EXPECT_EQ(part.ID, "QVX2");
}

TEST_F(SessionStart, the_simulated_board_is_kept_in_the_catalogue) {
    std::vector<bool> chosen;
    frm.links.SetBoard = [&](bool simulated) { chosen.push_back(simulated); };
    Start();
    frm.menu.Click("mnuSimulatedBoard");
    EXPECT_TRUE(frm.StatusBar1.badge.Visible);
    EXPECT_TRUE(frm.menu("mnuSimulatedBoard").Checked);
    EXPECT_THAT(folder.Read("zentrel.ini"), HasSubstr("BOARD=Simulated"));
    EXPECT_THAT(chosen, ElementsAre(true));

    Window next(folder);
    next.Start();
    EXPECT_TRUE(next.frm.SimulatedBoard());
}

TEST_F(SessionStart, scripts_read_their_own_keys_of_the_part_file) {
    Start();
    folder.WritePart("QVX9001", "[MINE]\nKEY=value\n");
    window.Load("QVX9001");
    EXPECT_EQ(frm.GetPrivateSetting4Script("mine", "key", "no"), "value");
    EXPECT_EQ(frm.GetPrivateSetting4Script("mine", "other", "no"), "no");
}

TEST_F(SessionStart, small_entries_of_the_menu_do_their_work) {
    folder.WritePart("QVX9001", kSmallPart);
    Start();
    frm.menu.Click("ResetPort");
    window.Load("QVX9001");
    EXPECT_TRUE(frm.bits.chkPrgmPin[0].Value);
    frm.menu.Click("ResetPort");
    EXPECT_FALSE(frm.bits.chkPrgmPin[0].Value);

    frm.menu.Click("mnuVCOFixed");
    EXPECT_TRUE(window.session.bVCOFixed);
    frm.menu.Click("mnuAutoReload");
    EXPECT_TRUE(frm.timers.tmrAutoReload.Enabled);
    frm.menu.Click("mnuStatus");
    EXPECT_THAT(window.boxes.shown.back(), HasSubstr("LPT Status = 0\r\nUSB Status = "));
    EXPECT_FALSE(frm.menu("mnuORVWireless").Enabled) << "nobody opens pages here";
}

// The guard.

TEST_F(SessionStart, an_event_that_fails_is_told_once_and_leaves_the_flags_as_they_were) {
    Start();
    int followed = 0;
    frm.guard.AfterEvent = [&] { ++followed; };
    EXPECT_FALSE(frm.guard.Run([&] {
        part.Updating = true;
        window.session.bDisplayUpdating = 1;
        part.readback_mode = true;
        part.Registers("nowhere").Value();
    }));
    EXPECT_THAT(window.boxes.shown, ElementsAre("There is no \"nowhere\" in Registers"));
    EXPECT_FALSE(part.Updating);
    EXPECT_EQ(window.session.bDisplayUpdating, 0);
    EXPECT_FALSE(part.readback_mode);
    EXPECT_EQ(followed, 1);
}

TEST_F(SessionStart, a_call_that_fails_goes_back_to_its_caller_without_a_box) {
    Start();
    EXPECT_THROW(frm.guard.RunCall([&] {
        part.Updating = true;
        throw NotFound("PLLs", "x");
    }),
                 NotFound);
    EXPECT_FALSE(part.Updating);
    EXPECT_TRUE(window.boxes.shown.empty());
}

TEST_F(SessionStart, what_comes_while_an_event_holds_the_thread_waits_its_turn) {
    Start();
    std::string order;
    frm.guard.Run([&] {
        frm.guard.RunWhenIdle([&] { order += "b"; });
        frm.guard.RunWhenIdle([&] {
            order += "c";
            frm.guard.RunWhenIdle([&] { order += "d"; });
        });
        order += "a";
    });
    EXPECT_EQ(order, "abcd");
    frm.guard.RunWhenIdle([&] { order += "e"; });
    EXPECT_EQ(order, "abcde");
}

TEST_F(SessionStart, a_window_that_fails_to_follow_once_leaves_nobody_waiting_for_good) {
    Start();
    int follows = 0, served = 0;
    frm.guard.AfterEvent = [&] {
        if (++follows == 2) throw std::runtime_error("no memory for a label");
    };
    const auto wait = [&] { frm.guard.RunWhenIdle([&] { ++served; }); };
    EXPECT_THROW(frm.guard.Run(wait), std::runtime_error);
    EXPECT_EQ(served, 1);
    frm.guard.Run(wait);
    EXPECT_EQ(served, 2);
}

TEST_F(SessionStart, the_pauses_of_a_burst_serve_ticks_and_nothing_that_must_wait) {
    Start();
    std::string order;
    frm.guard.Run([&] {
        frm.guard.RunWhenIdle([&] { order += "w"; });
        frm.guard.RunSoon([&] {
            order += "t";
            frm.guard.RunSoon([&] { order += "u"; });
        });
        frm.guard.ServePause();
        order += "-";
        frm.guard.ServePause();
        order += "-";
    });
    EXPECT_EQ(order, "t-u-w");
}

} // namespace
} // namespace zentrel
