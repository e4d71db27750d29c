// Text crossing an interface: BSTR in and out.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "com/platform.h"

namespace quillon::com {

// The characters of a BSTR; a null BSTR is an empty text.
inline std::wstring_view View(BSTR text) {
    return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
}
inline std::wstring Text(BSTR text) {
    return std::wstring(View(text));
}

// A new BSTR that the caller owns. Throws std::bad_alloc when it cannot be made.
BSTR NewBstr(std::wstring_view text);

// Owns one BSTR.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text) : m_text(NewBstr(text)) {}
    Bstr(const Bstr&) = delete;
    Bstr(Bstr&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
    Bstr& operator=(Bstr other) noexcept {
        std::swap(m_text, other.m_text);
        return *this;
    }
    ~Bstr() { SysFreeString(m_text); }

    // Takes over a BSTR that the caller owns.
    static Bstr Adopt(BSTR text) {
        Bstr result;
        result.m_text = text;
        return result;
    }

    BSTR Get() const { return m_text; }
    BSTR Detach() { return std::exchange(m_text, nullptr); }
    std::wstring_view View() const { return com::View(m_text); }
    std::wstring Text() const { return com::Text(m_text); }

    // For an out argument: empties it first.
    BSTR* Out() {
        SysFreeString(std::exchange(m_text, nullptr));
        return &m_text;
    }
    // For an in/out argument.
    BSTR* InOut() { return &m_text; }

private:
    BSTR m_text = nullptr;
};

}  // namespace quillon::com
