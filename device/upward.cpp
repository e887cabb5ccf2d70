#include "device/upward.h"

namespace zentrel {

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
