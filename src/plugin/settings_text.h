#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// What the settings reader asks for as the value of a missing key.
inline constexpr std::wstring_view kSettingNotFound = L"Not Found";

// The value of a setting from the text that the system's reader gave: empty for kSettingNotFound
// (also when a key really holds that text); what stands before the first "/", without the spaces
// around it, when there is a "/"; otherwise the text unchanged, spaces included.
std::wstring SettingsValue(std::wstring_view asRead);

// The name (no folder) of a program's settings file: the program ID and ".ini"; an empty ID gives
// ".ini". nullopt when such a name would lead out of its folder or to another thing than a file:
// one of \ / : * ? " < > | or a control character in it, nothing but dots, a dot or blank at the
// ID's end, or a device name (CON, CONIN$, CONOUT$, PRN, AUX, NUL, COM1-9, LPT1-9, any case), also
// with a dot and more after it.
//
// Other characters are passed on as they are, so whoever turns the name into 8-bit text must not
// let the system choose "best fit" characters: some of those are separators.
std::optional<std::wstring> SettingsFileName(std::wstring_view programId);

// The same for a device's calibration file: the Neuron ID and ".tca".
std::optional<std::wstring> CalibrationFileName(std::wstring_view neuronId);

// Whether a file name out of a settings file stays in the folder that it is taken from: a plain
// name, or a path through folders in there. False for the empty one and for one that climbs out or
// reaches another thing than a file: a separator in front (root or share), a part of dots and
// blanks alone ("..") or that ends in one of them, one of : * ? " < > | or a control character, a
// device name as in SettingsFileName. Such a name counts as that of a missing file.
bool NamesFileInside(std::wstring_view name);

}  // namespace quillon
