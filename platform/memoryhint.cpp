#include "platform/memoryhint.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace plotwell {

void adviseLargeFill(void* begin, std::size_t bytes)
{
#if defined(MADV_HUGEPAGE)
    // Large pages are 2 MB; only whole ones inside the block can be used.
    constexpr std::size_t kWorthIt = std::size_t(4) << 20;
    constexpr std::uintptr_t kPage = 4096;
    if (bytes < kWorthIt)
        return;
    const auto first = (reinterpret_cast<std::uintptr_t>(begin) + kPage - 1) & ~(kPage - 1);
    const auto end = reinterpret_cast<std::uintptr_t>(begin) + bytes;
    // Only a hint: where large pages are switched off it fails, and nothing changes.
    madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
#else
    (void)begin;
    (void)bytes;
#endif
}

} // namespace plotwell
