// Shared helpers that ask the machine: settings files and its decimal separator. The pure ones
// stand in hex_text.h, status_text.h, field_text.h and number_text.h.
#pragma once

#include <string>
#include <vector>

namespace quillon {

// Reads a key of a settings file, 8-bit text in the machine's code page, at most 4095 characters. A
// "/" starts a comment; what is before it is trimmed. Missing file, section or key, an empty name
// of any of them, and the value "Not Found" read as an empty text. Format:
// docs/formats/settings-file.md.
std::wstring ReadIniValue(const std::wstring& file, const std::wstring& section,
                          const std::wstring& key);

// Writes a key. Nothing is reported; an empty file, section or key name writes nothing.
void WriteIniValue(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                   const std::wstring& value);

// The names of a settings file's sections in their order. Empty for a file that is missing or has
// no name.
std::vector<std::wstring> ReadIniSections(const std::wstring& file);

// A path for a platform call that takes 8-bit text. One that the code page cannot spell is given by
// its short form; that of a file that does not exist by the short form of its folder.
std::string SystemPath(const std::wstring& path);

// "," when the machine's regional settings write 0.5 with one, else ".".
std::wstring LocalDecimalSeparator();

// The number text with its first separator replaced by the machine's: the first ".", or where there
// is none the first ",".
std::wstring ToLocalDecimal(const std::wstring& text);

// Start-up. A module loaded as a component does nothing; one started as a program shows the splash.
void Main(bool startedAsProgram, void (*showSplash)());

}  // namespace quillon
