#include "transport/auto_reload.h"

#include <gmock/gmock.h>

#include "rig.h"

namespace zentrel {
namespace {

TEST(AutoReload, the_period_is_read_when_enter_is_pressed) {
    struct Case {
        const char* typed;
        const char* becomes;
        int interval;
    };
    const Case cases[] = {
        {"30", "30", 30000},  {"2.5", "2.5", 2500}, {"65", "65", 65000}, {"70", "65", 65000},
        {"abc", "65", 65000}, {"", "65", 65000},    {"0", "1", 1000},    {"-4", "1", 1000},
        {"0,5", "65", 65000}, {"1E-9", "1E-9", 1},
    };
    Rig rig;
    for (const Case& c : cases) {
        TextBox box;
        box.Text = c.typed;
        Timer timer{false, kAutoReloadInterval};
        txtAutoReload_Enter(rig.part, box, timer);
        EXPECT_EQ(box.Text, c.becomes) << c.typed;
        EXPECT_EQ(timer.Interval, c.interval) << c.typed;
    }
}

TEST(AutoReload, the_options_toggle_unless_the_program_writes_the_screen) {
    Rig rig;
    MenuItem interval, changes;
    changes.Checked = true;
    Timer timer;
    mnuAutoReload_Click(rig.part, interval, timer);
    mnuAutoReloadChange_Click(rig.part, changes);
    EXPECT_TRUE(interval.Checked && timer.Enabled);
    EXPECT_FALSE(changes.Checked);
    const UpdatingScope updating(rig.part);
    TextBox box;
    mnuAutoReload_Click(rig.part, interval, timer);
    mnuAutoReloadChange_Click(rig.part, changes);
    txtAutoReload_Enter(rig.part, box, timer);
    EXPECT_TRUE(timer.Enabled);
    EXPECT_FALSE(changes.Checked);
    EXPECT_EQ(box.Text, "");
}

TEST(AutoReload, a_tick_loads_all_and_a_failing_script_goes_no_further) {
    struct Failing : ScriptHooks {
        bool HasModule(std::string_view) const override { return true; }
        std::int16_t RunWithText(std::string_view, std::string_view, std::string_view) override {
            throw ScriptFailure(11, "Division by zero");
        }
    } failing;
    Rig rig;
    tmrAutoReload_Timer(rig.part);
    EXPECT_EQ(rig.board().newest(), 3U);
    Upward upward = rig.part.upward();
    upward.hooks = &failing;
    rig.part.Connect(upward);
    EXPECT_NO_THROW(tmrAutoReload_Timer(rig.part));
    EXPECT_EQ(rig.board().newest(), 3U);
}

} // namespace
} // namespace zentrel
