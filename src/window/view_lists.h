#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

// More entries than this are not read from one list of the settings file.
inline constexpr std::int32_t kMostEntries = 10000;

// The entries of one section of the settings file, under the keys "0", "1", "2", ...: it ends
// before the first key whose value is empty, and after kMostEntries. `read` gives the value of a
// key, empty when there is none; what it throws goes to the caller.
std::vector<std::wstring> ReadViewEntries(
    const std::function<std::wstring(const std::wstring& key)>& read);

// The number that an entry, or the tag of a main-view label, stands for: its lenient numeric value
// as a whole number, so that an empty one is 0. nullopt when that is no 32-bit number.
std::optional<std::int32_t> EntryNumber(std::wstring_view entry);

// The decimal text of EntryNumber. An entry without one is left out of its list.
std::optional<std::wstring> NumberEntry(std::wstring_view entry);

}  // namespace quillon
