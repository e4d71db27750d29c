// Numbers that look random and are the same in every run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quillon::test {

class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t Next() {
        m_state += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return mixed ^ (mixed >> 31);
    }
    // 0 to limit - 1; 0 when the limit is 0.
    std::size_t Below(std::size_t limit) {
        return limit == 0 ? 0 : static_cast<std::size_t>(Next() % limit);
    }
    bool OneIn(std::size_t times) { return Below(times) == 0; }
    template <class T, std::size_t kSize>
    const T& Pick(const T (&choices)[kSize]) {
        return choices[Below(kSize)];
    }

private:
    std::uint64_t m_state;
};

}  // namespace quillon::test
