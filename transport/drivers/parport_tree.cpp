#include "transport/drivers/parport_tree.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <system_error>

namespace zentrel {
namespace {

std::string FirstLine(const std::filesystem::path& file) {
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    return line;
}

// The file holds the base address and that of the extended registers, in decimal.
std::uint16_t BaseAddress(const std::filesystem::path& port) {
    const std::string line = FirstLine(port / "base-addr");
    std::uint16_t base = 0;
    std::from_chars(line.data(), line.data() + line.size(), base);
    return base;
}

std::string Holder(const std::filesystem::path& port) {
    std::string holder = FirstLine(port / "devices" / "active");
    return holder == "none" ? std::string() : holder;
}

} // namespace

std::vector<ParallelPort> ListParallelPorts(const std::filesystem::path& tree) {
    std::vector<ParallelPort> ports;
    std::error_code failed;
    for (const auto& entry : std::filesystem::directory_iterator(tree, failed)) {
        const std::uint16_t base = BaseAddress(entry.path());
        if (base == 0) continue;
        ports.push_back({entry.path().filename().string(), base, Holder(entry.path())});
    }
    std::ranges::sort(ports, {}, &ParallelPort::name);
    return ports;
}

} // namespace zentrel
