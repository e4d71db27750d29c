#include "com/class_table.h"

#include <algorithm>
#include <string>

#include "com/error.h"
#include "com/module.h"
#include "com/text.h"

// Missing from the headers, present in the import library.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib*, OLECHAR*, OLECHAR*);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID, WORD, WORD, LCID, SYSKIND);

namespace quillon::com {

namespace {

class ClassFactory final : public Object<IClassFactory> {
public:
    explicit ClassFactory(const ClassEntry& entry) : m_entry(entry) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        if (!object) return E_POINTER;
        *object = nullptr;
        if (outer) return CLASS_E_NOAGGREGATION;
        try {
            return m_entry.create()->QueryInterface(iid, object);
        } catch (...) {
            return ResultOfCurrentException();
        }
    }

    STDMETHODIMP LockServer(BOOL lock) override {
        if (lock)
            LockModule();
        else
            UnlockModule();
        return S_OK;
    }

private:
    const ClassEntry& m_entry;
};

// A registry key that is created, written and closed. Failures are exceptions.
class Key {
public:
    Key(HKEY root, const std::wstring& path) {
        Fail(RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &m_key,
                             nullptr));
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() { RegCloseKey(m_key); }

    void Set(const wchar_t* name, const std::wstring& value) {
        Fail(RegSetValueExW(m_key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                            static_cast<DWORD>(value.size() + 1) * DWORD{sizeof(wchar_t)}));
    }

private:
    static void Fail(LSTATUS status) {
        if (status != ERROR_SUCCESS) throw Error(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
    }

    HKEY m_key = nullptr;
};

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40];
    StringFromGUID2(guid, text, 40);
    return text;
}

HKEY RootOf(Scope scope) {
    return scope == Scope::kMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

const wchar_t* const kClasses = L"Software\\Classes\\";

struct Library {
    Ptr<ITypeLib> library;
    TLIBATTR attributes{};

    Library() {
        Check(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Out()));
        TLIBATTR* own = nullptr;
        Check(library->GetLibAttr(&own));
        attributes = *own;
        library->ReleaseTLibAttr(own);
    }
    std::wstring Version() const {
        return std::to_wstring(attributes.wMajorVerNum) + L"." +
               std::to_wstring(attributes.wMinorVerNum);
    }
};

void RegisterClass(const ClassEntry& entry, const Library& library, std::wstring_view prefix,
                   HKEY root) {
    const std::wstring clsid = GuidText(entry.clsid);
    const std::wstring progId = std::wstring(prefix) + L"." + entry.name;
    const std::wstring base = kClasses + (L"CLSID\\" + clsid);
    Key(root, base).Set(nullptr, entry.title);
    Key server(root, base + L"\\InprocServer32");
    server.Set(nullptr, ModulePath());
    server.Set(L"ThreadingModel", L"Apartment");
    Key(root, base + L"\\ProgID").Set(nullptr, progId);
    Key(root, base + L"\\Programmable").Set(nullptr, L"");
    Key(root, base + L"\\TypeLib").Set(nullptr, GuidText(library.attributes.guid));
    Key(root, base + L"\\Version").Set(nullptr, library.Version());
    Key(root, kClasses + progId).Set(nullptr, entry.title);
    Key(root, kClasses + progId + L"\\CLSID").Set(nullptr, clsid);
}

// The first failure of steps that are all taken; what is already gone is none.
class FirstFailure {
public:
    void NoteKey(LSTATUS status) {
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND &&
            status != ERROR_PATH_NOT_FOUND)
            Note(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
    }
    // Windows says the one of a library that is not registered, Wine the other.
    void NoteLibrary(HRESULT result) {
        if (FAILED(result) && result != TYPE_E_REGISTRYACCESS && result != E_INVALIDARG)
            Note(result);
    }
    void Throw() const { Check(m_result); }

private:
    void Note(HRESULT result) {
        if (m_result == S_OK) m_result = result;
    }

    HRESULT m_result = S_OK;
};

// Both bitnesses share the ProgID where they have a class each.
bool OtherBitnessHas(HKEY root, const std::wstring& classKey) {
    constexpr REGSAM kOther = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, classKey.c_str(), 0, KEY_READ | kOther, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

void UnregisterAll(std::span<const ClassEntry> classes, std::wstring_view prefix, Scope scope) {
    FirstFailure failure;
    const HKEY root = RootOf(scope);
    for (const ClassEntry& entry : classes) {
        const std::wstring classKey = kClasses + (L"CLSID\\" + GuidText(entry.clsid));
        failure.NoteKey(RegDeleteTreeW(root, classKey.c_str()));
        if (OtherBitnessHas(root, classKey)) continue;
        failure.NoteKey(
            RegDeleteTreeW(root, (kClasses + std::wstring(prefix) + L"." + entry.name).c_str()));
    }
    const Library library;
    const auto remove = scope == Scope::kMachine ? UnRegisterTypeLib : UnRegisterTypeLibForUser;
    failure.NoteLibrary(remove(library.attributes.guid, library.attributes.wMajorVerNum,
                               library.attributes.wMinorVerNum, library.attributes.lcid,
                               library.attributes.syskind));
    failure.Throw();
}

}  // namespace

HRESULT GetClassObject(std::span<const ClassEntry> classes, REFCLSID clsid, REFIID iid,
                       void** factory) noexcept {
    if (!factory) return E_POINTER;
    *factory = nullptr;
    try {
        const auto found =
            std::find_if(classes.begin(), classes.end(),
                         [&](const ClassEntry& entry) { return IsEqualCLSID(entry.clsid, clsid); });
        if (found == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
        return Make<ClassFactory>(*found)->QueryInterface(iid, factory);
    } catch (...) {
        return ResultOfCurrentException();
    }
}

HRESULT Register(std::span<const ClassEntry> classes, std::wstring_view prefix,
                 Scope scope) noexcept {
    try {
        const Library library;
        for (const ClassEntry& entry : classes)
            RegisterClass(entry, library, prefix, RootOf(scope));
        const auto add = scope == Scope::kMachine ? RegisterTypeLib : RegisterTypeLibForUser;
        Check(add(library.library.Get(), Bstr(ModulePath()).Get(), nullptr));
        return S_OK;
    } catch (...) {
        const HRESULT result = ResultOfCurrentException();
        Unregister(classes, prefix, scope);
        return result;
    }
}

HRESULT Unregister(std::span<const ClassEntry> classes, std::wstring_view prefix,
                   Scope scope) noexcept {
    try {
        UnregisterAll(classes, prefix, scope);
        return S_OK;
    } catch (...) {
        return ResultOfCurrentException();
    }
}

}  // namespace quillon::com
