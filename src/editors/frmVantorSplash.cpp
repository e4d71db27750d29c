#include "editors/frmVantorSplash.h"

#include <ole2.h>
//
#include <olectl.h>

#include "com/ptr.h"
#include "ui/module.h"
#include "window/resource.h"

namespace quillon {

namespace {

// The stored GIF as a bitmap that the caller owns; null when it cannot be decoded.
HBITMAP LoadGif(int resource) {
    const HRSRC place = FindResourceW(ui::OwnModule(), MAKEINTRESOURCEW(resource), L"GIF");
    const HGLOBAL loaded = LoadResource(ui::OwnModule(), place);
    const DWORD size = SizeofResource(ui::OwnModule(), place);
    if (!loaded || size == 0) return nullptr;
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (!memory) return nullptr;
    memcpy(GlobalLock(memory), LockResource(loaded), size);
    GlobalUnlock(memory);
    com::Ptr<IStream> stream;
    com::Ptr<IPicture> picture;
    OLE_HANDLE handle = 0;
    if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.Out()))) {
        GlobalFree(memory);
        return nullptr;
    }
    if (FAILED(OleLoadPicture(stream.Get(), static_cast<LONG>(size), FALSE, __uuidof(IPicture),
                              picture.OutVoid())) ||
        FAILED(picture->get_Handle(&handle)))
        return nullptr;
    // The picture owns its bitmap and is about to go.
    return static_cast<HBITMAP>(
        CopyImage(reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(handle)), IMAGE_BITMAP, 0, 0, 0));
}

SIZE SizeOf(HBITMAP bitmap) {
    BITMAP description{};
    GetObjectW(bitmap, sizeof description, &description);
    return {description.bmWidth, description.bmHeight};
}

int DpiOfScreen() {
    const HDC context = GetDC(nullptr);
    const int dpi = GetDeviceCaps(context, LOGPIXELSX);
    ReleaseDC(nullptr, context);
    return dpi;
}

}  // namespace

std::shared_ptr<frmVantorSplash> frmVantorSplash::Create() {
    std::shared_ptr<frmVantorSplash> form(new frmVantorSplash);
    form->Open();
    return form;
}

frmVantorSplash::~frmVantorSplash() {
    Destroy();
}

void frmVantorSplash::Show(HWND owner) {
    if (!Handle() && !CreateModeless(IDD_SPLASH, owner)) {
        // Nothing would ever close it.
        Unload();
        return;
    }
    ShowWindow(Handle(), SW_SHOWNOACTIVATE);
    UpdateWindow(Handle());
}

void frmVantorSplash::Raise() {
    if (Handle())
        SetWindowPos(Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

bool frmVantorSplash::OnInit() {
    m_picture = LoadGif(DpiOfScreen() > 144 ? IDR_SPLASH_LARGE : IDR_SPLASH);
    if (m_picture) {
        SendMessageW(Item(IDC_IMAGE1), STM_SETIMAGE, IMAGE_BITMAP,
                     reinterpret_cast<LPARAM>(m_picture));
        const auto shown = reinterpret_cast<HBITMAP>(
            SendMessageW(Item(IDC_IMAGE1), STM_GETIMAGE, IMAGE_BITMAP, 0));
        if (shown && shown != m_picture) {
            DeleteObject(m_picture);
            m_picture = shown;
        }
        const SIZE size = SizeOf(m_picture);
        SetWindowPos(Item(IDC_IMAGE1), nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER);
        SetWindowPos(Handle(), nullptr, (GetSystemMetrics(SM_CXSCREEN) - size.cx) / 2,
                     (GetSystemMetrics(SM_CYSCREEN) - size.cy) / 2, size.cx, size.cy,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // Without a timer it goes at once rather than never.
    if (!SetTimer(Handle(), kTimer, kMilliseconds, nullptr))
        PostMessageW(Handle(), WM_TIMER, kTimer, 0);
    return false;
}

std::optional<INT_PTR> frmVantorSplash::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER && wParam == kTimer) {
        KillTimer(Handle(), kTimer);
        Unload();
        return TRUE;
    }
    if (message == WM_CLOSE) {
        Unload();
        return TRUE;
    }
    if (message == WM_MOUSEACTIVATE) {
        SetWindowLongPtrW(Handle(), DWLP_MSGRESULT, MA_NOACTIVATE);
        return TRUE;
    }
    return Dialog::OnMessage(message, wParam, lParam);
}

void frmVantorSplash::OnDestroyed() {
    if (m_picture) DeleteObject(m_picture);
    m_picture = nullptr;
    Unload();
}

}  // namespace quillon
