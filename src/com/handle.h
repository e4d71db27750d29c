// Ownership of one of the system's handles.
#pragma once

#include <utility>

#include "com/platform.h"

namespace quillon::com {

// Closes its handle at the end; empty for what a failing call gave.
class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Handle() {
        if (m_handle) CloseHandle(m_handle);
    }
    explicit operator bool() const { return m_handle != nullptr; }
    HANDLE Get() const { return m_handle; }

private:
    HANDLE m_handle = nullptr;
};

}  // namespace quillon::com
