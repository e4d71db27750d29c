// What the bench says: results on standard output, failures on standard error, both UTF-8 with LF.
#pragma once

#include <string>
#include <string_view>

#include "com/error.h"

namespace quorvex {
namespace com = quillon::com;
}

namespace quorvex::bench {

// A command that failed; the text is for people. Where it happened is put in front on the way out.
struct Failure {
    std::wstring text;
};

void PrepareOutput();
void Print(std::wstring_view line);
void PrintError(std::wstring_view line);

// "80040301": a result code in eight hexadecimal digits.
std::wstring CodeText(HRESULT code);
// The code and, where there is one, the description that came with it.
std::wstring Describe(const com::Error& error);
// What the report code of a download means; empty for one that is not known.
std::wstring_view ReportMeaning(HRESULT code);

}  // namespace quorvex::bench
