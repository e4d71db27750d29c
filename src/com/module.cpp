#include "com/module.h"

#include <mutex>
#include <string>
#include <vector>

#include "com/error.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace quillon::com {

namespace {

struct TypeInfoCache {
    struct Entry {
        GUID guid;
        Ptr<ITypeInfo> info;
    };
    std::mutex mutex;
    std::vector<Entry> entries;
};

// Never destroyed: at process end its interfaces would be released into a COM already gone. It is
// emptied with the last lock instead.
TypeInfoCache& Cache() {
    static TypeInfoCache* cache = new TypeInfoCache;
    return *cache;
}

volatile LONG g_locks = 0;

Ptr<ITypeInfo> LoadTypeInfo(const GUID& guid) {
    const std::wstring path = ModulePath();
    for (int resource = 1;; ++resource) {
        Ptr<ITypeLib> library;
        const std::wstring place = path + L"\\" + std::to_wstring(resource);
        if (FAILED(LoadTypeLibEx(place.c_str(), REGKIND_NONE, library.Out()))) break;
        Ptr<ITypeInfo> info;
        if (SUCCEEDED(library->GetTypeInfoOfGuid(guid, info.Out()))) return info;
    }
    throw Error(TYPE_E_ELEMENTNOTFOUND);
}

}  // namespace

HINSTANCE ModuleHandle() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(ModuleHandle(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::wstring ModuleFolder() {
    const std::wstring path = ModulePath();
    const std::size_t mark = path.find_last_of(L'\\');
    return mark == std::wstring::npos ? std::wstring() : path.substr(0, mark);
}

std::wstring ModuleName() {
    std::wstring name = ModulePath();
    const std::size_t mark = name.find_last_of(L'\\');
    if (mark != std::wstring::npos) name.erase(0, mark + 1);
    const std::size_t dot = name.find_last_of(L'.');
    if (dot != std::wstring::npos) name.erase(dot);
    return name;
}

void LockModule() {
    InterlockedIncrement(&g_locks);
}

void UnlockModule() {
    if (InterlockedDecrement(&g_locks) != 0) return;
    std::vector<TypeInfoCache::Entry> dropped;
    const std::lock_guard guard(Cache().mutex);
    dropped.swap(Cache().entries);
}

long ModuleLocks() {
    return g_locks;
}

Ptr<ITypeInfo> TypeInfoOf(const GUID& guid) {
    TypeInfoCache& cache = Cache();
    {
        const std::lock_guard guard(cache.mutex);
        for (const auto& entry : cache.entries)
            if (IsEqualGUID(entry.guid, guid)) return entry.info;
    }
    Ptr<ITypeInfo> info = LoadTypeInfo(guid);
    const std::lock_guard guard(cache.mutex);
    cache.entries.push_back({guid, info});
    return info;
}

}  // namespace quillon::com
