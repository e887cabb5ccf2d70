#include "device/word_journal.h"

#include <functional>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/errors.h"
#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;
using testing::ElementsAre;

/// Two registers, and a field on each that a failure may catch half-way.
struct Bench : Device {
    cRegister& one = Word("ONE", 0x11);
    cRegister& two = Word("TWO", 0x22);
    cPrgmBits& a = Field("A", "ONE", 0, 4);
    cPrgmBits& b = Field("B", "TWO", 0, 4);

    void ExpectUntouched(const char* what) {
        EXPECT_EQ(one.Value(), 0x11) << what;
        EXPECT_EQ(two.Value(), 0x22) << what;
        EXPECT_FALSE(one.changed()) << what;
        EXPECT_FALSE(two.changed()) << what;
    }
};

TEST(FailedOperation, leaves_every_word_and_flag_as_it_was) {
    const struct {
        const char* what;
        std::function<void(Bench&)> prepare, run;
    } cases[] = {
        {"a missing mirror behind two written words",
         [](Bench& d) { d.a.MirrorBits = "B", d.b.MirrorBits = "GONE"; },
         [](Bench& d) { d.a.SetValue(7); }},
        {"a missing higher part", [](Bench& d) { d.a.LinkedBits = "GONE"; },
         [](Bench& d) { d.a.SetBitValue(7); }},
        {"a higher part in a missing register",
         [](Bench& d) { d.a.LinkedBits = "B", d.b.Register = "NOWHERE"; },
         [](Bench& d) { d.a.SetBitValue(7); }},
        {"a missing limit behind the step", [](Bench& d) { d.a.GreaterBitName = "GONE"; },
         [](Bench& d) { d.a.Increment(); }},
        {"a missing limit behind the step down", [](Bench& d) { d.a.GreaterBitName = "GONE"; },
         [](Bench& d) { d.a.Decrement(); }},
        {"a missing mirror behind the toggle", [](Bench& d) { d.a.MirrorBits = "GONE"; },
         [](Bench& d) { d.a.ToggleBit(); }},
        {"a sign written before a missing step",
         [](Bench& d) {
             d.a.Polarity = true, d.a.PolarityPosition = 9, d.a.StepValueBitName = "GONE";
         },
         [](Bench& d) { d.a.SetValue(3); }},
        {"a code that is no number",
         [](Bench& d) {
             d.b.MirrorBits = "A";
             d.a.SetValueArray({1, 2, 3});
             d.a.SetStringArray({"0", "1", "x"});
         },
         [](Bench& d) { d.b.SetValue(3); }},
        {"a chain wider than its register can say", [](Bench& d) { d.a.LinkedBits = "B"; },
         [](Bench& d) { d.a.SetBitValue(1e12); }},
        {"fields that mirror each other",
         [](Bench& d) { d.a.MirrorBits = "B", d.b.MirrorBits = "A"; },
         [](Bench& d) { d.a.SetValue(7); }},
        {"fields that step each other",
         [](Bench& d) { d.a.MirrorBits = "B", d.b.MirrorBits = "A"; },
         [](Bench& d) { d.a.Increment(); }},
        {"a field that is its own higher part", [](Bench& d) { d.a.LinkedBits = "A"; },
         [](Bench& d) { d.a.SetBitValue(7); }},
        {"a field that limits itself", [](Bench& d) { d.a.StepValueBitName = "A"; },
         [](Bench& d) { d.a.SetValue(7); }},
    };
    for (const auto& c : cases) {
        Bench device;
        c.prepare(device);
        EXPECT_THROW(c.run(device), Error) << c.what;
        device.ExpectUntouched(c.what);
        device.b.MirrorBits.clear();
        device.b.Register = "TWO";
        device.b.SetBitValue(5);
        EXPECT_EQ(device.two.Value(), 0x25) << "the next operation works, after: " << c.what;
    }
}

TEST(FailedOperation, a_ring_is_told_as_error_28) {
    Bench device;
    device.a.MirrorBits = "B";
    device.b.MirrorBits = "A";
    try {
        device.a.ToggleBit();
        FAIL();
    } catch (const EndlessReference& ring) {
        EXPECT_EQ(ring.number(), 28);
    }
}

TEST(FailedOperation, a_word_that_was_sent_meanwhile_counts_as_changed) {
    Bench device;
    device.a.script_after_prog = "send";
    device.a.LinkedBits = "B";
    device.b.script_before_prog = "fail";
    device.hooks.body = [&](std::string_view procedure) {
        if (procedure == "fail") {
            EXPECT_TRUE(device.one.Change()) << "as a load does";
            (void)device.part.PrgmBits("GONE");
        }
    };
    EXPECT_THROW(device.a.SetBitValue(7), NotFound);
    EXPECT_EQ(device.one.Value(), 0x11);
    EXPECT_TRUE(device.one.Change()) << "the device holds the other word";
    EXPECT_FALSE(device.two.Change());
}

TEST(Hooks, run_around_the_bits_in_their_order) {
    Bench device;
    for (cPrgmBits* field : {&device.a, &device.b}) {
        field->script_name = "M" + field->ID;
        field->script_before_prog = "before";
        field->script_after_prog = "after";
    }
    std::vector<double> words;
    device.hooks.body = [&](std::string_view) {
        words.push_back(device.one.Value());
        words.push_back(device.two.Value());
    };
    device.a.LinkedBits = "B";
    device.a.SetBitValue(0x57);
    EXPECT_THAT(device.hooks.calls, ElementsAre("MA.before", "MB.before", "MB.after", "MA.after"));
    EXPECT_THAT(words, ElementsAre(0x11, 0x22, 0x17, 0x22, 0x17, 0x25, 0x17, 0x25));

    device.hooks.calls.clear();
    device.a.LinkedBits.clear();
    device.a.SetValue(3);
    EXPECT_TRUE(device.hooks.calls.empty()) << "a plain value goes past the hooks";
    device.a.SetStringArray({"0", "1", "2"});
    device.a.SetValue(1);
    device.b.Length = 1;
    device.b.ToggleBit();
    EXPECT_THAT(device.hooks.calls, ElementsAre("MA.before", "MA.after", "MB.before", "MB.after"));
}

