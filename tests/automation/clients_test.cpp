#include "automation/application/clients.h"

#include <gmock/gmock.h>

#include "automation/application/call_door.h"
#include "burst/burst_list.h"
#include "tests/automation/client_desk.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ClientsTest : ::testing::Test {
    ClientsTest() {
        desk.between.guard = &frm.guard;
        frm.links.Unloaded = [this] { ++unloaded; };
    }
    ClientDesk desk;
    FrmPart& frm = *desk.frm;
    Clients clients{frm};
    CallDoor door{frm};
    int unloaded = 0;
    std::vector<std::string> served;

    void Call(const std::string& operation) {
        door.Admit(
            TurnOf(operation), [this, operation] { served.push_back(operation); },
            [](std::exception_ptr) {});
    }
};

TEST_F(ClientsTest, the_first_object_brings_the_window_up_and_the_last_ones_end_unloads_it) {
    frm.Visible = false;
    const int a = clients.Create("bench");
    const int b = clients.Create("plotter");
    EXPECT_NE(a, b);
    EXPECT_TRUE(frm.Visible);
    frm.Unload();
    EXPECT_TRUE(frm.Visible) << "the engineer closes it while a client holds it";
    EXPECT_FALSE(clients.Release("plotter", a)) << "not its own";
    EXPECT_TRUE(clients.Release("bench", a));
    EXPECT_FALSE(clients.Release("bench", a)) << "not twice";
    EXPECT_EQ(unloaded, 0);
    EXPECT_TRUE(desk.session.bOLEServer);
    EXPECT_TRUE(clients.Release("plotter", b));
    EXPECT_EQ(unloaded, 1);
    EXPECT_FALSE(desk.session.bOLEServer);
    EXPECT_FALSE(frm.Visible);
}

TEST_F(ClientsTest, whoever_leaves_the_bus_releases_all_that_it_held) {
    clients.Leave("passer-by");
    EXPECT_EQ(unloaded, 0) << "a caller that held nothing closes nothing";
    clients.Create("bench");
    clients.Create("bench");
    clients.Leave("passer-by");
    EXPECT_EQ(unloaded, 0);
    clients.Leave("bench");
    EXPECT_EQ(unloaded, 1);
}

TEST_F(ClientsTest, the_end_of_the_transport_itself_leaves_the_window_to_the_engineer) {
    const int object = clients.Create("bench");
    clients.Forget();
    EXPECT_FALSE(clients.Holds(object));
    EXPECT_TRUE(frm.Visible);
    frm.Unload();
    EXPECT_EQ(unloaded, 1) << "and the engineer can close it";
}

TEST_F(ClientsTest, the_last_end_stops_a_running_burst_and_a_newcomer_keeps_the_window) {
    desk.Select("QVX2874");
    AddBurstCommand(desk.part, "R0", 0);
    for (const bool newcomer : {true, false}) {
        clients.Create("bench");
        desk.between.passes = 0;
        desk.between.act = [&](int pass) {
            if (pass != 2) return;
            clients.Leave("bench");
            EXPECT_EQ(unloaded, 0) << "the run still holds the thread";
            if (newcomer) clients.Create("plotter");
        };
        frm.guard.RunCall([&] { desk.application.StartBurst(); });
        EXPECT_EQ(desk.between.passes, 2);
        EXPECT_EQ(unloaded, newcomer ? 0 : 1);
        clients.Forget();
    }
}

TEST_F(ClientsTest, a_burst_serves_what_reads_or_stops_and_the_rest_waits_for_its_end) {
    desk.Select("QVX2874");
    AddBurstCommand(desk.part, "R0", 0);
    desk.between.act = [&](int pass) {
        if (pass == 1) {
            for (const char* operation : {"SetPrgmBits", "GetPrgmBits", "LoadPart", "StartBurst",
                                          "GetVCOFrequency", "Maximize"})
                Call(operation);
        }
        if (pass == 2) {
            EXPECT_THAT(served, ElementsAre("GetPrgmBits", "StartBurst", "GetVCOFrequency"));
            desk.application.StopBurst();
        }
    };
    frm.guard.RunCall([&] { desk.application.StartBurst(); });
    EXPECT_THAT(served, ElementsAre("GetPrgmBits", "StartBurst", "GetVCOFrequency", "SetPrgmBits",
                                    "LoadPart", "Maximize"));
}

TEST_F(ClientsTest, another_part_stops_the_burst_and_follows_its_end) {
    desk.Select("QVX2874");
    AddBurstCommand(desk.part, "R0", 0);
    desk.between.act = [&](int pass) {
        if (pass == 2) {
            door.Admit(
                TurnOf("SelectPart"), [&] { desk.application.SelectPart("QVX2691"); },
                [](std::exception_ptr failure) { EXPECT_EQ(failure, nullptr); });
        }
        EXPECT_EQ(desk.part.ID, "QVX2874");
    };
    frm.guard.RunCall([&] { desk.application.StartBurst(); });
    EXPECT_EQ(desk.between.passes, 2);
    EXPECT_EQ(desk.part.ID, "QVX2691");
}

TEST_F(ClientsTest, a_message_box_holds_every_call_up_and_each_hears_of_its_own_failure) {
    std::string failed;
    frm.guard.Run([&] {
        Call("GetPrgmBits");
        Call("SetPrgmBits");
        door.Admit(
            Turn::Idle, [] { throw NotFound("PLLs", "PLL9"); },
            [&](const std::exception_ptr& failure) {
                try {
                    std::rethrow_exception(failure);
                } catch (const NotFound& missing) {
                    failed = missing.key();
                }
            });
        EXPECT_THAT(served, IsEmpty());
    });
    EXPECT_THAT(served, ElementsAre("GetPrgmBits", "SetPrgmBits"));
    EXPECT_EQ(failed, "PLL9");
    EXPECT_THAT(desk.messages.shown, IsEmpty()) << "a call's failure is the caller's alone";
}

} // namespace
} // namespace zentrel
