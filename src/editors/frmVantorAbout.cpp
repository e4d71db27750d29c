#include "editors/frmVantorAbout.h"

#include <cstring>
#include <optional>
#include <string>

#include "ui/module.h"
#include "window/resource.h"

namespace quillon {

namespace {

// The fixed part of our own module's version block, found by its signature: what reads such a block
// by name is in a DLL that one beside the host's program could take the place of.
std::optional<VS_FIXEDFILEINFO> OwnVersion() {
    const HRSRC place =
        FindResourceW(ui::OwnModule(), MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16));
    const DWORD size = SizeofResource(ui::OwnModule(), place);
    const HGLOBAL loaded = LoadResource(ui::OwnModule(), place);
    if (!loaded) return std::nullopt;
    const auto* block = static_cast<const BYTE*>(LockResource(loaded));
    VS_FIXEDFILEINFO fixed{};
    for (DWORD at = 0; at + sizeof fixed <= size; at += sizeof(DWORD)) {
        std::memcpy(&fixed, block + at, sizeof fixed);
        if (fixed.dwSignature == VS_FFI_SIGNATURE) return fixed;
    }
    return std::nullopt;
}

// Major, minor and revision number.
std::wstring VersionText() {
    const auto fixed = OwnVersion();
    if (!fixed) return {};
    return std::to_wstring(HIWORD(fixed->dwFileVersionMS)) + L"." +
           std::to_wstring(LOWORD(fixed->dwFileVersionMS)) + L"." +
           std::to_wstring(HIWORD(fixed->dwFileVersionLS));
}

}  // namespace

void frmVantorAbout::ShowModal(HWND owner) {
    RunModal(IDD_ABOUT, owner);
}

bool frmVantorAbout::OnInit() {
    SetItemText(IDC_LBLVERSION, L"Version " + VersionText());
    return true;
}

bool frmVantorAbout::OnCommand(int id, int, HWND) {
    if (id != IDOK && id != IDCANCEL) return false;
    End(id);
    return true;
}

}  // namespace quillon