TEST(Hooks, a_failing_script_leaves_what_was_written_before_it) {
    Bench device;
    device.a.LinkedBits = "B";
    device.b.script_after_prog = "after";
    device.hooks.body = [](std::string_view) { throw ScriptFailure(13, "Type mismatch"); };
    EXPECT_THROW(device.a.SetBitValue(0x57), ScriptFailure);
    EXPECT_EQ(device.one.Value(), 0x17);
    EXPECT_EQ(device.two.Value(), 0x25);
    EXPECT_TRUE(device.one.Change() && device.two.Change());
}

TEST(Hooks, what_a_script_fails_at_is_undone_alone_when_the_script_goes_on) {
    Bench device;
    cRegister& three = device.Word("THREE", 0x33);
    device.Field("C", "THREE", 0, 4).MirrorBits = "D";
    device.Field("D", "THREE", 4, 4).MirrorBits = "GONE";
    device.a.script_before_prog = "hook";
    device.hooks.body = [&](std::string_view) {
        device.part.PrgmBits("B").SetValue(9);
        EXPECT_THROW(device.part.PrgmBits("C").SetValue(1), NotFound);
        EXPECT_EQ(three.Value(), 0x33);
    };
    device.a.SetBitValue(7);
    EXPECT_EQ(device.one.Value(), 0x17);
    EXPECT_EQ(device.two.Value(), 0x29);
    EXPECT_FALSE(three.Change());
}

TEST(Hooks, a_failure_after_the_hook_takes_its_writes_back_too) {
    Bench device;
    device.a.script_before_prog = "hook";
    device.a.LinkedBits = "GONE";
    device.hooks.body = [&](std::string_view) {
        device.b.SetValue(9);
        device.b.SetValue(3);
        device.one.SetValue(0);
    };
    EXPECT_THROW(device.a.SetBitValue(7), NotFound);
    device.ExpectUntouched("hook");
}

TEST(Hooks, a_hook_that_writes_its_own_field_ends) {
    Bench device;
    device.a.script_before_prog = "again";
    device.hooks.body = [&](std::string_view) { device.a.SetBitValue(1); };
    EXPECT_THROW(device.a.SetBitValue(7), EndlessReference);
    device.ExpectUntouched("again");
}

TEST(Hooks, a_script_may_make_as_many_changes_as_it_likes) {
    Bench device;
    device.a.script_before_prog = "sweep";
    device.hooks.body = [&](std::string_view) {
        for (int i = 0; i < 30'000; ++i)
            device.b.SetValue(i % 16);
    };
    device.a.SetBitValue(7);
    EXPECT_EQ(device.two.Value(), 0x2F);
}

TEST(Hooks, a_script_may_load_another_device) {
    Bench device;
    device.a.script_before_prog = "change";
    device.a.MirrorBits = "B";
    device.hooks.body = [&](std::string_view procedure) {
        if (procedure != "change") return;
        device.part.ClearFieldsAndRegisters();
        device.Word("NEW", 0x77);
        device.Field("F", "NEW", 0, 4).SetValue(1);
    };
    EXPECT_THROW(device.a.Increment(), NotFound) << "the field is gone";
    EXPECT_EQ(device.part.Registers("NEW").Value(), 0x71) << "the new device stands";
}

/// A change of several operations on the bench's two words; `last` is how it ends.
bool Change(Bench& device, const std::function<bool()>& last) {
    return device.part.journal().Attempt("change", [&] {
        device.a.SetValue(7);
        device.b.SetValue(9);
        device.a.SetValue(8);
        return last();
    });
}

TEST(Attempt, stands_whole_or_not_at_all) {
    Bench device;
    EXPECT_FALSE(Change(device, [] { return false; }));
    device.ExpectUntouched("given up");
    EXPECT_THROW(Change(device, [&] { return device.part.PrgmBits("GONE").Value() > 0; }),
                 NotFound);
    device.ExpectUntouched("failed");
    EXPECT_TRUE(Change(device, [] { return true; }));
    EXPECT_EQ(device.one.Value(), 0x18);
    EXPECT_EQ(device.two.Value(), 0x29);
}

TEST(Attempt, goes_on_after_an_operation_in_it_failed) {
    Bench device;
    device.b.MirrorBits = "GONE";
    EXPECT_TRUE(device.part.journal().Attempt("change", [&] {
        device.a.SetValue(7);
        EXPECT_THROW(device.b.SetValue(9), NotFound);
        EXPECT_FALSE(device.part.journal().Attempt("inner", [&] {
            device.a.SetValue(2);
            return false;
        }));
        return true;
    }));
    EXPECT_EQ(device.one.Value(), 0x17);
    EXPECT_EQ(device.two.Value(), 0x22);
}

TEST(Attempt, that_a_script_ends_keeps_what_was_written) {
    Bench device;
    EXPECT_THROW(Change(device, []() -> bool { throw ScriptFailure(13, "Type mismatch"); }),
                 ScriptFailure);
    EXPECT_EQ(device.one.Value(), 0x18);
}

} // namespace
} // namespace zentrel
