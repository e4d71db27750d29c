#pragma once

#include <string>
#include <string_view>

namespace quillon {

// True when a text can name an XML element for every parser: a letter or "_", then letters, digits,
// ".", "-", "_" and combining characters, all from the basic plane and as the older (narrower)
// editions of XML 1.0 have them. No ":": it would make a prefix.
bool IsXmlName(std::wstring_view text);

// The text without the characters that an XML 1.0 document cannot hold: controls other than tab,
// line feed and carriage return, surrogates without their partner, U+FFFE and U+FFFF.
std::wstring XmlCharacters(std::wstring_view text);

}  // namespace quillon
