#pragma once

#include <cstdint>

namespace SampleMarket {

// splitmix64: tiny, fast and fully specified, unlike the standard library's
// distributions, whose output differs from one implementation to the next.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t next()
    {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    double uniform() { return double(next() >> 11) * 0x1.0p-53; }
    double uniform(double low, double high) { return low + (high - low) * uniform(); }
    bool chance(double probability) { return uniform() < probability; }
    int below(int bound) { return int(((next() >> 32) * std::uint64_t(bound)) >> 32); }
    double sign() { return (next() >> 63) ? 1.0 : -1.0; }
    // Near enough to a standard normal, built from sums alone: the last bits of
    // log and cos differ between C libraries, and the bytes must not.
    double normal() { return (uniform() + uniform() + uniform() + uniform() - 2.0) * 1.7320508075688772; }

private:
    std::uint64_t m_state;
};

} // namespace SampleMarket
