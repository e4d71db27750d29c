#include "editors/frmVantorAbout.h"

#include <string>
#include <vector>

#include "ui/module.h"
#include "window/resource.h"

namespace quillon {

namespace {

// Major, minor and revision number of our own module.
std::wstring VersionText() {
    const HRSRC place =
        FindResourceW(ui::OwnModule(), MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16));
    const DWORD size = SizeofResource(ui::OwnModule(), place);
    const HGLOBAL loaded = LoadResource(ui::OwnModule(), place);
    if (!loaded || size == 0) return {};
    const auto* bytes = static_cast<const BYTE*>(LockResource(loaded));
    // The fixed part follows the block's key; a copy, for reading the block may write into it.
    std::vector<BYTE> block(bytes, bytes + size);
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length)) return {};
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
