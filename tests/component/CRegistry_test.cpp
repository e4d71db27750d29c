#include "plugin/CRegistry.h"

#include "support/component_fixture.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Ptr;

const wchar_t* const kKey = L"SOFTWARE\\QuillonTest";
const wchar_t* const kApplets = L"SOFTWARE\\LonWorks\\LCA\\Applets\\Quillon\\QuillonTest";

class RegistryTest : public test::ComponentTest {
protected:
    RegistryTest() { RemoveKeys(); }
    ~RegistryTest() override { RemoveKeys(); }

    static void RemoveKeys() {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey);
        RegDeleteTreeW(HKEY_CURRENT_USER, kApplets);
    }
    static void MakeKey(const std::wstring& path) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyW(HKEY_LOCAL_MACHINE, path.c_str(), &key), ERROR_SUCCESS);
        RegCloseKey(key);
    }
    static bool HasKey(const std::wstring& path) {
        HKEY key = nullptr;
        if (RegOpenKeyW(HKEY_LOCAL_MACHINE, path.c_str(), &key) != ERROR_SUCCESS) return false;
        RegCloseKey(key);
        return true;
    }
    static void SetRaw(DWORD type, const void* bytes, DWORD size) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey, L"raw", type, bytes, size),
                  ERROR_SUCCESS);
    }

    std::wstring Machine(const wchar_t* path, const wchar_t* name) const {
        Bstr value;
        EXPECT_EQ(registry->get_MachineSetting(Bstr(path).Get(), Bstr(name).Get(), value.Out()),
                  S_OK);
        return value.Text();
    }
    void PutMachine(const wchar_t* path, const wchar_t* name, std::wstring_view value) const {
        EXPECT_EQ(
            registry->put_MachineSetting(Bstr(path).Get(), Bstr(name).Get(), Bstr(value).Get()),
            S_OK);
    }
    std::wstring App(const wchar_t* section, const wchar_t* name) const {
        Bstr value;
        EXPECT_EQ(registry->get_AppSetting(Bstr(section).Get(), Bstr(name).Get(), value.Out()),
                  S_OK);
        return value.Text();
    }
    bool Delete(BSTR path) const {
        VARIANT_BOOL deleted = VARIANT_FALSE;
        EXPECT_EQ(registry->DeleteMachineSetting(path, &deleted), S_OK);
        return deleted != VARIANT_FALSE;
    }
    std::wstring First(const wchar_t* path) const {
        Bstr name;
        EXPECT_EQ(registry->FindFirstMachineKey(Bstr(path).Get(), name.Out()), S_OK);
        return name.Text();
    }
    std::wstring Next() const {
        Bstr name;
        EXPECT_EQ(registry->GetNextMachineKey(name.Out()), S_OK);
        return name.Text();
    }
    bool Guuid(const wchar_t* identifier) const {
        VARIANT_BOOL found = VARIANT_FALSE;
        EXPECT_EQ(registry->FindGUUID(Bstr(identifier).Get(), &found), S_OK);
        return found != VARIANT_FALSE;
    }

    Ptr<_CRegistry> registry = com::Make<CRegistry>();
};

TEST_F(RegistryTest, RegisteredClassIsFoundAndAnotherIsNot) {
    MakeKey(L"SOFTWARE\\Classes\\CLSID\\{0B2F7C34-0001-4D5A-9E1B-1C6E3D1E7A11}");
    EXPECT_TRUE(Guuid(L"0B2F7C34-0001-4D5A-9E1B-1C6E3D1E7A11"));
    RegDeleteTreeW(HKEY_LOCAL_MACHINE,
                   L"SOFTWARE\\Classes\\CLSID\\{0B2F7C34-0001-4D5A-9E1B-1C6E3D1E7A11}");
    EXPECT_FALSE(Guuid(L"0B2F7C34-0001-4D5A-9E1B-1C6E3D1E7A11"));
    EXPECT_FALSE(Guuid(L""));
}

