// The five option sets: what each offers, how it reads a point's value and what it writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "editors/option_list.h"

namespace quillon {

// Where a set's value stands in its data point.
enum class PointShape {
    kPlain,              // the point's value
    kPlainOrFirstField,  // that of field 1 where the point has one, else the point's
    kTwoFields,          // field 1 is the level, field 2 the state
};

// The value texts as the host has them. A value in one place is the level, and its state is empty.
struct OptionValue {
    std::wstring level;
    std::wstring state;

    bool operator==(const OptionValue&) const = default;
};

class OptionSet {
public:
    static OptionSet AppMode();
    static OptionSet OccSchedule();
    static OptionSet Lighting();
    static OptionSet EnergyHoldOff();
    // Two and three speeds are offered by name; any other number offers the low one alone.
    static OptionSet Fan(std::int32_t speeds);
    // A set of codes in one place, made of an option list.
    static OptionSet OfCodes(std::wstring_view list, PointShape shape);

    // What is offered, in this order. A position counts from 0 in it.
    const std::vector<Option>& Options() const { return m_options; }
    PointShape Shape() const { return m_shape; }

    // The position that a value stands for; nullopt when it is none of those offered.
    //
    // Codes are compared as text, blanks around apart. Level and state are strict numbers with "."
    // or ","; where one of them is no number, such as the "?" of a device that does not answer,
    // there is no position.
    std::optional<std::size_t> PositionOf(const OptionValue& value) const;

    // What is written for a position below Options().size().
    OptionValue Encode(std::size_t position) const;

private:
    struct Pair {
        std::wstring_view level;
        std::wstring_view state;
    };
    // The position of a level whose state forces it; nullopt: none.
    using ForcedPosition = std::optional<std::int32_t> (*)(double level);

    OptionSet() = default;
    static OptionSet OfPairs(std::wstring_view list, std::span<const Pair> pairs,
                             ForcedPosition forced);
    std::optional<std::int32_t> PairPosition(const OptionValue& value) const;

    std::vector<Option> m_options;
    PointShape m_shape = PointShape::kPlain;
    std::span<const Pair> m_pairs;  // by position; empty: codes
    ForcedPosition m_forced = nullptr;
    std::int32_t m_automatic = 0;  // position of state 255
    std::int32_t m_off = 1;        // position of state 0 and of level 0
    std::optional<std::int32_t> m_highest;
};

}  // namespace quillon
