// frmVantor: the commands that move files from and to the device.
#include "model/frmCPDownload.h"
#include "ui/wait_cursor.h"
#include "window/frmVantor.h"

namespace quillon {

namespace {

const ui::FileFilter kApplicationFiles{L"APP Files (*.app)", L"*.app"};
const ui::FileFilter kParameterFiles{L"CPS Files (*.cps)", L"*.cps"};
// What the host keeps of a display has a format of the host's own.
const ui::FileFilter kDisplayFiles{L"All Files (*.*)", L"*.*"};

// The device window whose parameter download runs. The temporary file is one for all windows, so
// that only one download may use it.
HWND& DownloadingWindow() {
    static HWND window = nullptr;
    return window;
}

class DownloadTurn {
public:
    explicit DownloadTurn(HWND window) { DownloadingWindow() = window; }
    DownloadTurn(const DownloadTurn&) = delete;
    DownloadTurn& operator=(const DownloadTurn&) = delete;
    ~DownloadTurn() { DownloadingWindow() = nullptr; }
};

}  // namespace

bool frmVantor::OnTransferCommand(int id) {
    switch (id) {
        case IDM_APPLICATION_SAVE:
            ExportApplication();
            return true;
        case IDM_APPLICATION_DOWNLOAD:
            DownloadApplication();
            return true;
        case IDM_DISPLAY_SAVE:
            SaveDisplay();
            return true;
        case IDM_DISPLAY_DOWNLOAD:
            DownloadDisplay();
            return true;
        case IDM_PARAM_SAVE:
            SaveParameters();
            return true;
        case IDM_PARAM_DOWNLOAD:
            DownloadParameters();
            return true;
        default:
            return false;
    }
}

std::wstring frmVantor::DisplayName() const {
    return com::Quietly([&] {
        com::Bstr name;
        com::Check(m_device->get_DisplayName(name.Out()));
        return name.Text();
    });
}

// Asks for the file to write, then lets the call do so. The device objects are those of the start:
// a window closed meanwhile has let go of its own. A window closed by then asks for nothing.
template <class Call>
void frmVantor::SaveToFile(const wchar_t* title, const ui::FileFilter& filter,
                           const wchar_t* extension, Call call) {
    RunBusy([&] {
        const com::Ptr<IDevice> device = m_device;
        const com::Ptr<IDeviceEx> deviceEx = m_deviceEx;
        const std::wstring name = DisplayName();
        if (!IsOpen()) return;
        const auto file = ui::AskSaveFile(Handle(), title, filter, name, extension);
        if (!file) return;
        const ui::WaitCursor wait;
        com::Bstr path(*file);
        call(*device, *deviceEx, path);
    });
}

template <class Call>
void frmVantor::LoadFromFile(const wchar_t* title, const ui::FileFilter& filter, Call call) {
    RunBusy([&] {
        const com::Ptr<IDevice> device = m_device;
        const com::Ptr<IDeviceEx> deviceEx = m_deviceEx;
        const auto file = ui::AskOpenFile(Handle(), title, filter);
        if (file) call(*device, *deviceEx, *file);
    });
}

void frmVantor::ExportApplication() {
    SaveToFile(L"Save Application to file...", kApplicationFiles, L"app",
               [](IDevice&, IDeviceEx& device, com::Bstr& path) {
                   VARIANT_BOOL done = VARIANT_FALSE;
                   com::Check(device.AppExport(path.InOut(), &done));
               });
}

void frmVantor::DownloadApplication() {
    LoadFromFile(L"Download Application from file...", kApplicationFiles,
                 [&](IDevice&, IDeviceEx& device, const std::wstring& file) {
                     const ui::WaitCursor wait;
                     // Also where the device takes only a part.
                     m_updateDue = true;
                     long result = 0;
                     com::Check(device.AppDownload(com::Bstr(file).Get(), &result));
                 });
}

void frmVantor::SaveDisplay() {
    SaveToFile(L"Save Display to file...", kDisplayFiles, nullptr,
               [](IDevice&, IDeviceEx& device, com::Bstr& path) {
                   VARIANT_BOOL done = VARIANT_FALSE;
                   com::Check(device.DisplayExport(path.Get(), &done));
               });
}

void frmVantor::DownloadDisplay() {
    LoadFromFile(L"Download Display from file...", kDisplayFiles,
                 [](IDevice&, IDeviceEx& device, const std::wstring& file) {
                     const ui::WaitCursor wait;
                     long result = 0;
                     com::Check(device.DisplayDownload(com::Bstr(file).Get(), &result));
                 });
}

void frmVantor::SaveParameters() {
    SaveToFile(L"Save parameters to file...", kParameterFiles, L"cps",
               [](IDevice& device, IDeviceEx&, com::Bstr& path) {
                   long result = 0;
                   com::Check(device.ParameterExport(path.Get(), &result));
               });
}

void frmVantor::DownloadParameters() {
    if (const HWND other = DownloadingWindow()) {
        SetForegroundWindow(GetLastActivePopup(other));
        return;
    }
    const DownloadTurn turn(Handle());
    LoadFromFile(
        L"Download parameters from file...", kParameterFiles,
        [&](IDevice& device, IDeviceEx&, const std::wstring& file) {
            if (!IsOpen()) return;
            frmCPDownload dialog;
            dialog.SetSourceFile(file);
            dialog.ShowModal(Handle());
            if (dialog.ResultFile().empty()) return;
            const ui::WaitCursor wait;
            long result = 0;
            m_updateDue = true;
            com::Check(device.ParameterDownload(com::Bstr(dialog.ResultFile()).Get(), &result));
        });
}

}  // namespace quillon
