// Names of the host's late-bound members: the data points of a device (network variables,
// configuration properties, structure fields), their collections and their type objects. Nothing
// else in the plug-in spells such a name. docs/host-binding.md says what an integrator replaces.
#pragma once

namespace quillon::host {

// A collection of data points. Item takes a key as text; a point's key is its index in decimal, a
// field's key its name. Item of a structure's fields also takes a field's number, from 1. A key
// that names nothing is answered with success and no object.
namespace points {
inline constexpr const wchar_t* kCount = L"Count";
inline constexpr const wchar_t* kItem = L"Item";
}  // namespace points

// A data point. Its three texts: RawValue is hexadecimal, two digits a byte; Value the edit text (a
// number without unit, an enumeration's number, fields separated by blanks); FormattedValue as
// shown to people. All three read "?" while the device does not answer. Values can be put, which
// writes the device.
namespace point {
inline constexpr const wchar_t* kName = L"Name";
inline constexpr const wchar_t* kKey = L"Key";                     // text
inline constexpr const wchar_t* kIndex = L"Index";                 // number
inline constexpr const wchar_t* kDirection = L"NVDirection";       // 0 input, 1 output
inline constexpr const wchar_t* kIsConfiguration = L"NVIsConfig";  // boolean
inline constexpr const wchar_t* kSelfDocumentation = L"SelfDoc";   // text
inline constexpr const wchar_t* kType = L"SNVType";                // type object
inline constexpr const wchar_t* kRawValue = L"RawValue";
inline constexpr const wchar_t* kValue = L"Value";
inline constexpr const wchar_t* kFormattedValue = L"FormattedValue";
inline constexpr const wchar_t* kMinOverride = L"MinOverride";  // text, empty: no limit
inline constexpr const wchar_t* kMaxOverride = L"MaxOverride";  // text, empty: no limit
inline constexpr const wchar_t* kFields = L"Fields";            // collection of data points
inline constexpr int kOutput = 1;
}  // namespace point

// The object that the host hands to ShowFocus as its owner, where it is no IOleWindow.
namespace owner {
inline constexpr const wchar_t* kHWnd = L"hWnd";  // number: its window
}  // namespace owner

// A type object.
namespace type {
inline constexpr const wchar_t* kName = L"Name";
inline constexpr const wchar_t* kLength = L"Length";    // bytes
inline constexpr const wchar_t* kGenType = L"GenType";  // "SignedNumeric", "Enum", ...
inline constexpr const wchar_t* kUnits = L"Units";
inline constexpr const wchar_t* kInvalidValue = L"InvalidValue";  // blank: none
inline constexpr const wchar_t* kBCoef = L"BCoef";                // power-of-ten exponent
inline constexpr const wchar_t* kEnumDesc = L"EnumDesc";          // "0,Auto;1,Off;"
}  // namespace type

}  // namespace quillon::host
