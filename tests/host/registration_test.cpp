// Registering for the machine and for the user, in the registry itself, and leaving no trace.
#include <filesystem>
#include <functional>
#include <map>

#include "support/host_test.h"

namespace quillon::test {
namespace {

// Keys with their values, by path in lower case.
using Tree = std::map<std::wstring, std::wstring>;

std::wstring Lower(std::wstring text) {
    CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

void AddKey(HKEY key, const std::wstring& path, Tree& tree) {
    tree[path];
    wchar_t name[256];
    BYTE data[4096];
    for (DWORD i = 0;; ++i) {
        DWORD length = 256;
        DWORD size = sizeof data;
        DWORD type = 0;
        const LSTATUS got = RegEnumValueW(key, i, name, &length, nullptr, &type, data, &size);
        if (got == ERROR_NO_MORE_ITEMS) break;
        if (got != ERROR_SUCCESS) continue;
        const std::wstring value =
            type == REG_SZ ? std::wstring(reinterpret_cast<wchar_t*>(data)) : std::to_wstring(type);
        tree[path + L"@" + Lower(name)] = value;
    }
    for (DWORD i = 0;; ++i) {
        DWORD length = 256;
        if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr)) break;
        HKEY child = nullptr;
        if (RegOpenKeyExW(key, name, 0, KEY_READ, &child)) continue;
        AddKey(child, path + L"\\" + Lower(name), tree);
        RegCloseKey(child);
    }
}

Tree ClassesOf(HKEY root) {
    Tree tree;
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, L"Software\\Classes", 0, KEY_READ, &key) == ERROR_SUCCESS) {
        AddKey(key, L"", tree);
        RegCloseKey(key);
    }
    return tree;
}

// The paths that one tree has and the other lacks or has otherwise. The containers of all classes,
// libraries and interfaces belong to nobody.
Lines Difference(const Tree& tree, const Tree& other) {
    Lines paths;
    for (const auto& [path, value] : tree) {
        if (path.empty() || path == L"\\clsid" || path == L"\\typelib" || path == L"\\interface")
            continue;
        const auto found = other.find(path);
        if (found == other.end() || found->second != value) paths.push_back(path);
    }
    return paths;
}

const struct {
    const wchar_t* progId;
    const CLSID& clsid;
} kRegistered[] = {{L"Quillon.CDevice", CLSID_CDevice},
                   {L"Quillon.CProfile", CLSID_CProfile},
                   {L"Quillon.CNV", CLSID_CNV},
                   {L"Quillon.CNVs", CLSID_CNVs},
                   {L"Quillon.CCP", CLSID_CCP},
                   {L"Quillon.CCPs", CLSID_CCPs},
                   {L"Quillon.CRegistry", CLSID_CRegistry}};

std::wstring GuidText(const GUID& guid) {
    wchar_t text[40];
    StringFromGUID2(guid, text, 40);
    return Lower(text);
}

bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// One test at a time writes to the registry, whichever process it runs in.
class Registration : public HostTest {
protected:
    void SetUp() override {
        m_mutex = CreateMutexW(nullptr, FALSE, L"QuillonRegistrationTest");
        WaitForSingleObject(m_mutex, INFINITE);
        HostTest::SetUp();
        m_user = ClassesOf(HKEY_CURRENT_USER);
        m_machine = ClassesOf(HKEY_LOCAL_MACHINE);
        const std::wstring own = L"\\clsid\\" + GuidText(CLSID_CDevice);
        if (m_user.contains(own) || m_machine.contains(own))
            GTEST_SKIP() << "a plug-in is registered here, and would be lost";
    }
    void TearDown() override {
        HostTest::TearDown();
        ReleaseMutex(m_mutex);
        CloseHandle(m_mutex);
    }

    HRESULT Server(const char* entry) {
        return Plugin().Entry<HRESULT(STDAPICALLTYPE*)()>(entry)();
    }
    HRESULT Install(bool install, const wchar_t* arguments) {
        return Plugin().Entry<HRESULT(STDAPICALLTYPE*)(BOOL, PCWSTR)>("DllInstall")(install,
                                                                                    arguments);
    }
    void ExpectRegistered(HKEY root) {
        const Tree tree = ClassesOf(root);
        for (const auto& one : kRegistered) {
            SCOPED_TRACE(Narrow(one.progId));
            const std::wstring id = L"\\clsid\\" + GuidText(one.clsid);
            const auto value = [&](const std::wstring& path) {
                const auto found = tree.find(path);
                return found == tree.end() ? L"(missing)" : found->second;
            };
            EXPECT_EQ(Lower(value(id + L"\\inprocserver32@")), Lower(Plugin().Path()));
            EXPECT_EQ(value(id + L"\\inprocserver32@threadingmodel"), L"Apartment");
            EXPECT_EQ(value(id + L"\\progid@"), one.progId);
            EXPECT_EQ(Lower(value(id + L"\\typelib@")), GuidText(LIBID_Quillon));
            EXPECT_EQ(Lower(value(L"\\" + Lower(one.progId) + L"\\clsid@")), GuidText(one.clsid));
        }
        // Wine registers a type library for the machine even when asked to do it for the user.
        const Tree libraries = IsWine() ? ClassesOf(HKEY_LOCAL_MACHINE) : tree;
        EXPECT_TRUE(libraries.contains(L"\\typelib\\" + GuidText(LIBID_Quillon) + L"\\2.1"));
    }
    // What the plug-in assumes of the host is the host's to register.
    void ExpectNothingOfTheHost(const Tree& tree, const Tree& before) {
        for (const std::wstring& path : Difference(tree, before))
            for (const GUID& guid : {IID_IDevice, IID_IDeviceEx, IID_IFile, IID_IFiles,
                                     __uuidof(INetwork), LIBID_Quorvex, CLSID_Device})
                EXPECT_EQ(path.find(GuidText(guid)), std::wstring::npos) << Narrow(path);
    }
    // By ProgID, as a host does it; the system loads the DLL.
    void ExpectCreatable() {
        for (const auto& one : kRegistered) {
            SCOPED_TRACE(Narrow(one.progId));
            CLSID clsid{};
            EXPECT_EQ(CLSIDFromProgID(one.progId, &clsid), S_OK);
            EXPECT_EQ(clsid, one.clsid);
            com::Ptr<IDispatch> object;
            EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                       object.OutVoid()),
                      S_OK);
        }
    }

    Tree m_user;
    Tree m_machine;

