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

constexpr double kMostKilobytes = 900;

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
    const auto size = static_cast<double>(std::filesystem::file_size(file));
    const auto imports = Imports(file);
    int foreign = 0;
    std::string names;
    for (const std::string& name : imports) {
        if (IsOfTheSystem(name)) continue;
        ++foreign;
        names += " " + name;
    }
    // The bound is that of the DLL which old laptops load.
    table.Add({"size of `Quillon.dll`, stripped",
               "",
               {size / 1024},
               "KB",
               sizeof(void*) == 4 ? std::optional(kMostKilobytes) : std::nullopt,
               ""});
    table.Add({"DLLs that it imports and that are not the system's",
               "",
               {static_cast<double>(foreign)},
               "",
               0,
               std::to_string(imports.size()) + " imported" + names});
}

}  // namespace quillon::benchmarks
