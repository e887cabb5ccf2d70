#include "device/upward.h"

#include <algorithm>

namespace zentrel {

std::vector<int> MessageBoxAnswers(int buttons) {
    constexpr int kSets = 0xF;
    switch (buttons & kSets) {
    case 1:
        return {kMsgOk, kMsgCancel};
    case 2:
        return {kMsgAbort, kMsgRetry, kMsgIgnore};
    case 3:
        return {kMsgYes, kMsgNo, kMsgCancel};
    case kMsgYesNo:
        return {kMsgYes, kMsgNo};
    case 5:
        return {kMsgRetry, kMsgCancel};
    default:
        return {kMsgOk};
    }
}

int MessageBoxDefault(int buttons) {
    const std::vector<int> answers = MessageBoxAnswers(buttons);
    const auto wanted = static_cast<std::size_t>((buttons >> 8) & 3);
    return answers[std::min(wanted, answers.size() - 1)];
}

Upward Upward::None() {
    static Displays displays;
    static Messages messages;
    static StatusLine status;
    static ScriptHooks hooks;
    static EventPause pause;
    static TabStrip tabs;
    static ScreenBuilder builder;
    static RouteObserver route;
    static MenuOptions options;
    static PortScreenView port;
    static LinkedBlocks blocks;
    static PartFileWriter partFile;
    static BurstPlayer burst;
    return {&displays, &messages, &status, &hooks,  &pause,    &tabs, &builder,
            &route,    &options,  &port,   &blocks, &partFile, &burst};
}

} // namespace zentrel
