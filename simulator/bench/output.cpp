#include "output.h"

#include <fcntl.h>
#include <io.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "com/text.h"
#include "text.h"

namespace quorvex::bench {
namespace {

void Write(std::FILE* stream, std::wstring_view line) {
    const std::string bytes = Utf8FromWide(line) + '\n';
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

struct Meaning {
    std::uint32_t code;
    std::wstring_view text;
};

constexpr Meaning kMeanings[] = {
    {0x00000000, L"success"},
    {0x80040320, L"other firmware version"},
    {0x80040321, L"other program ID, answered No"},
    {0x80040322, L"other customer ID"},
    {0x80040323, L"other device ID"},
    {0x80040325, L"bad application file"},
    {0x8004032B, L"failed before the values"},
    {0x8004032F, L"failed at the values"},
};

}  // namespace

void PrepareOutput() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

void Print(std::wstring_view line) {
    Write(stdout, line);
}

void PrintError(std::wstring_view line) {
    Write(stderr, line);
}

std::wstring CodeText(HRESULT code) {
    constexpr std::wstring_view digits = L"0123456789ABCDEF";
    std::wstring text;
    for (int shift = 28; shift >= 0; shift -= 4) {
        text += digits[(static_cast<std::uint32_t>(code) >> shift) & 0xF];
    }
    return text;
}

std::wstring Describe(const com::Error& error) {
    std::wstring text = CodeText(error.Result());
    com::Bstr description;
    if (error.Record() && SUCCEEDED(error.Record()->GetDescription(description.Out())) &&
        !description.View().empty()) {
        text += L" (" + description.Text() + L")";
    }
    return text;
}

std::wstring_view ReportMeaning(HRESULT code) {
    for (const Meaning& meaning : kMeanings) {
        if (meaning.code == static_cast<std::uint32_t>(code)) return meaning.text;
    }
    return {};
}

}  // namespace quorvex::bench
