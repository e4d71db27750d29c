// The label on its way from the template to the printer: bytes, with placeholders filled in.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillon {

// What makes a label unprintable; the text is for the operator.
struct LabelError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The longest template, in bytes.
inline constexpr std::size_t kLongestLabel = 13000;
// A label is sent in pieces of this size.
inline constexpr std::size_t kLabelPiece = 256;

// A buffer of 13,001 bytes. The template stands in it from index 1; what follows it is zero.
class LabelText {
public:
    // Nothing read, every byte zero.
    void Clear();
    // The template's next bytes. Throws LabelError when they would reach beyond index 13,000; the
    // bytes up to there are then in the buffer.
    void Append(std::string_view bytes);
    // Puts the replacement over the first place where the placeholder stands, seen from the
    // buffer's start; nothing changes when there is none. Throws LabelError when the two differ in
    // length, whether or not there is a place.
    void ReplaceFirst(std::string_view placeholder, std::string_view replacement);
    // The bytes read from the template, NULs included, without the zeros behind.
    std::string_view Used() const { return {m_buffer.data() + 1, m_used}; }

private:
    std::array<char, kLongestLabel + 1> m_buffer{};
    std::size_t m_used = 0;
};

// Fills in up to five Neuron IDs ("nnnnnnnnnnnn") and three production dates ("YYWW"): first one of
// each, then the others. The Neuron ID is asked for before each of its replacements. Throws
// LabelError when one has not 12 characters, or one that is no ASCII character; and what `neuronId`
// throws.
void FillPlaceholders(LabelText& label, const std::function<std::wstring()>& neuronId,
                      std::wstring_view yearAndWeek);

}  // namespace quillon
