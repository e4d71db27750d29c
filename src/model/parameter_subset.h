// Parameter files (.cps): what the selection dialog shows of one, and the file of the chosen
// entries that it writes. Format: docs/formats/parameter-file.md.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

// How the two kinds of entries stand in a file and in the hidden list.
struct ParameterKind {
    const wchar_t* list;     // section with the number of entries
    const wchar_t* section;  // an entry's section, before its number
    const wchar_t* key;      // of the number by which the device knows the point
    const wchar_t* tag;      // first field of a hidden line
};
inline constexpr ParameterKind kVariableEntries{L"NCIs", L"NCI_", L"Index", L"NC"};
inline constexpr ParameterKind kPropertyEntries{L"CPs", L"CP_", L"Address", L"CP"};
// In the order of the dialog.
inline constexpr std::array<const ParameterKind*, 2> kParameterKinds{&kVariableEntries,
                                                                     &kPropertyEntries};

inline constexpr const wchar_t* kTotalNumber = L"TotalNumber";
inline constexpr const wchar_t* kGeneralSection = L"GEN_INFO";
inline constexpr const wchar_t* kProgramIdKey = L"ProgramId";

// No file's list of one kind is longer.
inline constexpr std::int32_t kMostParameters = 65536;

// How many entries of a kind are shown: the total that the file claims, but not more than up to the
// highest entry that it has a section for, nor than kMostParameters. 0 for a total that is no
// number or negative.
std::int32_t EntryCount(std::wstring_view total, const std::vector<std::wstring>& sections,
                        const ParameterKind& kind);

// Gives the value of a key; empty when there is none.
using SettingReader =
    std::function<std::wstring(const std::wstring& section, const std::wstring& key)>;

struct ParameterLine {
    std::wstring name;    // for the operator
    std::wstring hidden;  // tag\number\value
    bool selected = false;
};

// Entry n of a kind. One that has no section is an empty line with number 0. A number that is too
// large to be one becomes -1, which no point has; a mark that is no number does not select.
ParameterLine ReadParameter(const SettingReader& read, const ParameterKind& kind, std::int32_t n);

// The file of the chosen entries.
class ParameterSubset {
public:
    explicit ParameterSubset(std::wstring_view programId);

    // A chosen entry, as its hidden line: cut at each "\", so that a value ends before its first.
    // Other tags than NC and CP are left out.
    void Add(std::wstring_view hiddenLine);

    // Byte for byte what writing key by key with the system's writer gives, before it is turned
    // into 8-bit text: lines end in "\r\n"; blanks around a value, which no reader would see, are
    // left out.
    std::wstring Text() const;

private:
    void Section(std::wstring_view name);
    void Key(std::wstring_view name, std::wstring_view value);

    std::wstring m_text;
    std::array<std::int32_t, kParameterKinds.size()> m_counts{};
};

}  // namespace quillon
