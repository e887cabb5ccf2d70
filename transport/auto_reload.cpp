#include "transport/auto_reload.h"

#include <algorithm>
#include <exception>

#include "device/number_text.h"
#include "device/part.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {
constexpr double kLongest = 65;
constexpr double kShortest = 1;
constexpr double kMilliseconds = 1000;
} // namespace

AutoReloadPeriod ReadAutoReloadPeriod(std::string_view seconds) {
    std::string text(seconds);
    auto value = ParseNumber(seconds);
    if (!value || *value > kLongest) {
        value = kLongest;
        text = NumberToText(kLongest);
    } else if (*value <= 0) {
        value = kShortest;
        text = NumberToText(kShortest);
    }
    return {text, std::max(1, RoundToLong(*value * kMilliseconds))};
}

void txtAutoReload_Enter(cPart& part, TextBox& box, Timer& timer) {
    if (part.Updating) return;
    const AutoReloadPeriod period = ReadAutoReloadPeriod(box.Text);
    box.Text = period.text;
    timer.Interval = period.interval;
}

void mnuAutoReload_Click(cPart& part, MenuItem& entry, Timer& timer) {
    if (part.Updating) return;
    const UpdatingScope updating(part);
    entry.Checked = !entry.Checked;
    timer.Enabled = entry.Checked;
}

void mnuAutoReloadChange_Click(cPart& part, MenuItem& entry) {
    if (part.Updating) return;
    const UpdatingScope updating(part);
    entry.Checked = !entry.Checked;
}

void tmrAutoReload_Timer(cPart& part) {
    try {
        LoadAll(part);
    } catch (const std::exception&) {
        // The next tick tries again.
    }
}

} // namespace zentrel
