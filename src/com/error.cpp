#include "com/error.h"

#include <new>
#include <stdexcept>

#include "com/module.h"
#include "com/text.h"

namespace quillon::com {

namespace {

std::wstring Widened(const char* text) {
    std::wstring wide;
    while (*text) wide.push_back(static_cast<unsigned char>(*text++));
    return wide;
}

unsigned g_shortages = 0;

void SetRecord(IErrorInfo* record) noexcept {
    SetErrorInfo(0, record);
}

HRESULT CountShortage() noexcept {
    ++g_shortages;
    SetRecord(nullptr);
    return E_OUTOFMEMORY;
}

HRESULT WithText(HRESULT result, const std::exception& error) noexcept {
    try {
        SetRecord(MakeErrorRecord(ModuleName(), Widened(error.what())).Get());
    } catch (...) {
        SetRecord(nullptr);
    }
    return result;
}

}  // namespace

Ptr<IErrorInfo> MakeErrorRecord(std::wstring_view source, std::wstring_view description) {
    Ptr<ICreateErrorInfo> create;
    if (FAILED(CreateErrorInfo(create.Out()))) return nullptr;
    create->SetSource(Bstr(source).Get());
    create->SetDescription(Bstr(description).Get());
    return create.As<IErrorInfo>();
}

void Check(HRESULT result) {
    if (SUCCEEDED(result)) return;
    Ptr<IErrorInfo> record;
    GetErrorInfo(0, record.Out());
    throw Error(result, std::move(record));
}

HRESULT NoShortage(HRESULT result) {
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    return result;
}

HRESULT ResultOfCurrentException() noexcept {
    try {
        throw;
    } catch (const Error& error) {
        SetRecord(error.Record().Get());
        return error.Result();
    } catch (const std::bad_alloc&) {
        return CountShortage();
    } catch (const std::length_error&) {
        return CountShortage();
    } catch (const std::exception& error) {
        return WithText(E_FAIL, error);
    } catch (...) {
        SetRecord(nullptr);
        return E_UNEXPECTED;
    }
}

void Swallow() noexcept {
    ResultOfCurrentException();
    SetRecord(nullptr);
}

unsigned Shortages() noexcept {
    return g_shortages;
}

}  // namespace quillon::com
