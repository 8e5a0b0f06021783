#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>

namespace plotwell::soak {

// The soak's only source of chance. mt19937_64 gives the same numbers on
// every platform and the mapping below is the soak's own, so a seed means
// the same run wherever it is replayed.
class Rng {
public:
    explicit Rng(std::uint64_t seed) : m_engine(seed) {}

    std::uint64_t bits() { return m_engine(); }
    // 0 .. n - 1, for n > 0.
    int below(int n) { return int(bits() % std::uint64_t(n)); }
    // low .. high, both included.
    int between(int low, int high) { return low + below(high - low + 1); }
    // [0, 1)
    double unit() { return double(bits() >> 11) * 0x1p-53; }
    double range(double low, double high) { return low + (high - low) * unit(); }
    bool chance(double p) { return unit() < p; }

    template <typename T> T pick(std::initializer_list<T> items) { return items.begin()[below(int(items.size()))]; }

private:
    std::mt19937_64 m_engine;
};

// A seed for a part of a run, from the run's seed and the part's number.
inline std::uint64_t mixSeed(std::uint64_t seed, std::uint64_t part)
{
    std::uint64_t z = seed + 0x9e3779b97f4a7c15ULL * (part + 1);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
}

} // namespace plotwell::soak
