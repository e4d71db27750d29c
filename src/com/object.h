// Base of every COM object: identity, reference count, hold on the module.
#pragma once

#include <type_traits>
#include <utility>

#include "com/module.h"
#include "com/platform.h"
#include "com/ptr.h"

namespace quillon::com {

// The interface that a base stands for: a Dual names it, a plain interface is its own.
template <class Face>
struct FaceInterface {
    using Type = Face;
};
template <class Face>
concept NamesItsInterface = requires {
    typename Face::Interface;
};

template <NamesItsInterface Face>
struct FaceInterface<Face> {
    using Type = typename Face::Interface;
};

// An object with the given faces, the first of which is its identity. IDispatch is answered by the
// first face that has it. Make with com::Make, which gives the first reference. The hold on the
// module comes first, so it is let go last: what a face lets go of may unload unused modules.
template <class... Faces>
class Object : private ModuleLock, public Faces... {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = Find(iid);
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }

    STDMETHODIMP_(ULONG) AddRef() final {
        return static_cast<ULONG>(InterlockedIncrement(&m_references));
    }

    STDMETHODIMP_(ULONG) Release() final {
        const LONG left = InterlockedDecrement(&m_references);
        if (left == 0) {
            // What the destructor lets go of may take and drop a reference once more.
            m_references = kDying;
            delete this;
        }
        return left > 0 ? static_cast<ULONG>(left) : 0;
    }

protected:
    virtual ~Object() = default;

private:
    static constexpr LONG kDying = 0x40000000;

    void* Find(REFIID iid) {
        void* found = nullptr;
        if (IsEqualIID(iid, IID_IUnknown)) return First<Faces...>();
        ((found = found ? found : AsFace<Faces>(iid)), ...);
        return found;
    }

    template <class Face, class...>
    void* First() {
        return static_cast<typename FaceInterface<Face>::Type*>(static_cast<Face*>(this));
    }

    template <class Face>
    void* AsFace(REFIID iid) {
        using Own = typename FaceInterface<Face>::Type;
        return Matches<Own>(iid) ? static_cast<Own*>(static_cast<Face*>(this)) : nullptr;
    }

    // An interface is also answered for the one that it extends.
    template <class Own>
    static bool Matches(REFIID iid) {
        if (IsEqualIID(iid, __uuidof(Own))) return true;
        if constexpr (std::is_base_of_v<IDispatch, Own>) return IsEqualIID(iid, IID_IDispatch) != 0;
        if constexpr (std::is_base_of_v<IProvideClassInfo, Own>)
            return IsEqualIID(iid, IID_IProvideClassInfo) != 0;
        return false;
    }

    volatile LONG m_references = 1;
};

// A new object, held once.
template <class T, class... Arguments>
Ptr<T> Make(Arguments&&... arguments) {
    return Ptr<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace quillon::com
