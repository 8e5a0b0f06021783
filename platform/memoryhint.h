#pragma once

#include <cstddef>

namespace plotwell {

// Tells the system that a large block of memory is about to be filled from
// start to end, so that it may back it with large pages. Filling a block of
// small pages takes a page fault for every 4 KB, which on some systems costs
// as much as reading the records that go into it. Does nothing where the
// system has no such hint, or for blocks too small to gain from it.
void adviseLargeFill(void* begin, std::size_t bytes);

} // namespace plotwell
