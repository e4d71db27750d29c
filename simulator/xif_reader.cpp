#include "xif_reader.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

namespace quorvex {
namespace {

constexpr long kLargestIndex = 999999;
constexpr long kLargestArray = 4096;
constexpr std::size_t kMostVariables = 4096;
constexpr std::size_t kLongestVariable = 31;
constexpr std::size_t kLongestDocumentation = 1024;
constexpr std::size_t kLongestQuoted = 40;
constexpr std::string_view kBlanks = " \t";

using Words = std::vector<std::string_view>;

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

Words WordsOf(std::string_view line, std::string_view separators = kBlanks) {
    Words words;
    std::size_t begin = line.find_first_not_of(separators);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(line.find_first_of(separators, begin), line.size());
        words.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(separators, end);
    }
    return words;
}

template <class Number>
std::optional<Number> ParseNumber(std::string_view word, int base = 10) {
    Number number{};
    const auto read = std::from_chars(word.data(), word.data() + word.size(), number, base);
    if (read.ec != std::errc() || read.ptr != word.data() + word.size()) return std::nullopt;
    return number;
}

std::optional<std::uint8_t> ParseHexByte(std::string_view digits) {
    if (digits.empty() || digits.size() > 2) return std::nullopt;
    return ParseNumber<std::uint8_t>(digits, 16);
}

std::string Cut(std::string_view text) {
    return std::string(text.substr(0, kLongestQuoted));
}

std::string InQuotes(std::string_view text) {
    return "\"" + Cut(text) + "\"";
}

bool IsControl(char one) {
    const auto code = static_cast<unsigned char>(one);
    return code < 0x20 || code == 0x7F;
}

// Which words begin a record.
bool BeginsRecord(std::string_view line) {
    const Words words = WordsOf(line);
    if (words.empty()) return false;
    const auto isCapital = [](char one) { return (one >= 'A' && one <= 'Z') || one == '_'; };
    return std::all_of(words[0].begin(), words[0].end(), isCapital) && words[0].size() > 1;
}

// "\x80" becomes the character; every other character is itself.
std::string Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) == "\\x" && i + 4 <= text.size()) {
            if (const auto byte = ParseHexByte(text.substr(i + 2, 2))) {
                plain.push_back(static_cast<char>(*byte));
                i += 3;
                continue;
            }
        }
        plain.push_back(text[i]);
    }
    return plain;
}

// The lines of a file, without comments ("#").
class Lines {
public:
    explicit Lines(std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            std::string_view line = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            if (line.ends_with('\r')) line.remove_suffix(1);
            m_lines.push_back(Trimmed(line));
        }
    }

    // Skips comments and empty lines. Whether any line is left.
    bool More() {
        while (m_next < m_lines.size() && (Current().empty() || Current().front() == '#')) ++m_next;
        return m_next < m_lines.size();
    }
    std::string_view Current() const { return m_lines[m_next]; }
    std::string_view Take() { return m_lines[m_next++]; }
    // The next line that says something. `what` is missing when there is none.
    std::string_view Need(const char* what) {
        if (!More()) Fail(std::string(what) + " is missing at the end of the file");
        return Take();
    }
    // The line taken last is wrong; the last one of the file, when there is none more.
    [[noreturn]] void Fail(const std::string& text) const {
        throw XifError(std::max<std::size_t>(m_next, 1), text);
    }
    std::size_t Number() const { return m_next; }

    // A line of numbers, at least so many.
    std::vector<long> Numbers(const char* what, std::size_t least) {
        const Words words = WordsOf(Need(what));
        std::vector<long> numbers;
        for (const std::string_view word : words) {
            const auto number = ParseNumber<long>(word);
            if (!number) Fail(std::string(what) + ": " + InQuotes(word) + " is no number");
            numbers.push_back(*number);
        }
        if (numbers.size() < least)
            Fail(std::string(what) + " needs at least " + std::to_string(least) + " numbers");
        return numbers;
    }

    // Self-documentation: "*" for none, or lines that begin with a quotation mark.
    std::string Documentation() {
        std::string text;
        while (More() && (Current() == "*" || Current().front() == '"')) {
            std::string_view line = Take();
            if (line == "*") continue;
            line.remove_prefix(1);
            if (line.ends_with('"')) line.remove_suffix(1);
            text += Unescaped(line);
            if (text.size() > kLongestDocumentation)
                Fail("a self-documentation has at most " + std::to_string(kLongestDocumentation) +
                     " bytes");
        }
        return text;
    }

