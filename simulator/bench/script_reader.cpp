#include "script_reader.h"

namespace quorvex::bench {
namespace {

constexpr wchar_t kByteOrderMark = 0xFEFF;

bool IsBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

// For messages only: what is not ASCII shows as "?".
std::string Plain(std::wstring_view text) {
    std::string plain;
    for (const wchar_t c : text) plain += c >= L' ' && c < 0x7F ? static_cast<char>(c) : '?';
    return plain;
}

class LineReader {
public:
    LineReader(std::wstring_view line, const VariableReader& variable)
        : m_rest(line), m_variable(variable) {}

    // The next word; nullopt at the end of the line.
    std::optional<std::wstring> Next() {
        while (!m_rest.empty() && IsBlank(m_rest[0])) m_rest.remove_prefix(1);
        if (m_rest.empty() || m_rest[0] == L'#') return std::nullopt;
        std::wstring word;
        while (!m_rest.empty() && !IsBlank(m_rest[0])) {
            if (m_rest[0] == L'"') {
                ReadQuoted(word);
            } else {
                ReadOne(word);
            }
        }
        return word;
    }

private:
    void ReadQuoted(std::wstring& word) {
        m_rest.remove_prefix(1);
        for (;;) {
            if (m_rest.empty()) throw ScriptError("a quotation mark is not closed");
            if (m_rest.starts_with(L"\"\"")) {
                word += L'"';
                m_rest.remove_prefix(2);
            } else if (m_rest[0] == L'"') {
                m_rest.remove_prefix(1);
                return;
            } else {
                ReadOne(word);
            }
        }
    }

    // One character, or one variable.
    void ReadOne(std::wstring& word) {
        if (!m_rest.starts_with(L"${")) {
            word += m_rest[0];
            m_rest.remove_prefix(1);
            return;
        }
        const auto end = m_rest.find(L'}');
        if (end == std::wstring_view::npos) throw ScriptError("a \"${\" is not closed");
        const auto name = m_rest.substr(2, end - 2);
        const auto value = m_variable(name);
        if (!value) throw ScriptError("there is no variable \"" + Plain(name) + "\"");
        word += *value;
        m_rest.remove_prefix(end + 1);
    }

    std::wstring_view m_rest;
    const VariableReader& m_variable;
};

}  // namespace

Words SplitWords(std::wstring_view line, const VariableReader& variable) {
    LineReader reader(line, variable);
    Words words;
    while (auto word = reader.Next()) words.push_back(std::move(*word));
    return words;
}

std::vector<std::wstring> SplitLines(std::wstring_view script) {
    if (script.starts_with(kByteOrderMark)) script.remove_prefix(1);
    std::vector<std::wstring> lines;
    while (!script.empty()) {
        const auto end = script.find(L'\n');
        auto line = script.substr(0, end);
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        script.remove_prefix(end == std::wstring_view::npos ? script.size() : end + 1);
    }
    return lines;
}

}  // namespace quorvex::bench
