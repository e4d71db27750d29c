#include "model/header_codes.h"

#include "fuzz_support.h"

namespace quillon::fuzz {
namespace {

void CheckHeader(const std::wstring& header) {
    const HeaderCodes codes = ReadHeaderCodes(header);
    Require(codes.deviceId.size() <= 4 && codes.customerId.size() <= 4);
    Require(codes.customerId.empty() || codes.deviceId.size() == 4);
    const std::wstring both = codes.deviceId + codes.customerId;
    Require(both == (header.size() > 8 ? header.substr(8, 8) : std::wstring()));
}

void CheckEnds(const std::wstring& text) {
    const std::wstring leading = LeadingFour(text);
    const std::wstring trailing = TrailingFour(text);
    Require(leading.size() == std::min<std::size_t>(text.size(), 4));
    Require(trailing.size() == leading.size());
    Require(text.starts_with(leading) && text.ends_with(trailing));
}

void CheckWord(const std::wstring& text) {
    const auto word = Attempt([&] { return DeviceCodeAsWord(text); });
    const auto number = Attempt([&] { return LenientWhole(text); });
    Require(word.has_value() == number.has_value());
    if (!word) return;
    Require(IsUpperHex(*word));
    Require(*number < 0 ? word->size() >= 4 : word->size() == 4);
    if (*number >= 0 && *number <= 9) Require(*word == L"000" + DecimalText(*number));
    if (*number > 0xFFFF) Require(*word == L"FFFF");
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    const std::wstring text = WideText(data, size);
    CheckHeader(text);
    CheckEnds(text);
    CheckWord(text);
    CheckWord(quillon::ReadHeaderCodes(text).deviceId);
    return 0;
}
