#include "plugin/self_identification.h"

#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon;
    using fuzz::Require;
    const std::wstring text = fuzz::WideText(data, size);
    const auto mark = SelfIdentificationMark(text);
    const auto parsed = ParseSelfIdentification(text);
    Require(parsed.has_value() == mark.has_value());
    if (!mark) {
        Require(text.find(L';') == std::wstring::npos);
        return 0;
    }
    Require(text[*mark] == L';' && text.substr(0, *mark).find(L';') == std::wstring::npos);
    Require(parsed->type.size() <= 4 && parsed->version.size() <= 4 && parsed->os.size() <= 4);
    Require(parsed->version.empty() || parsed->type.size() == 4);
    Require(parsed->os.empty() || parsed->version.size() == 4);
    Require(parsed->type + parsed->version + parsed->os == text.substr(*mark + 1, 12));
    return 0;
}
