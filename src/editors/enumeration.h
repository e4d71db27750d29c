// The entries of the enumeration editor and which number OK writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editors/option_list.h"

namespace quillon {

class Enumeration {
public:
    static constexpr std::int32_t kNoNumber = -1;

    explicit Enumeration(std::wstring_view enumDesc) : m_entries(ParseOptionList(enumDesc)) {}

    const std::vector<Option>& Entries() const { return m_entries; }
    // The first entry whose number, in decimal, is the value text.
    std::optional<std::size_t> EntryOf(std::wstring_view value) const;
    // The operator picks an entry. Selecting one by code is no pick.
    void Pick(std::size_t entry) { m_picked = entry; }
    // What OK writes while the box shows this entry, or nothing: the number of the entry when it is
    // the picked one; without a pick, or where its number is -1, that of the first entry with the
    // shown text; else -1.
    std::wstring TextToWrite(std::optional<std::size_t> shown) const;

private:
    std::vector<Option> m_entries;
    std::optional<std::size_t> m_picked;
};

}  // namespace quillon
