#pragma once

#include <string>

namespace zentrel {

class cClkDist;

/// What can lie outside the signal path of a block.
enum class ClockItem {
    VcoDivider,
    VcoInput,
    ExternalInput,
    ReferenceInput,
    ChannelDivider,
    ChannelDelay,
    ChannelOutput,
};

/// Why an item has no part in what the block puts out, in words for a tooltip; empty when it has.
/// It goes by the elements as the last refresh left them. `channel` is for the channel items.
std::string WhyOutOfPath(const cClkDist& block, ClockItem item, int channel = 0);

} // namespace zentrel
