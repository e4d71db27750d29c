#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

// The longest value that is made up where a file has none, in bytes. A device has room for 64 KB.
inline constexpr std::int32_t kMostDefaultBytes = 1 << 20;

// Values of RecordText::direction.
inline constexpr std::int32_t kDirectionInput = 0;
inline constexpr std::int32_t kDirectionOutput = 1;

// What a record of an application file (network variable or configuration property) holds.
struct RecordText {
    std::wstring name;
    std::wstring snvtType;
    std::wstring rawValue;  // hexadecimal, two digits a byte
    std::int32_t connectionIndex = 0;
    std::int32_t length = 0;  // bytes
    std::int32_t direction = kDirectionInput;
    std::int32_t address = 0;
    bool isNC = false;
};

// Filling a record from its element: first each attribute, then each child with its text in
// document order (a later one overwrites), then Complete... once. Names count in any letter case,
// unknown ones do nothing, and a number out of range leaves its field as it was. A child without
// any text is not passed at all; one whose text is empty is.

// "IsNC": true exactly when the lenient value, rounded, is 1.
void TakeAttribute(RecordText& record, std::wstring_view localName, std::wstring_view value);

// "SNVTType", "Direction", "ConnectionIndex", "Length", "RawValue". A direction that begins with
// "in" in any case is an input, every other text an output.
void TakeNetworkVariableChild(RecordText& record, std::wstring_view localName,
                              std::wstring_view text);

// "ConnectionIndex", "Length", "RawValue".
void TakeConfigurationPropertyChild(RecordText& record, std::wstring_view localName,
                                    std::wstring_view text);

// Gives a record without a raw value the default of all ones: "FF" for each byte of its length. A
// network variable gets it only when it is a configuration one (isNC). Above kMostDefaultBytes it
// stays empty.
void CompleteNetworkVariable(RecordText& record);
void CompleteConfigurationProperty(RecordText& record);

}  // namespace quillon
