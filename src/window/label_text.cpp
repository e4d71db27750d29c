#include "window/label_text.h"

#include <algorithm>

namespace quillon {
namespace {

constexpr std::string_view kNeuronPlaceholder = "nnnnnnnnnnnn";
constexpr std::string_view kDatePlaceholder = "YYWW";

std::string Bytes(std::wstring_view text, const char* complaint) {
    std::string bytes;
    for (const wchar_t character : text) {
        if (character < L' ' || character > L'~') throw LabelError(complaint);
        bytes.push_back(static_cast<char>(character));
    }
    return bytes;
}

}  // namespace

void LabelText::Clear() {
    m_buffer.fill('\0');
    m_used = 0;
}

void LabelText::Append(std::string_view bytes) {
    const std::size_t taken = std::min(bytes.size(), kLongestLabel - m_used);
    std::copy_n(bytes.begin(), taken, m_buffer.begin() + 1 + static_cast<std::ptrdiff_t>(m_used));
    m_used += taken;
    if (taken < bytes.size()) throw LabelError("The label template is longer than 13000 bytes.");
}

void LabelText::ReplaceFirst(std::string_view placeholder, std::string_view replacement) {
    if (placeholder.size() != replacement.size())
        throw LabelError("The Neuron ID or the date has not the length of its placeholder.");
    const std::string_view whole(m_buffer.data(), m_buffer.size());
    const std::size_t place = whole.find(placeholder);
    if (place == std::string_view::npos) return;
    std::copy(replacement.begin(), replacement.end(),
              m_buffer.begin() + static_cast<std::ptrdiff_t>(place));
}

void FillPlaceholders(LabelText& label, const std::function<std::wstring()>& neuronId,
                      std::wstring_view yearAndWeek) {
    const std::string date = Bytes(yearAndWeek, "The date cannot be printed.");
    const auto fillNeuronId = [&] {
        label.ReplaceFirst(kNeuronPlaceholder,
                           Bytes(neuronId(), "The Neuron ID cannot be printed."));
    };
    const auto fillDate = [&] { label.ReplaceFirst(kDatePlaceholder, date); };
    fillNeuronId();
    fillDate();
    for (int more = 0; more < 4; ++more) fillNeuronId();
    for (int more = 0; more < 2; ++more) fillDate();
}

}  // namespace quillon
