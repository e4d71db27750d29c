#include "com/error_text.h"

#include "com/text.h"

namespace quillon::com {

namespace {

const wchar_t* const kUnknown = L"An unknown error has occurred.";

std::wstring NumberText(HRESULT result) {
    constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    std::wstring text = L"Error 0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += kDigits[(static_cast<unsigned long>(result) >> shift) & 0xF];
    return text;
}

std::wstring Described(const Error& error) {
    if (error.Record()) {
        Bstr description;
        if (SUCCEEDED(error.Record()->GetDescription(description.Out())) &&
            !description.View().empty())
            return description.Text();
    }
    const std::wstring system = SystemText(error.Result());
    return system.empty() ? NumberText(error.Result()) : system;
}

}  // namespace

std::wstring SystemText(HRESULT result) {
    const DWORD code = HRESULT_FACILITY(result) == FACILITY_WIN32
                           ? static_cast<DWORD>(HRESULT_CODE(result))
                           : static_cast<DWORD>(result);
    wchar_t text[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, text, 512, nullptr);
    std::wstring message(text, length);
    while (!message.empty() && message.back() <= L' ') message.pop_back();
    return message;
}

void ThrowSystemError(DWORD number) {
    throw Error(number == ERROR_SUCCESS ? E_FAIL : HRESULT_FROM_WIN32(number));
}

std::wstring DescribeCurrentException() {
    try {
        throw;
    } catch (const Error& error) {
        return Described(error);
    } catch (const std::bad_alloc&) {
        return SystemText(E_OUTOFMEMORY);
    } catch (const std::exception& error) {
        const std::string text = error.what();
        return text.empty() ? kUnknown : std::wstring(text.begin(), text.end());
    } catch (...) {
        return kUnknown;
    }
}

}  // namespace quillon::com
