#include "screens/bits_flow.h"

#include <gtest/gtest.h>

namespace zentrel {
namespace {

using Kind = BitsFlow::Kind;

TEST(BitsFlow, a_frame_starts_at_its_first_row) {
    const BitsFlow flow;
    EXPECT_EQ(flow.frames()[0].Tag(), "3932400");
    EXPECT_EQ(flow.frames()[0].caption, "Program Bits");
}

TEST(BitsFlow, a_frame_of_many_columns_has_the_tag_of_its_last_one) {
    BitsSizes sizes;
    sizes.windowHeight = 2000; // Two rows a column.
    BitsFlow flow(sizes);
    while (flow.frames()[0].x < 40'000)
        flow.Add(Kind::Bit, "");
    const auto& [x, y] = std::tie(flow.frames()[0].x, flow.frames()[0].y);
    EXPECT_EQ(std::stoll(flow.frames()[0].Tag()), 65536LL * x + y);
}

TEST(BitsFlow, without_groups_all_rows_stand_in_the_first_frame) {
    BitsFlow flow;
    flow.Add(Kind::Bit, "");
    flow.Add(Kind::Counter, "");
    ASSERT_EQ(flow.frames().size(), 1U);
    EXPECT_EQ(flow.frames()[0].caption, "Program Bits");
}

TEST(BitsFlow, the_first_group_names_the_first_frame_and_the_second_stands_below_it) {
    BitsFlow flow;
    flow.Add(Kind::Bit, "Dividers");
    const BitsFlow::Place second = flow.Add(Kind::Bit, "Outputs");
    ASSERT_EQ(flow.frames().size(), 2U);
    const auto& [dividers, outputs] = std::tie(flow.frames()[0], flow.frames()[1]);
    EXPECT_EQ(dividers.caption, "Dividers");
    EXPECT_EQ(second.frame, 1);
    EXPECT_EQ(outputs.left, dividers.left);
    EXPECT_EQ(outputs.top, dividers.top + dividers.height + 120);
    EXPECT_EQ(flow.Add(Kind::Bit, "Dividers").frame, 2) << "only the last frame is looked at";
}

TEST(BitsFlow, rows_go_down_by_the_sizes_of_their_elements) {
    BitsSizes sizes;
    sizes.checkBoxHeight = 300;
    sizes.labelHeight = 200;
    sizes.boxHeight = 280;
    sizes.boxWidth = 1500;
    BitsFlow flow(sizes);
    EXPECT_EQ(flow.Add(Kind::Bit, "").box.top, 240);
    const BitsFlow::Place counter = flow.Add(Kind::Counter, "");
    EXPECT_EQ(counter.label.top, 240 + 300 + 60);
    EXPECT_EQ(counter.label.left, 120);
    EXPECT_EQ(counter.box.top, counter.label.top + 200 + 60);
    EXPECT_EQ(counter.spinner.left, 60 + 1500);
    EXPECT_EQ(flow.frames()[0].y, counter.box.top + 280 + 120);
    EXPECT_EQ(flow.frames()[0].height, flow.frames()[0].y);
}

TEST(BitsFlow, the_row_that_no_longer_fits_opens_a_column) {
    BitsSizes sizes;
    sizes.checkBoxHeight = 240;
    // Three rows begin at 240, 540, 840 and need 360 each: the fourth would end at 1500.
    sizes.windowHeight = 1000 + 1500;
    BitsFlow flow(sizes);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(flow.Add(Kind::Bit, "").box.left, 60);
    const BitsFlow::Place fourth = flow.Add(Kind::Bit, "");
    EXPECT_EQ(fourth.box.left, 60 + 2340);
    EXPECT_EQ(fourth.box.top, 240);
    EXPECT_EQ(flow.frames()[0].width, 2300 + 2350);

    sizes.windowHeight += 1;
    BitsFlow higher(sizes);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(higher.Add(Kind::Bit, "").box.left, 60) << "one twip more and it fits";
}

TEST(BitsFlow, a_frame_without_room_below_starts_a_column_of_frames) {
    BitsSizes sizes;
    sizes.windowHeight = 1000 + 360 + 800 + 800 + 240 - 1;
    BitsFlow flow(sizes);
    flow.Add(Kind::Bit, "A");
    flow.Add(Kind::Bit, "B");
    const auto& frames = flow.frames();
    EXPECT_EQ(frames[1].top, frames[0].top);
    EXPECT_EQ(frames[1].left, frames[0].left + frames[0].width + 240);
}

TEST(BitsFlow, the_pins_stand_right_of_all_frames_and_tell_the_overflow) {
    BitsSizes sizes;
    sizes.tabWidth = 5000;
    sizes.windowHeight = 2400;
    BitsFlow flow(sizes);
    flow.Add(Kind::Bit, "A");
    EXPECT_EQ(flow.Overflow(), 0);
    for (int i = 0; i < 20; ++i)
        flow.Add(Kind::Bit, "B");
    const BitsFlow::Frame& last = flow.frames().back();
    EXPECT_EQ(flow.pins().left, last.left + 4700);
    EXPECT_EQ(flow.Overflow(), flow.pins().left + flow.pins().width + 120 - 5000);
}

TEST(BitsFlow, pins_stand_below_each_other) {
    BitsFlow flow;
    const int first = flow.AddPin();
    const int second = flow.AddPin();
    EXPECT_EQ(second, first + 255 + 60);
    EXPECT_EQ(flow.pins().height, second + 255 + 120);
}

} // namespace
} // namespace zentrel
