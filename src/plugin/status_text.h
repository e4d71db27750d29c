#pragma once

#include <cstdint>
#include <string>

namespace quillon {

// The label of a device state code of the host; "Status: " and the code for one that is not known.
std::wstring StatusText(std::int32_t code);

// The colour of a device state code: 0x00BBGGRR, or a system colour (bit 31 set and the index of
// the colour). White for a code that is not known.
std::uint32_t StatusColor(std::int32_t code);

}  // namespace quillon
