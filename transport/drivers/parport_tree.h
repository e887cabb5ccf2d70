#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zentrel {

/// A parallel port as the kernel lists it.
struct ParallelPort {
    std::string name;       ///< "parport0".
    std::uint16_t base = 0; ///< Address of its data register.
    std::string holder;     ///< Who has it claimed, as "lp" or "ppdev0"; empty when nobody has.
};

/// The ports below `tree`, in the order of their names. A tree that isn't there has none; a port
/// without an address, such as one on a USB adapter, is left out.
std::vector<ParallelPort> ListParallelPorts(const std::filesystem::path& tree);

} // namespace zentrel
