#pragma once

namespace zentrel {

/// How often this test program has asked for memory so far.
long AllocationCount();

} // namespace zentrel