TEST_F(RegistryTest, HelpViewersClassIsFoundWhereItIsRegistered) {
    const wchar_t* viewer = L"ADB880A6-D8FF-11CF-9377-00AA003B7A11";
    EXPECT_EQ(Guuid(viewer), HasKey(L"SOFTWARE\\Classes\\CLSID\\{" + std::wstring(viewer) + L"}"));
}

TEST_F(RegistryTest, SubkeysAreEnumeratedToTheEnd) {
    for (const wchar_t* name : {L"\\a", L"\\b", L"\\c"}) MakeKey(kKey + std::wstring(name));
    EXPECT_EQ(First(kKey), L"a");
    EXPECT_EQ(Next(), L"b");
    EXPECT_EQ(Next(), L"c");
    EXPECT_EQ(Next(), L"");
    EXPECT_EQ(Next(), L"");
}

TEST_F(RegistryTest, SecondEnumerationStartsAnew) {
    for (const wchar_t* name : {L"\\a\\x", L"\\b"}) MakeKey(kKey + std::wstring(name));
    EXPECT_EQ(First(kKey), L"a");
    EXPECT_EQ(First(L"SOFTWARE\\QuillonTest\\a"), L"x");
    EXPECT_EQ(Next(), L"");
    EXPECT_EQ(First(kKey), L"a");
    EXPECT_EQ(Next(), L"b");
}

TEST_F(RegistryTest, MissingKeyEndsTheEnumerationBefore) {
    for (const wchar_t* name : {L"\\a", L"\\b"}) MakeKey(kKey + std::wstring(name));
    EXPECT_EQ(First(kKey), L"a");
    EXPECT_EQ(First(L"SOFTWARE\\QuillonTest\\none"), L"");
    EXPECT_EQ(Next(), L"");
}

TEST_F(RegistryTest, NextWithoutAFirstIsEmpty) {
    EXPECT_EQ(Next(), L"");
}

TEST_F(RegistryTest, KeyWithoutSubkeysEnumeratesNothing) {
    MakeKey(kKey);
    EXPECT_EQ(First(kKey), L"");
    EXPECT_EQ(Next(), L"");
}

TEST_F(RegistryTest, LongestKeyNameIsEnumeratedWhole) {
    const std::wstring name(255, L'n');
    MakeKey(kKey + (L"\\" + name));
    EXPECT_EQ(First(kKey), name);
}

TEST_F(RegistryTest, MachineSettingIsWrittenAndRead) {
    PutMachine(kKey, L"name", L"value");
    EXPECT_EQ(Machine(kKey, L"name"), L"value");
    PutMachine(kKey, L"name", L"");
    EXPECT_EQ(Machine(kKey, L"name"), L"");
    PutMachine(kKey, L"", L"default");
    EXPECT_EQ(Machine(kKey, L""), L"default");
}

