#include "window/label_text.h"

#include <algorithm>

#include "fuzz_support.h"
#include "plugin/settings_text.h"
#include "window/line_settings.h"

namespace quillon::fuzz {
namespace {

constexpr std::string_view kNeuronPlace = "nnnnnnnnnnnn";
constexpr std::wstring_view kNeuron = L"0123456789AB";

std::size_t Count(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

void CheckLabel(std::string_view bytes) {
    LabelText label;
    bool tooLong = false;
    try {
        label.Append(bytes);
    } catch (const LabelError&) {
        tooLong = true;
    }
    Require(tooLong == (bytes.size() > kLongestLabel));
    const std::string before(label.Used());
    Require(before == bytes.substr(0, kLongestLabel));
    int asked = 0;
    FillPlaceholders(
        label,
        [&] {
            ++asked;
            return std::wstring(kNeuron);
        },
        L"2647");
    const std::string_view after = label.Used();
    Require(asked == 5 && after.size() == before.size());
    const auto left = [&](std::string_view place, std::size_t most) {
        const std::size_t had = Count(before, place);
        return had - std::min(had, most);
    };
    Require(Count(after, kNeuronPlace) == left(kNeuronPlace, 5));
    Require(Count(after, "YYWW") == left("YYWW", 3));
    // Only the bytes of placeholders change.
    std::size_t changed = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i]) continue;
        ++changed;
        Require(std::string_view("nYW").find(before[i]) != std::string_view::npos);
    }
    Require(changed <= 5 * kNeuronPlace.size() + std::size_t{3} * 4);
}

void CheckTexts(const std::wstring& text) {
    if (const auto line = ParseLineSettings(text)) {
        Require(line->baud > 0 && line->dataBits >= 4 && line->dataBits <= 8);
        Require(std::count(text.begin(), text.end(), L',') == 3);
    }
    if (const auto port = ParsePortNumber(text)) Require(*port >= 1 && *port <= 256);
    if (NamesFileInside(text)) {
        Require(text.find(L"..\\") != 0 && text.find(L"\\..\\") == text.npos);
        Require(text.find(L':') == text.npos && text.front() != L'\\' && text.front() != L'/');
    }
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    CheckLabel({reinterpret_cast<const char*>(data), size});
    CheckTexts(WideText(data, size));
    return 0;
}
