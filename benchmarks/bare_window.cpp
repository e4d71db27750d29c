#include "bare_window.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"
#include "device_window.h"
#include "host_members.h"
#include "late_call.h"
#include "support/plugin_controls.h"
#include "window/list_rows.h"
#include "window/resource.h"

namespace quillon::benchmarks {

namespace {

INT_PTR CALLBACK Nothing(HWND, UINT, WPARAM, LPARAM) {
    return FALSE;
}

}  // namespace

BareWindow::~BareWindow() {
    DestroyWindow(m_frame);
    DestroyWindow(m_splash);
    ImageList_Destroy(m_images);
}

void BareWindow::Open() {
    CreateWindows();
    for (const char* key : {"HtmlHelp", "DisplayHW", "HideAppDownload"}) Read("Settings", key);
    const auto variables = ReadSection("TestNVIs");
    for (const char* section : {"CommissioningNCIs", "CommissioningCPs", "AdvancedNCIs"})
        ReadSection(section);
    for (int label = 0; label < 6; ++label) Read("MainView", std::to_string(label).c_str());
    const auto properties = ReadSection("AdvancedCPs");
    ReadSection("ChangeOfValueCPs");
    com::Ptr<IDispatch> points;
    com::Check(m_device->get_ConfigProperties(points.Out()));
    Fill(IDC_LVADVANCEDCPS, points.Get(), properties, false);
    com::Check(m_device->get_NetworkVariables(points.Out()));
    Fill(IDC_LVMONITOR, points.Get(), variables, true);
    ShowWindow(m_frame, SW_SHOW);
    SetForegroundWindow(m_frame);
}

HWND BareWindow::Make(int dialog, HWND parent) const {
    return CreateDialogParamW(m_module, MAKEINTRESOURCEW(dialog), parent, Nothing, 0);
}

void BareWindow::CreateWindows() {
    const test::PluginsControls controls(m_module);
    m_splash = Make(IDD_SPLASH, nullptr);
    ShowWindow(m_splash, SW_SHOWNOACTIVATE);
    m_frame = Make(IDD_VANTOR, nullptr);
    for (int page = IDD_PAGE_HW; page <= IDD_PAGE_LABEL; ++page) Make(page, m_frame);
    m_images = ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, 23, 0);
    for (const std::wstring_view key : kImageKeys) {
        const std::wstring name = L"LIST_" + std::wstring(key);
        const auto icon = static_cast<HICON>(
            LoadImageW(m_module, name.c_str(), IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR));
        ImageList_ReplaceIcon(m_images, -1, icon);
        DestroyIcon(icon);
    }
    for (const int id : {IDC_LVMONITOR, IDC_LVADVANCEDCPS, IDC_LVCPS, IDC_LVCOV}) {
        const HWND list = ControlOf(m_frame, id);
        ListView_SetImageList(list, m_images, LVSIL_SMALL);
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = 200;
        ListView_InsertColumn(list, 0, &column);
        ListView_InsertColumn(list, 1, &column);
    }
}

std::string BareWindow::Read(const char* section, const char* key) const {
    char value[1024];
    const DWORD length =
        GetPrivateProfileStringA(section, key, "", value, sizeof value, m_settings.c_str());
    return {value, length};
}

std::vector<std::string> BareWindow::ReadSection(const char* section) const {
    std::vector<std::string> entries;
    for (;;) {
        std::string entry = Read(section, std::to_string(entries.size()).c_str());
        if (entry.empty()) return entries;
        entries.push_back(std::move(entry));
    }
}

void BareWindow::Fill(int id, IDispatch* points, const std::vector<std::string>& entries,
                      bool variables) {
    std::vector<std::array<std::wstring, 2>> rows;
    for (const std::string& entry : entries) {
        BarePump();
        com::Variant key(std::wstring(entry.begin(), entry.end()));
        com::Variant number(static_cast<std::int32_t>(std::stol(entry)));
        const com::Variant point = BareGet(points, host::points::kItem, variables ? &key : &number);
        if (variables) BareGet(point.pdispVal, host::point::kDirection);
        const com::Variant name = BareGet(point.pdispVal, host::point::kName);
        BareGet(point.pdispVal, host::point::kKey);
        const com::Variant value = BareGet(point.pdispVal, host::point::kFormattedValue);
        rows.push_back({name.AsText(), value.AsText()});
    }
    const HWND list = ControlOf(m_frame, id);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ListView_SetItemCount(list, static_cast<int>(rows.size()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
        item.iItem = static_cast<int>(row);
        item.pszText = rows[row][0].data();
        ListView_InsertItem(list, &item);
        ListView_SetItemText(list, item.iItem, 1, rows[row][1].data());
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

}  // namespace quillon::benchmarks
