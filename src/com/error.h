// Failures inside a module are exceptions; across an interface they are result codes with an error
// record. This file turns the one into the other.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

#include "com/platform.h"
#include "com/ptr.h"

namespace quillon::com {

// A failing result, and the error record that came with it if there was one.
class Error : public std::exception {
public:
    explicit Error(HRESULT result, Ptr<IErrorInfo> record = nullptr)
        : m_result(result), m_record(std::move(record)) {}

    HRESULT Result() const { return m_result; }
    const Ptr<IErrorInfo>& Record() const { return m_record; }
    const char* what() const noexcept override { return "COM call failed"; }

private:
    HRESULT m_result;
    Ptr<IErrorInfo> m_record;
};

// A record with source and description; empty when memory is short.
Ptr<IErrorInfo> MakeErrorRecord(std::wstring_view source, std::wstring_view description);

// Throws Error when the result is a failure, and takes the thread's error record along.
void Check(HRESULT result);

// For calls of the platform, whose shortage of memory is our own: throws std::bad_alloc for it and
// hands back any other result.
HRESULT NoShortage(HRESULT result);

// Makes the failure of one of our members out of what is being thrown: to be called in a catch
// block. Leaves the thread's error record to match; std::exception other than Error becomes E_FAIL
// with its text. A shortage of memory becomes E_OUTOFMEMORY and is counted.
HRESULT ResultOfCurrentException() noexcept;

// Ends the exception that is being thrown in silence: to be called in a catch block. The thread's
// error record is cleared, so no stale one is left behind.
void Swallow() noexcept;
// How many shortages of memory of its own this module has met. What others answer is not counted,
// E_OUTOFMEMORY neither.
unsigned Shortages() noexcept;

// Runs a piece that promises to end quietly: any exception yields a value-initialised result.
template <class F>
auto Quietly(F&& f) noexcept -> decltype(f()) {
    try {
        return f();
    } catch (...) {
        Swallow();
    }
    return decltype(f())();
}

// Runs a piece whose quiet parts may leave out what cannot be had, but nothing for want of memory
// of our own: then std::bad_alloc is thrown at its end.
template <class F>
auto InFull(F&& f) -> decltype(f()) {
    const unsigned before = Shortages();
    const auto require = [&] {
        if (Shortages() != before) throw std::bad_alloc();
    };
    if constexpr (std::is_void_v<decltype(f())>) {
        f();
        require();
    } else {
        auto result = f();
        require();
        return result;
    }
}

}  // namespace quillon::com
