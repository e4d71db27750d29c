// Reads bench scripts: one command a line, words separated by blanks or tabs.
//
//   # to the end of the line is a comment where a word could begin
//   "a word with blanks", a quote inside written ""
//   ${NAME} stands for a variable's value, in quotes too; the value never splits into words
#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::bench {

using Words = std::vector<std::wstring>;

// A line that cannot be read. The message says why, for people.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The value of a variable; nullopt when there is none of that name.
using VariableReader = std::function<std::optional<std::wstring>(std::wstring_view name)>;

// The words of one line, none for an empty line or a comment. Throws ScriptError.
Words SplitWords(std::wstring_view line, const VariableReader& variable);

// The lines of a script, without line ends (LF or CR LF) and without a leading byte order mark.
std::vector<std::wstring> SplitLines(std::wstring_view script);

}  // namespace quorvex::bench