TEST_F(RegistryTest, LongValueAndCodePageCharactersComeBackWhole) {
    const std::wstring text = std::wstring(20'000, L'v') + L"\x00B0\x20AC";
    PutMachine(kKey, L"long", text);
    EXPECT_EQ(Machine(kKey, L"long"), text);
}

TEST_F(RegistryTest, MissingKeyAndMissingValueReadAsEmpty) {
    EXPECT_EQ(Machine(kKey, L"name"), L"");
    MakeKey(kKey);
    EXPECT_EQ(Machine(kKey, L"name"), L"");
}

TEST_F(RegistryTest, NumberReadsAsDecimalTextAndBytesAsNothing) {
    MakeKey(kKey);
    const DWORD number = 4'000'000'000u;
    SetRaw(REG_DWORD, &number, sizeof number);
    EXPECT_EQ(Machine(kKey, L"raw"), L"4000000000");
    SetRaw(REG_BINARY, "abc", 3);
    EXPECT_EQ(Machine(kKey, L"raw"), L"");
    SetRaw(REG_EXPAND_SZ, L"%x%", 8);
    EXPECT_EQ(Machine(kKey, L"raw"), L"%x%");
}

TEST_F(RegistryTest, TextWithoutATerminatorEndsWhereItEnds) {
    MakeKey(kKey);
    SetRaw(REG_SZ, L"abc", 3 * sizeof(wchar_t));
    EXPECT_EQ(Machine(kKey, L"raw"), L"abc");
    SetRaw(REG_SZ, L"", 0);
    EXPECT_EQ(Machine(kKey, L"raw"), L"");
}

TEST_F(RegistryTest, AppSettingStandsUnderTheComponentsOwnKey) {
    EXPECT_EQ(registry->put_AppSetting(Bstr(L"QuillonTest").Get(), Bstr(L"name").Get(),
                                       Bstr(L"value").Get()),
              S_OK);
    EXPECT_EQ(App(L"QuillonTest", L"name"), L"value");
    wchar_t text[16] = {};
    DWORD size = sizeof text;
    EXPECT_EQ(
        RegGetValueW(HKEY_CURRENT_USER, kApplets, L"name", RRF_RT_REG_SZ, nullptr, text, &size),
        ERROR_SUCCESS);
    EXPECT_STREQ(text, L"value");
    EXPECT_EQ(App(L"QuillonTest", L"other"), L"");
    EXPECT_EQ(App(L"QuillonTestOther", L"name"), L"");
}

TEST_F(RegistryTest, DeletingReportsWhetherThereWasAKey) {
    MakeKey(kKey);
    EXPECT_TRUE(Delete(Bstr(kKey).Get()));
    EXPECT_FALSE(HasKey(kKey));
    EXPECT_FALSE(Delete(Bstr(kKey).Get()));
}

TEST_F(RegistryTest, KeyWithSubkeysIsNotDeleted) {
    MakeKey(L"SOFTWARE\\QuillonTest\\a");
    EXPECT_FALSE(Delete(Bstr(kKey).Get()));
    EXPECT_TRUE(HasKey(L"SOFTWARE\\QuillonTest\\a"));
}

TEST_F(RegistryTest, EmptyPathNeverDeletesOrWrites) {
    EXPECT_FALSE(Delete(Bstr(L"").Get()));
    EXPECT_FALSE(Delete(nullptr));
    EXPECT_FALSE(Delete(Bstr(std::wstring(1, L'\0')).Get()));
    EXPECT_TRUE(HasKey(L"SOFTWARE"));
    PutMachine(L"", L"QuillonTestStray", L"x");
    const Bstr nameless(std::wstring(1, L'\0') + L"x");
    EXPECT_EQ(
        registry->put_MachineSetting(nameless.Get(), Bstr(L"QuillonTestStray").Get(), nullptr),
        S_OK);
    EXPECT_FALSE(Delete(nameless.Get()));
    EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, nullptr, L"QuillonTestStray", RRF_RT_ANY, nullptr,
                           nullptr, nullptr),
              ERROR_FILE_NOT_FOUND);
}

TEST_F(RegistryTest, NullTargetsAreRefused) {
    const Bstr text(kKey);
    EXPECT_EQ(registry->FindGUUID(text.Get(), nullptr), E_POINTER);
    EXPECT_EQ(registry->FindFirstMachineKey(text.Get(), nullptr), E_POINTER);
    EXPECT_EQ(registry->GetNextMachineKey(nullptr), E_POINTER);
    EXPECT_EQ(registry->get_AppSetting(text.Get(), text.Get(), nullptr), E_POINTER);
    EXPECT_EQ(registry->get_MachineSetting(text.Get(), text.Get(), nullptr), E_POINTER);
    EXPECT_EQ(registry->DeleteMachineSetting(text.Get(), nullptr), E_POINTER);
}

}  // namespace
}  // namespace quillon
