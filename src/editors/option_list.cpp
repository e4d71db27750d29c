#include "editors/option_list.h"

#include <algorithm>
#include <cstddef>

#include "plugin/number_text.h"

namespace quillon {
namespace {

void TakeEntry(std::vector<Option>& options, std::wstring_view entry) {
    const std::size_t comma = entry.find(L',');
    if (comma == std::wstring_view::npos) return;
    try {
        options.push_back(
            {LenientWhole(entry.substr(0, comma)), std::wstring(entry.substr(comma + 1))});
    } catch (const NumberError&) {
        // The host has no such code, so there is nothing that this entry could choose.
    }
}

}  // namespace

std::vector<Option> ParseOptionList(std::wstring_view text) {
    std::vector<Option> options;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L';'), text.size());
        TakeEntry(options, text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return options;
}

}  // namespace quillon
