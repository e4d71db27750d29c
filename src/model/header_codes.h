#pragma once

#include <string>
#include <string_view>

namespace quillon {

// The identity codes of an application file's header: characters 9-12 and 13-16 (counted from 1). A
// shorter header gives shorter or empty codes.
struct HeaderCodes {
    std::wstring deviceId;
    std::wstring customerId;
};

HeaderCodes ReadHeaderCodes(std::wstring_view header);

// The first, or the last, four characters; all of a shorter text.
std::wstring LeadingFour(std::wstring_view text);
std::wstring TrailingFour(std::wstring_view text);

// The device ID of a file as it is compared with a device's and written to it: HexWord of the code
// read as a *decimal* number, so 0104 becomes "0068" and only 0000 to 0009 stay as they are. Throws
// NumberError when the number is out of range.
std::wstring DeviceCodeAsWord(std::wstring_view deviceId);

}  // namespace quillon
