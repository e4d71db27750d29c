#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "plugin/number_text.h"

namespace quillon::fuzz {

// Ends the run with the place of the broken invariant, which is the caller's by default.
inline void Require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (holds) return;
    std::fprintf(stderr, "%s:%d: invariant does not hold\n", file, line);
    std::abort();
}

// One character for each byte; 0xFF takes the two bytes after it as one 16-bit character, so that
// the fuzzer reaches what lies beyond Latin-1, too.
inline std::wstring WideText(const std::uint8_t* data, std::size_t size) {
    std::wstring text;
    text.reserve(size);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0xFF && i + 2 < size) {
            text.push_back(static_cast<wchar_t>(data[i + 1] << 8 | data[i + 2]));
            i += 2;
        } else {
            text.push_back(static_cast<wchar_t>(data[i]));
        }
    }
    return text;
}

// What a conversion gives; nullopt for a NumberError. Any other exception ends the run.
template <class Function>
auto Attempt(Function function) -> std::optional<decltype(function())> {
    try {
        return function();
    } catch (const NumberError&) {
        return std::nullopt;
    }
}

inline bool IsUpperHex(const std::wstring& text) {
    return text.find_first_not_of(L"0123456789ABCDEF") == std::wstring::npos;
}

}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
