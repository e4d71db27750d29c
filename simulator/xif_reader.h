// Reader of LonMark device interface files, text form, versions 4.x: the interface of a device of
// any maker. docs/interface-import.md says what is taken over.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex {

// What is wrong, and in which line, counted from 1.
struct XifError : std::runtime_error {
    XifError(std::size_t line, const std::string& text)
        : std::runtime_error("line " + std::to_string(line) + ": " + text) {}
};

// A network variable; a device has at most 4,096, with indexes up to 999999. Its name has no
// control character, its self-documentation at most 1,024 bytes. Texts are 8-bit, with "\x80" and
// the like already turned into characters.
struct XifVariable {
    std::string name;
    long index = 0;
    bool output = false;
    bool configuration = false;  // of the configuration class, and an input
    std::string selfDocumentation;
    int standardType = 0;             // number of the standard type; 0: a type of the maker's
    std::vector<std::uint8_t> value;  // of the variable's length; zeros where the file has none
};

struct XifDevice {
    std::string programId;  // 16 hexadecimal digits, upper case
    std::string selfDocumentation;
    std::vector<XifVariable> variables;
};

// Lines end in "\r\n" or "\n". Message tags, files and records that are not known are passed over.
// The length of a variable is that of its standard type where lengthOf knows it (0: it does not),
// else that of its elements. Throws XifError.
XifDevice ReadXif(std::string_view text, std::size_t (*lengthOf)(int standardType));

}  // namespace quorvex
