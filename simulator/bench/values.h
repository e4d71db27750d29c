// Values of one device as the host reaches them: network variables, configuration properties and
// file entries.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host.h"

namespace quorvex::bench {

enum class ValueKind { kVariable, kProperty, kFile };

// "nv", "cp" or "file"; Failure for another word.
ValueKind ValueKindOf(std::wstring_view word);

// Which text of a point: as edited, as shown, hexadecimal. An entry has the last alone.
enum class Form { kEdited, kShown, kRaw };

struct ValueTexts {
    std::wstring name;  // of the point; an entry's identifier
    std::wstring edited;
    std::wstring shown;
    std::wstring raw;

    const std::wstring& In(Form form) const;
};

// A point's key is its index or its name, an entry's its identifier in hexadecimal. A key that
// names nothing is a Failure.
ValueTexts ReadValue(const Room& room, ValueKind kind, const std::wstring& key);
// Writes a point's edit text, an entry's hexadecimal text.
void WriteValue(const Room& room, ValueKind kind, const std::wstring& key,
                const std::wstring& text);

struct Entry {
    long identifier = 0;
    long address = 0;
    std::wstring text;  // "?" when it cannot be read
};

std::vector<Entry> ReadEntries(const Room& room);
// "FFFA", "1"
std::wstring EntryName(long identifier);

}  // namespace quorvex::bench
