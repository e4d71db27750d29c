#include "editors/option_list.h"

#include <algorithm>

#include "fuzz_support.h"

namespace quillon::fuzz {
namespace {

std::wstring Written(const std::vector<Option>& options) {
    std::wstring text;
    for (const Option& option : options) {
        text += DecimalText(option.code) + L"," + option.label + L";";
    }
    return text;
}

void CheckEntries(const std::wstring& text, const std::vector<Option>& options) {
    const auto ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), L';'));
    Require(options.size() <= ends + 1);
    std::size_t from = 0;
    for (const Option& option : options) {
        Require(option.label.find(L';') == std::wstring::npos);
        from = text.find(option.label, from);
        Require(from != std::wstring::npos);
        from += option.label.size();
    }
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    const std::wstring text = WideText(data, size);
    const auto options = quillon::ParseOptionList(text);
    CheckEntries(text, options);
    Require(quillon::ParseOptionList(Written(options)) == options);
    Require(quillon::ParseOptionList(L";;" + text + L";") == options);

    auto more = options;
    more.push_back({-7, L"last, of all"});
    Require(quillon::ParseOptionList(text + L";-7,last, of all") == more);
    return 0;
}
