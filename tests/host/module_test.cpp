// The DLL as a file: version, imports, exports, size.
#include <algorithm>
#include <cstring>
#include <set>

#include "support/host_test.h"

namespace quillon::test {
namespace {

// A module file by its tables.
class PortableExecutable {
public:
    explicit PortableExecutable(const std::wstring& path) : m_bytes(ReadBytes(path)) {
        const auto& dos = At<IMAGE_DOS_HEADER>(0);
        m_headers = &At<IMAGE_NT_HEADERS>(static_cast<std::size_t>(dos.e_lfanew));
    }

    const IMAGE_OPTIONAL_HEADER& Optional() const { return m_headers->OptionalHeader; }

    std::set<std::string> Imports() const {
        std::set<std::string> names;
        std::size_t at = Offset(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT));
        for (;; at += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
            const auto& one = At<IMAGE_IMPORT_DESCRIPTOR>(at);
            if (one.Name == 0) return names;
            std::string name = &At<char>(Offset(one.Name));
            std::transform(name.begin(), name.end(), name.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
            names.insert(name);
        }
    }

    std::set<std::string> Exports() const {
        const auto& table =
            At<IMAGE_EXPORT_DIRECTORY>(Offset(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT)));
        std::set<std::string> names;
        for (DWORD i = 0; i < table.NumberOfNames; ++i)
            names.insert(
                &At<char>(Offset(At<DWORD>(Offset(table.AddressOfNames) + i * sizeof(DWORD)))));
        return names;
    }

private:
    template <class T>
    const T& At(std::size_t offset) const {
        if (offset + sizeof(T) > m_bytes.size()) throw std::runtime_error("truncated module");
        return *reinterpret_cast<const T*>(m_bytes.data() + offset);
    }
    DWORD Directory(int entry) const { return Optional().DataDirectory[entry].VirtualAddress; }
    std::size_t Offset(DWORD address) const {
        const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(m_headers);
        for (int i = 0; i < m_headers->FileHeader.NumberOfSections; ++i, ++section)
            if (address >= section->VirtualAddress &&
                address < section->VirtualAddress + section->SizeOfRawData)
                return section->PointerToRawData + (address - section->VirtualAddress);
        throw std::runtime_error("address in no section");
    }

    std::string m_bytes;
    const IMAGE_NT_HEADERS* m_headers = nullptr;
};

std::wstring StrippedPlugin() {
    return Wide(QUILLON_STRIPPED_DLL);
}

TEST(Module, ImportsSystemLibrariesAlone) {
    const std::set<std::string> system{
        "kernel32.dll", "user32.dll",  "gdi32.dll",   "advapi32.dll", "ole32.dll",
        "oleaut32.dll", "shlwapi.dll", "shell32.dll", "comctl32.dll", "comdlg32.dll",
        "msvcrt.dll",   "version.dll", "winmm.dll",   "uxtheme.dll",  "hhctrl.ocx"};
    const std::set<std::string> imports = PortableExecutable(StrippedPlugin()).Imports();
    EXPECT_TRUE(imports.contains("ole32.dll"));
    for (const std::string& name : imports) EXPECT_TRUE(system.contains(name)) << name;
}

TEST(Module, ExportsItsEntryPointsUndecorated) {
    const std::set<std::string> exports = PortableExecutable(StrippedPlugin()).Exports();
    for (const char* name : {"DllCanUnloadNow", "DllGetClassObject", "DllInstall",
                             "DllRegisterServer", "DllUnregisterServer"})
        EXPECT_TRUE(exports.contains(name)) << name;
}

TEST(Module, MayBeMovedInMemoryAndRunsNoData) {
    const WORD flags = PortableExecutable(StrippedPlugin()).Optional().DllCharacteristics;
    EXPECT_NE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, 0);
    EXPECT_NE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT, 0);
}

TEST(Module, StrippedThirtyTwoBitFileIsSmall) {
    const std::size_t size = ReadBytes(StrippedPlugin()).size();
    RecordProperty("bytes", static_cast<int>(size));
    if (sizeof(void*) != 4) GTEST_SKIP() << "the promise is of the 32-bit file";
    EXPECT_LT(size, 900U * 1024U);
}

TEST(Module, VersionResourceSaysTwoOneFourteen) {
    const std::wstring path = StrippedPlugin();
    DWORD ignored = 0;
    std::string block(GetFileVersionInfoSizeW(path.c_str(), &ignored), '\0');
    ASSERT_FALSE(block.empty());
    ASSERT_TRUE(
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
    for (const auto& [high, low] : {std::pair{fixed->dwFileVersionMS, fixed->dwFileVersionLS},
                                    {fixed->dwProductVersionMS, fixed->dwProductVersionLS}}) {
        EXPECT_EQ(high, DWORD{(2 << 16) | 1});
        EXPECT_EQ(low, DWORD{14 << 16});
    }
    wchar_t* text = nullptr;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904E4\\FileVersion",
                               reinterpret_cast<void**>(&text), &length));
    EXPECT_STREQ(text, L"2.1.14");
}

}  // namespace
}  // namespace quillon::test
