// The simulated host's catalogue of standard network variable types: what a type looks like, and
// how its bytes become text and text becomes bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

using Bytes = std::vector<std::uint8_t>;

enum class Kind { Signed, Unsigned, Float, Enum, Text, User, Struct };

struct Field;

// One type. Everything lives as long as the process and never changes.
struct Type {
    std::wstring_view name;  // "SNVT_temp_p"; of a structure's field: the field's name
    int index = 0;           // number of the standard type; 0: user-defined, or a field
    Kind kind = Kind::Unsigned;
    std::size_t length = 0;   // bytes; a bit field counts as 1
    std::wstring_view units;  // "degrees Celsius"; may be empty
    int bCoef = 0;            // power-of-ten exponent of one step: -2 shows two decimals
    std::wstring enumDesc;    // "0,HVAC_AUTO;1,HVAC_HEAT;": decimal code "," label ";"
    std::wstring minimum;     // smallest and largest valid value as edit text; empty: no limit
    std::wstring maximum;
    std::wstring invalidValue;  // edit text that means invalid; empty: none
    std::vector<Field> fields;  // of a structure, in order

    // Whole-number kinds: shown = multiplier * 10^bCoef * (raw + offset), limits as raw numbers.
    int multiplier = 1;
    int offset = 0;
    std::int64_t rawMinimum = 0;
    std::int64_t rawMaximum = 0;
    std::optional<std::int64_t> rawInvalid;

    // "SignedNumeric", "UnsignedNumeric", "Float", "Enum", "Textual", "User" or "Struct".
    std::wstring_view GenType() const noexcept;
};

// A member of a structure. With bits > 0 it is a bit field inside the byte at `offset`, counted
// from that byte's most significant bit; its bytes are then one byte, right-aligned.
struct Field {
    std::wstring_view name;
    Type type;
    std::size_t offset = 0;
    unsigned bitOffset = 0;
    unsigned bits = 0;
};

// All types, by ascending index, user-defined ones last.
std::span<const Type> AllTypes();
// nullptr when there is no type of that name; letter case counts.
const Type* FindType(std::wstring_view name);

// The functions below that take bytes throw std::invalid_argument when their number is not the
// type's length.

// Edit text: a number with the type's decimals, "." and no unit; an enumeration's number; text up
// to the first NUL; user-defined bytes in hexadecimal; fields separated by single blanks.
std::wstring ValueText(const Type& type, std::span<const std::uint8_t> bytes);
// As shown to people: number, blank and unit; an enumeration's label, or its number when it has
// none. Fields stand without their units. An invalid value is shown as its number.
std::wstring FormattedText(const Type& type, std::span<const std::uint8_t> bytes);
// Bytes of an edit text; nullopt when it is not a value of the type: no number, outside the limits
// (the invalid value apart), another number of fields, a text of more than 30 characters or with
// one that has no 8-bit code. "," is read like "."; decimals finer than the type's step round to
// the nearest step, halves away from zero. An enumeration takes every code that fits, listed or
// not.
std::optional<Bytes> BytesFromValueText(const Type& type, std::wstring_view text);

// A structure's field cut out and put back. The structure must have its length, the field's bytes
// theirs (std::invalid_argument).
Bytes FieldBytes(const Field& field, std::span<const std::uint8_t> structure);
void PutFieldBytes(const Field& field, std::span<std::uint8_t> structure,
                   std::span<const std::uint8_t> bytes);

// Hexadecimal, upper case, two digits a byte.
std::wstring RawText(std::span<const std::uint8_t> bytes);
// nullopt for an odd number of digits or another character; either letter case; empty is no bytes.
std::optional<Bytes> BytesFromRawText(std::wstring_view text);

}  // namespace quorvex
