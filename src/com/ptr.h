// Smart pointer for COM interfaces. The one place, with object.h, where AddRef and Release are
// spelled.
#pragma once

#include <utility>

#include "com/platform.h"

namespace quillon::com {

template <class T>
class Ptr {
public:
    Ptr() = default;
    Ptr(std::nullptr_t) {}
    // Shares: adds a reference.
    Ptr(T* object) : m_object(object) { Add(); }
    Ptr(const Ptr& other) : m_object(other.m_object) { Add(); }
    Ptr(Ptr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    template <class U>
    Ptr(Ptr<U> other) : m_object(other.Detach()) {}
    ~Ptr() { Reset(); }

    Ptr& operator=(Ptr other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    // Takes over a reference that the caller owns.
    static Ptr Adopt(T* object) {
        Ptr result;
        result.m_object = object;
        return result;
    }

    void Reset() {
        if (T* old = std::exchange(m_object, nullptr)) old->Release();
    }

    // Lets go of the reference without releasing it.
    T* Detach() { return std::exchange(m_object, nullptr); }

    // For an out argument: empties the pointer first.
    T** Out() {
        Reset();
        return &m_object;
    }
    void** OutVoid() { return reinterpret_cast<void**>(Out()); }

    // For an in/out argument: what it points to may be replaced by the callee.
    T** InOut() { return &m_object; }

    // Another interface of the same object; empty when it has none.
    template <class U>
    Ptr<U> As() const {
        Ptr<U> other;
        if (m_object) m_object->QueryInterface(__uuidof(U), other.OutVoid());
        return other;
    }

    T* Get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    void Add() {
        if (m_object) m_object->AddRef();
    }

    T* m_object = nullptr;
};

}  // namespace quillon::com
