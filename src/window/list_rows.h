#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace quillon {

// One row of a list view. The key tells which item of the device it shows: a prefix of four
// characters and the key of the item in the host's collection.
struct ListRow {
    std::wstring text;   // column "Item"
    std::wstring key;    // kNvPrefix or kCpPrefix and the item's key
    std::wstring tag;    // kNvTag or kCpTag
    std::wstring icon;   // one of kImageKeys
    std::wstring value;  // column "Value"

    bool operator==(const ListRow&) const = default;
};

inline constexpr std::wstring_view kNvPrefix = L"NVS\\";
inline constexpr std::wstring_view kCpPrefix = L"CPS\\";
inline constexpr std::wstring_view kNvTag = L"NV";
inline constexpr std::wstring_view kCpTag = L"CP";

inline constexpr std::wstring_view kInputIcon = L"nvi";
inline constexpr std::wstring_view kOutputIcon = L"nvo";
inline constexpr std::wstring_view kConfigurationIcon = L"cp";

// The keys of the small images, in the order of the image list.
inline constexpr std::array<std::wstring_view, 23> kImageKeys{
    L"nvi",     L"vantor",   L"error",   L"nvofield", L"nvifield", L"cpfield",
    L"nvo",     L"cp",       L"cross",   L"ledoff",   L"switchon", L"switchoff",
    L"ledon",   L"Down_off", L"Down_on", L"Up_off",   L"Up_on",    L"Hand_off",
    L"Hand_on", L"Page_off", L"Page_on", L"Mode_off", L"Mode_on",
};

// The 0-based place of an image in kImageKeys, compared by case; -1 for an unknown key.
int IconIndex(std::wstring_view key);

// A row for a network variable. `setupList`: the list shows configuration (lvCPs, lvAdvancedCPs),
// where a network variable has the icon of a configuration property whatever its direction.
ListRow NetworkVariableRow(std::wstring_view name, std::wstring_view key, std::wstring_view value,
                           bool output, bool setupList);

ListRow ConfigurationPropertyRow(std::wstring_view name, std::wstring_view key,
                                 std::wstring_view value);

// The item's key in the host's collection: what stands after the first four characters of a row's
// key, whatever they are. Empty for a shorter key.
std::wstring ItemKey(std::wstring_view rowKey);

// Rows as text for the clipboard: per row its item, a tab, its value and CR LF; no header. A tab, a
// line break or a NUL inside a text becomes a blank, one for each character.
std::wstring RowsAsText(std::span<const ListRow> rows);

}  // namespace quillon
