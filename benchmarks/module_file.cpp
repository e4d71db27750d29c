#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "com/module.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr std::uintmax_t kLimit = 900 * 1024;

// The names that the loaded module's import table holds.
std::vector<std::string> Imports(const std::filesystem::path& file) {
    const HMODULE module = LoadLibraryExW(file.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    if (!module) throw std::runtime_error("the stripped DLL cannot be mapped");
    const auto* base = reinterpret_cast<const unsigned char*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& table =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    std::vector<std::string> names;
    if (table.Size > 0)
        for (auto* one =
                 reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table.VirtualAddress);
             one->Name != 0; ++one)
            names.emplace_back(reinterpret_cast<const char*>(base + one->Name));
    FreeLibrary(module);
    return names;
}

bool IsOfTheSystem(const std::string& name) {
    wchar_t folder[MAX_PATH];
    GetSystemDirectoryW(folder, MAX_PATH);
    return std::filesystem::exists(std::filesystem::path(folder) / name);
}

}  // namespace

void MeasureModuleFile(const Session&, Table& table) {
    const auto file = std::filesystem::path(com::ModuleFolder()) / L"Quillon.stripped.dll";
    const std::uintmax_t size = std::filesystem::file_size(file);
    const auto imports = Imports(file);
    std::string foreign;
    for (const std::string& name : imports)
        if (!IsOfTheSystem(name)) foreign += " " + name;
    const std::string bits = sizeof(void*) == 4 ? "32" : "64";
    table.Add("`Quillon.dll`, " + bits + " bit, stripped", "",
              Decimals(static_cast<double>(size) / 1024, 0) + " KB", "900 KB, system imports only",
              size <= kLimit && foreign.empty(),
              foreign.empty() ? std::to_string(imports.size()) + " imported DLLs, all the system's"
                              : "not the system's:" + foreign);
}

}  // namespace quillon::benchmarks
