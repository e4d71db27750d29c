#include "fault/import_table.h"

#include <utility>

namespace quillon::test {

namespace {

template <class T>
T* At(HMODULE module, std::size_t offset) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(module) + offset);
}

void* Replace(void** place, void* replacement) {
    DWORD before = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    void* const old = std::exchange(*place, replacement);
    VirtualProtect(place, sizeof *place, before, &before);
    return old;
}

}  // namespace

void* ReplaceImport(HMODULE module, std::string_view function, void* replacement) {
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<std::size_t>(dos->e_lfanew));
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0) return nullptr;
    for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress);
         library->Name != 0; ++library) {
        auto* name = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        auto* place = At<void*>(module, library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++place) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* entry =
                At<IMAGE_IMPORT_BY_NAME>(module, static_cast<std::size_t>(name->u1.AddressOfData));
            if (function == reinterpret_cast<const char*>(entry->Name))
                return Replace(place, replacement);
        }
    }
    return nullptr;
}

}  // namespace quillon::test
