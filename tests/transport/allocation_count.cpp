#include "allocation_count.h"

#include <cstdlib>
#include <new>

namespace {
long g_count = 0;
} // namespace

void* operator new(std::size_t size) {
    ++g_count;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace zentrel {

long AllocationCount() {
    return g_count;
}

} // namespace zentrel
