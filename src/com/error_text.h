// What a failure says to the operator.
#pragma once

#include <string>

#include "com/error.h"

namespace quillon::com {

// The system's text for a result, without a line end; empty when it has none.
std::wstring SystemText(HRESULT result);

// Throws Error with the result that belongs to a system error number.
[[noreturn]] void ThrowSystemError(DWORD number);

// The description of what is being thrown, never empty; to be called in a catch block. For Error
// that of its record, else the system's text, else its number; for a shortage of memory the
// system's text; for another std::exception its own.
std::wstring DescribeCurrentException();

}  // namespace quillon::com