private:
    HANDLE m_mutex = nullptr;
};

// COM keeps the DLL loaded that it loaded itself; it is let go of before the fixture asks.
void LetComUnload() {
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
}

TEST_F(Registration, MachineRegistrationIsCompleteAndLeavesNoTrace) {
    ASSERT_EQ(Server("DllRegisterServer"), S_OK);
    ExpectRegistered(HKEY_LOCAL_MACHINE);
    EXPECT_EQ(Difference(ClassesOf(HKEY_CURRENT_USER), m_user), Lines());
    ExpectNothingOfTheHost(ClassesOf(HKEY_LOCAL_MACHINE), m_machine);
    ExpectCreatable();
    LetComUnload();
    EXPECT_EQ(Server("DllUnregisterServer"), S_OK);
    EXPECT_EQ(Difference(ClassesOf(HKEY_LOCAL_MACHINE), m_machine), Lines());
    EXPECT_EQ(Difference(m_machine, ClassesOf(HKEY_LOCAL_MACHINE)), Lines());
}

TEST_F(Registration, UserRegistrationIsCompleteAndLeavesNoTrace) {
    ASSERT_EQ(Install(true, L"user"), S_OK);
    ExpectRegistered(HKEY_CURRENT_USER);
    for (const std::wstring& path : Difference(ClassesOf(HKEY_LOCAL_MACHINE), m_machine))
        EXPECT_TRUE(IsWine() && !path.starts_with(L"\\clsid")) << Narrow(path);
    ExpectNothingOfTheHost(ClassesOf(HKEY_CURRENT_USER), m_user);
    // Wine looks for classes in the machine's part of the registry alone.
    if (!IsWine()) ExpectCreatable();
    LetComUnload();
    EXPECT_EQ(Install(false, L"user"), S_OK);
    EXPECT_EQ(Difference(ClassesOf(HKEY_CURRENT_USER), m_user), Lines());
    EXPECT_EQ(Difference(m_user, ClassesOf(HKEY_CURRENT_USER)), Lines());
    EXPECT_EQ(Difference(ClassesOf(HKEY_LOCAL_MACHINE), m_machine), Lines());
}

TEST_F(Registration, ProgIdsStayWhileTheOtherBitnessIsRegistered) {
    if (sizeof(void*) == 4) GTEST_SKIP() << "a 32-bit system has no other";
    const std::wstring path = L"Software\\Classes\\CLSID\\" + GuidText(CLSID_CDevice);
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0,
                              KEY_WRITE | KEY_WOW64_32KEY, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(Server("DllRegisterServer"), S_OK);
    EXPECT_EQ(Server("DllUnregisterServer"), S_OK);
    const Tree tree = ClassesOf(HKEY_LOCAL_MACHINE);
    EXPECT_TRUE(tree.contains(L"\\quillon.cdevice\\clsid"));
    EXPECT_FALSE(tree.contains(L"\\quillon.cprofile"));
    EXPECT_EQ(RegDeleteKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), KEY_WOW64_32KEY, 0), ERROR_SUCCESS);
    EXPECT_EQ(Server("DllUnregisterServer"), S_OK);
    EXPECT_EQ(Difference(ClassesOf(HKEY_LOCAL_MACHINE), m_machine), Lines());
}

TEST_F(Registration, RegisteringAndUnregisteringTwiceSucceeds) {
    for (const bool install : {true, true, false, false}) {
        EXPECT_EQ(Install(install, L"User"), S_OK) << install;
    }
    EXPECT_EQ(Difference(ClassesOf(HKEY_CURRENT_USER), m_user), Lines());
}

TEST_F(Registration, InstallWithoutArgumentsIsForTheMachine) {
    for (const wchar_t* arguments : {static_cast<const wchar_t*>(nullptr), L""}) {
        EXPECT_EQ(Install(true, arguments), S_OK);
        ExpectRegistered(HKEY_LOCAL_MACHINE);
        EXPECT_EQ(Install(false, arguments), S_OK);
    }
    EXPECT_EQ(Difference(ClassesOf(HKEY_LOCAL_MACHINE), m_machine), Lines());
}

TEST_F(Registration, InstallWithOtherArgumentsIsRefused) {
    EXPECT_EQ(Install(true, L"users"), E_INVALIDARG);
    EXPECT_EQ(Difference(ClassesOf(HKEY_LOCAL_MACHINE), m_machine), Lines());
}

}  // namespace
}  // namespace quillon::test