private:
    std::vector<std::string_view> m_lines;
    std::size_t m_next = 0;
};

// One element of a variable's type: kind, bit offset, size, signed, array.
class ElementLengths {
public:
    // False for a kind that is not known.
    bool Add(const std::vector<long>& element) {
        const bool bits = element[0] == 3;
        const std::size_t count = element.size() > 4 && element[4] > 0 ? Amount(element[4]) : 1;
        // A bit field that does not begin where the last one ended begins a byte.
        if (!bits)
            m_length += count * SizeOf(element);
        else if (!m_inBits || element[1] <= m_bitOffset)
            ++m_length;
        m_inBits = bits;
        m_bitOffset = element[1];
        return element[0] >= 0 && element[0] <= 5;
    }
    std::size_t Length() const { return m_length; }

private:
    static std::size_t Amount(long number) {
        return static_cast<std::size_t>(std::clamp(number, 0L, 1000L));
    }
    static std::size_t SizeOf(const std::vector<long>& element) {
        if (element[0] == 2) return 2;
        // Unions and typeless bytes say how many they are.
        return element[0] > 3 ? Amount(element[2]) : 1;
    }

    std::size_t m_length = 0;
    long m_bitOffset = 0;
    bool m_inBits = false;
};

class Reader {
public:
    Reader(std::string_view text, std::size_t (*lengthOf)(int))
        : m_lines(text), m_lengthOf(lengthOf) {}

    XifDevice Read() {
        ReadHeader();
        while (m_lines.More()) {
            const std::string_view line = m_lines.Take();
            if (!BeginsRecord(line)) m_lines.Fail("no record begins with " + InQuotes(line));
            const Words words = WordsOf(line);
            if (words[0] == "VAR")
                ReadVariable(words);
            else if (words[0] == "NVVAL")
                ReadValues();
            else
                PassOver();
        }
        return std::move(m_device);
    }

private:
    void ReadHeader() {
        const std::string first(m_lines.Need("the first line"));
        if (first.find("XIF Version 4.") == std::string::npos)
            m_lines.Fail(
                "this is no device interface file of version 4 (\"XIF Version 4.\" is "
                "missing)");
        // What follows are two lines of text, then the program ID.
        m_lines.Need("the copyright");
        m_lines.Need("the date");
        m_device.programId = ProgramId(m_lines.Need("the program ID"));
        while (m_lines.More() && m_lines.Current() != "*" && m_lines.Current().front() != '"' &&
               !BeginsRecord(m_lines.Current()))
            m_lines.Numbers("the device's figures", 1);
        m_device.selfDocumentation = m_lines.Documentation();
    }

    std::string ProgramId(std::string_view line) const {
        std::string digits;
        for (const std::string_view pair : WordsOf(line, ":")) {
            if (pair.size() != 2 || !ParseHexByte(pair)) break;
            digits.append(pair);
        }
        if (digits.size() != 16 || line.size() != 23)
            m_lines.Fail("the program ID is not eight pairs of hexadecimal digits with colons");
        for (char& digit : digits)
            if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
        return digits;
    }

    long NumberIn(const Words& words, std::size_t place, long most, const char* what) const {
        const auto number = ParseNumber<long>(words[place]);
        if (!number || *number < 0 || *number > most)
            m_lines.Fail(std::string(what) + " " + InQuotes(words[place]) +
                         " is no number from 0 to " + std::to_string(most));
        return *number;
    }

    // VAR name index rates array, its attributes, its self-documentation, its type and elements.
    void ReadVariable(const Words& words) {
        if (words.size() < 3) m_lines.Fail("a variable needs a name and an index");
        XifVariable variable;
        variable.name = NameIn(words);
        variable.index = NumberIn(words, 2, kLargestIndex, "the index");
        const long array = words.size() > 5 ? NumberIn(words, 5, kLargestArray, "the array") : 0;
        CheckRoom(variable.index, array);
        const std::size_t line = m_lines.Number();
        const auto attributes = m_lines.Numbers("the attributes of a variable", 4);
        if (attributes[3] != 0 && attributes[3] != 1)
            m_lines.Fail("the direction of a variable is 0 or 1");
        variable.output = attributes[3] == 1;
        variable.configuration = !variable.output && attributes.size() > 12 && attributes[12] == 1;
        variable.selfDocumentation = m_lines.Documentation();
        ReadType(variable);
        AddVariable(variable, array, line);
    }

