#include "plugin/CRegistry.h"

#include <utility>
#include <vector>

#include "plugin/code_page.h"

namespace quillon {

namespace {

const char* const kClassKeys = "SOFTWARE\\Classes\\CLSID\\{";
const wchar_t* const kAppSettings = L"SOFTWARE\\LonWorks\\LCA\\Applets\\Quillon\\";
constexpr DWORD kKeyNameBuffer = 260;
// All that KEY_ALL_ACCESS stands for.
constexpr REGSAM kFullAccess = 0xF003F;

class OpenKey {
public:
    OpenKey() = default;
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        if (m_key) RegCloseKey(m_key);
    }
    HKEY* Out() { return &m_key; }
    HKEY Get() const { return m_key; }
    HKEY Detach() { return std::exchange(m_key, nullptr); }

private:
    HKEY m_key = nullptr;
};

std::string TextOfValue(DWORD type, const std::vector<char>& bytes, DWORD size) {
    if (type == REG_SZ || type == REG_EXPAND_SZ) {
        const std::string_view all(bytes.data(), size);
        return std::string(all.substr(0, all.find('\0')));
    }
    if (type == REG_DWORD && size == sizeof(DWORD)) {
        DWORD number = 0;
        memcpy(&number, bytes.data(), sizeof number);
        return std::to_string(number);
    }
    return {};
}

std::wstring ReadValue(HKEY root, std::wstring_view path, std::wstring_view name) {
    OpenKey key;
    if (RegOpenKeyExA(root, Narrow(path).c_str(), 0, KEY_READ, key.Out()) != ERROR_SUCCESS)
        return {};
    const std::string valueName = Narrow(name);
    DWORD type = REG_NONE;
    DWORD size = 0;
    LSTATUS read = RegQueryValueExA(key.Get(), valueName.c_str(), nullptr, &type, nullptr, &size);
    std::vector<char> bytes(size + 1);
    // Another process may write a longer value between the two calls.
    if (read == ERROR_SUCCESS)
        read = RegQueryValueExA(key.Get(), valueName.c_str(), nullptr, &type,
                                reinterpret_cast<BYTE*>(bytes.data()), &size);
    return read == ERROR_SUCCESS ? Widen(TextOfValue(type, bytes, size)) : std::wstring();
}

// Of a path that the system takes up to its first NUL.
bool MeansRoot(const std::string& path) {
    return path.c_str()[0] == '\0';
}

void WriteValue(HKEY root, std::wstring_view path, std::wstring_view name,
                std::wstring_view value) {
    OpenKey key;
    const std::string keyPath = Narrow(path);
    if (MeansRoot(keyPath) || RegCreateKeyA(root, keyPath.c_str(), key.Out()) != ERROR_SUCCESS)
        return;
    const std::string text = Narrow(value);
    RegSetValueExA(key.Get(), Narrow(name).c_str(), 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>(text.size()) + 1);
}

std::wstring AppSettingPath(BSTR section) {
    return kAppSettings + com::Text(section);
}

}  // namespace

CRegistry::~CRegistry() {
    CloseEnumeratedKey();
}

void CRegistry::CloseEnumeratedKey() {
    if (m_enumerated) RegCloseKey(std::exchange(m_enumerated, nullptr));
    m_nextIndex = 0;
}

STDMETHODIMP CRegistry::FindGUUID(BSTR identifier, VARIANT_BOOL* found) {
    return com::Gate(found, [&] {
        OpenKey key;
        const std::string path = kClassKeys + Narrow(com::View(identifier)) + "}";
        return RegOpenKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, KEY_READ, key.Out()) ==
               ERROR_SUCCESS;
    });
}

STDMETHODIMP CRegistry::FindFirstMachineKey(BSTR path, BSTR* name) {
    return com::Gate(name, [&]() -> std::wstring {
        CloseEnumeratedKey();
        OpenKey key;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, Narrow(com::View(path)).c_str(), 0, kFullAccess,
                          key.Out()) != ERROR_SUCCESS)
            return {};
        m_enumerated = key.Detach();
        return NextMachineKey();
    });
}

STDMETHODIMP CRegistry::GetNextMachineKey(BSTR* name) {
    return com::Gate(name, [&] { return NextMachineKey(); });
}

std::wstring CRegistry::NextMachineKey() {
    char name[kKeyNameBuffer];
    if (!m_enumerated ||
        RegEnumKeyA(m_enumerated, m_nextIndex, name, kKeyNameBuffer) != ERROR_SUCCESS)
        return {};
    ++m_nextIndex;
    return Widen(name);
}

STDMETHODIMP CRegistry::get_AppSetting(BSTR section, BSTR name, BSTR* value) {
    return com::Gate(value, [&] {
        return ReadValue(HKEY_CURRENT_USER, AppSettingPath(section), com::View(name));
    });
}

STDMETHODIMP CRegistry::put_AppSetting(BSTR section, BSTR name, BSTR value) {
    return com::Gate([&] {
        WriteValue(HKEY_CURRENT_USER, AppSettingPath(section), com::View(name), com::View(value));
    });
}

STDMETHODIMP CRegistry::get_MachineSetting(BSTR path, BSTR name, BSTR* value) {
    return com::Gate(
        value, [&] { return ReadValue(HKEY_LOCAL_MACHINE, com::View(path), com::View(name)); });
}

STDMETHODIMP CRegistry::put_MachineSetting(BSTR path, BSTR name, BSTR value) {
    return com::Gate([&] {
        WriteValue(HKEY_LOCAL_MACHINE, com::View(path), com::View(name), com::View(value));
    });
}

STDMETHODIMP CRegistry::DeleteMachineSetting(BSTR path, VARIANT_BOOL* deleted) {
    return com::Gate(deleted, [&] {
        const std::string keyPath = Narrow(com::View(path));
        return !MeansRoot(keyPath) &&
               RegDeleteKeyA(HKEY_LOCAL_MACHINE, keyPath.c_str()) == ERROR_SUCCESS;
    });
}

}  // namespace quillon