    std::string NameIn(const Words& words) const {
        if (std::any_of(words[1].begin(), words[1].end(), IsControl))
            m_lines.Fail("the name of a variable holds a control character");
        return std::string(words[1]);
    }

    // Whether so many variables more, from that index on, are not too many.
    void CheckRoom(long index, long array) const {
        const long count = std::max(array, 1L);
        if (index + count - 1 > kLargestIndex)
            m_lines.Fail("the array goes beyond the index " + std::to_string(kLargestIndex));
        if (m_device.variables.size() + static_cast<std::size_t>(count) > kMostVariables)
            m_lines.Fail("there are more than " + std::to_string(kMostVariables) + " variables");
    }

    void ReadType(XifVariable& variable) {
        const Words words = WordsOf(m_lines.Need("the type of a variable"));
        if (words.size() < 3) m_lines.Fail("a type needs its number, its name and its elements");
        variable.standardType = static_cast<int>(NumberIn(words, 0, 65535, "the type"));
        const long elements = NumberIn(words, 2, 1000, "the number of elements");
        const std::size_t known = m_lengthOf(variable.standardType);
        ElementLengths lengths;
        for (long i = 0; i < elements; ++i)
            if (!lengths.Add(m_lines.Numbers("an element of a type", 4)) && known == 0)
                m_lines.Fail("an element of a kind that is not known");
        const std::size_t length = known ? known : lengths.Length();
        if (length == 0 || length > kLongestVariable)
            m_lines.Fail("a variable has 1 to 31 bytes, not " + std::to_string(length));
        variable.value.assign(length, 0);
    }

    // An array is so many variables, one index after the other. Their names could be those of XML
    // elements, as an export of the device needs them.
    void AddVariable(const XifVariable& variable, long array, std::size_t line) {
        for (long i = 0; i < std::max(array, 1L); ++i) {
            XifVariable one = variable;
            one.index += i;
            if (array > 0) one.name += "_" + std::to_string(i);
            if (!m_indexes.insert(one.index).second)
                throw XifError(line, "the index " + std::to_string(one.index) + " stands twice");
            m_device.variables.push_back(std::move(one));
        }
    }

    // The bytes of the configuration variables so far, one after the other.
    void ReadValues() {
        std::vector<std::uint8_t> bytes;
        while (m_lines.More() && !BeginsRecord(m_lines.Current())) {
            for (std::string_view word : WordsOf(m_lines.Take(), " \t,")) {
                if (!word.starts_with("\\x") && !word.starts_with("0x")) FailByte(word);
                const auto byte = ParseHexByte(word.substr(2));
                if (!byte) FailByte(word);
                bytes.push_back(*byte);
            }
        }
        std::size_t taken = 0;
        for (XifVariable& variable : m_device.variables) {
            if (!variable.configuration || taken == bytes.size()) continue;
            const std::size_t length = variable.value.size();
            if (bytes.size() - taken < length)
                m_lines.Fail("the value of " + Cut(variable.name) + " is not whole");
            std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(taken), length,
                        variable.value.begin());
            taken += length;
        }
        if (taken < bytes.size())
            m_lines.Fail("there are more values than configuration variables");
    }

    [[noreturn]] void FailByte(std::string_view word) const {
        m_lines.Fail(InQuotes(word) + " is no byte such as \\x0A");
    }

    void PassOver() {
        while (m_lines.More() && !BeginsRecord(m_lines.Current())) m_lines.Take();
    }

    Lines m_lines;
    std::size_t (*m_lengthOf)(int);
    XifDevice m_device;
    std::set<long> m_indexes;
};

}  // namespace

XifDevice ReadXif(std::string_view text, std::size_t (*lengthOf)(int standardType)) {
    return Reader(text, lengthOf).Read();
}

}  // namespace quorvex
