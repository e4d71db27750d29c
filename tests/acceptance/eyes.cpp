// eyes: tells what the windows on this desktop show. A request a line on standard input, an answer
// a line on standard output, both JSON in UTF-8; {"do": NAME, "window": HANDLE}. It only looks:
// keys and mouse are those of the screen. Its bitness must be that of the program that it looks at.
#include <windows.h>
//
#include <commctrl.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;

// A window that handles no messages for so long is taken for hung.
constexpr UINT kPatience = 30000;
constexpr std::size_t kLongestText = 4096;
// Of a long list the newest rows are told.
constexpr int kMostRows = 300;

std::string Utf8(const std::wstring& text) {
    const int wide = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), wide,
                                                                   nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), wide, bytes.data(), static_cast<int>(bytes.size()),
                        nullptr, nullptr);
    return bytes;
}

HWND HandleOf(const Json& request) {
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(request.at("window").get<long>()));
}

long NumberOf(HWND window) {
    return static_cast<long>(reinterpret_cast<LONG_PTR>(window));
}

DWORD_PTR Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR answer = 0;
    if (!SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kPatience, &answer))
        throw std::runtime_error(IsWindow(window) ? "the window does not answer" : "gone");
    return answer;
}

// Memory inside the process of a window, for messages whose pointers the system does not carry
// over.
class Inside {
public:
    Inside(HWND window, std::size_t bytes) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        m_process =
            OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
        m_place = VirtualAllocEx(m_process, nullptr, bytes, MEM_COMMIT, PAGE_READWRITE);
        if (!m_place) throw std::runtime_error("gone");
    }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
    ~Inside() {
        if (m_place) VirtualFreeEx(m_process, m_place, 0, MEM_RELEASE);
        if (m_process) CloseHandle(m_process);
    }

    char* At(std::size_t offset) const { return static_cast<char*>(m_place) + offset; }
    template <class T>
    void Write(const T& value) const {
        WriteProcessMemory(m_process, m_place, &value, sizeof value, nullptr);
    }
    template <class T>
    T Read() const {
        T value{};
        ReadProcessMemory(m_process, m_place, &value, sizeof value, nullptr);
        return value;
    }
    std::string TextAt(std::size_t offset) const {
        std::wstring text(kLongestText, L'\0');
        ReadProcessMemory(m_process, At(offset), text.data(), (kLongestText - 1) * sizeof(wchar_t),
                          nullptr);
        return Utf8(text.substr(0, text.find(L'\0')));
    }

private:
    HANDLE m_process = nullptr;
    void* m_place = nullptr;
};

constexpr std::size_t kTextPlace = 256;
constexpr std::size_t kInsideBytes = kTextPlace + kLongestText * sizeof(wchar_t);

std::string TextOf(HWND window) {
    std::wstring text(kLongestText, L'\0');
    Send(window, WM_GETTEXT, kLongestText, reinterpret_cast<LPARAM>(text.data()));
    return Utf8(text.substr(0, text.find(L'\0')));
}

Json Describe(HWND window) {
    wchar_t name[128] = {};
    GetClassNameW(window, name, 128);
    RECT place{};
    GetWindowRect(window, &place);
    return {{"window", NumberOf(window)},
            {"parent", NumberOf(GetAncestor(window, GA_PARENT))},
            {"owner", NumberOf(GetWindow(window, GW_OWNER))},
            // Wine keeps with each window which one of the screen it is.
            {"screen", static_cast<long>(reinterpret_cast<LONG_PTR>(
                           GetPropW(window, L"__wine_x11_whole_window")))},
            {"id", GetDlgCtrlID(window)},
            {"class", Utf8(name)},
            {"text", TextOf(window)},
            {"visible", IsWindowVisible(window) != FALSE},
            {"enabled", IsWindowEnabled(window) != FALSE},
            {"rect", {place.left, place.top, place.right, place.bottom}}};
}

BOOL CALLBACK OnWindow(HWND window, LPARAM windows) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

// A window can go while it is being described; then it is left out.
Json DescribeAll(const std::vector<HWND>& windows, bool visibleOnly) {
    Json all = Json::array();
    for (const HWND window : windows) {
        if (visibleOnly && !IsWindowVisible(window)) continue;
        try {
            all.push_back(Describe(window));
        } catch (const std::exception&) {
            if (IsWindow(window)) throw;
        }
    }
    return all;
}

Json Windows(const Json&) {
    std::vector<HWND> windows;
    EnumWindows(OnWindow, reinterpret_cast<LPARAM>(&windows));
    return DescribeAll(windows, true);
}

Json Children(const Json& request) {
    std::vector<HWND> windows;
    EnumChildWindows(HandleOf(request), OnWindow, reinterpret_cast<LPARAM>(&windows));
    return DescribeAll(windows, false);
}

Json Look(const Json& request) {
    const HWND window = HandleOf(request);
    return IsWindow(window) ? Describe(window) : Json();
}

Json Focus(const Json& request) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(GetWindowThreadProcessId(HandleOf(request), nullptr), &state);
    return {{"active", NumberOf(state.hwndActive)},
            {"focus", NumberOf(state.hwndFocus)},
            {"menu", (state.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) != 0},
            {"foreground", NumberOf(GetForegroundWindow())}};
}

Json Rows(const Json& request) {
    const HWND list = HandleOf(request);
    const Inside inside(list, kInsideBytes);
    const auto header = reinterpret_cast<HWND>(Send(list, LVM_GETHEADER));
    const auto columns = static_cast<int>(Send(header, HDM_GETITEMCOUNT));
    const auto count = static_cast<int>(Send(list, LVM_GETITEMCOUNT));
    Json rows = Json::array();
    for (int row = std::max(count - kMostRows, 0); row < count; ++row) {
        Json cells = Json::array();
        for (int column = 0; column < columns; ++column) {
            LVITEMW item{};
            item.iSubItem = column;
            item.pszText = reinterpret_cast<wchar_t*>(inside.At(kTextPlace));
            item.cchTextMax = static_cast<int>(kLongestText);
            inside.Write(item);
            Send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(inside.At(0)));
            cells.push_back(inside.TextAt(kTextPlace));
        }
        const auto state =
            Send(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED | LVIS_FOCUSED);
        rows.push_back({{"cells", cells},
                        {"selected", (state & LVIS_SELECTED) != 0},
                        {"focused", (state & LVIS_FOCUSED) != 0}});
    }
    return rows;
}

Json Tabs(const Json& request) {
    const HWND tabs = HandleOf(request);
    const Inside inside(tabs, kInsideBytes);
    Json captions = Json::array();
    Json places = Json::array();
    const auto count = Send(tabs, TCM_GETITEMCOUNT);
    for (WPARAM tab = 0; tab < count; ++tab) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = reinterpret_cast<wchar_t*>(inside.At(kTextPlace));
        item.cchTextMax = static_cast<int>(kLongestText);
        inside.Write(item);
        Send(tabs, TCM_GETITEMW, tab, reinterpret_cast<LPARAM>(inside.At(0)));
        captions.push_back(inside.TextAt(kTextPlace));
        Send(tabs, TCM_GETITEMRECT, tab, reinterpret_cast<LPARAM>(inside.At(0)));
        RECT place = inside.Read<RECT>();
        MapWindowPoints(tabs, nullptr, reinterpret_cast<POINT*>(&place), 2);
        places.push_back({place.left, place.top, place.right, place.bottom});
    }
    return {{"captions", captions},
            {"rects", places},
            {"selected", static_cast<int>(Send(tabs, TCM_GETCURSEL))}};
}

Json SelectedTab(const Json& request) {
    return static_cast<int>(Send(HandleOf(request), TCM_GETCURSEL));
}

Json Panels(const Json& request) {
    const HWND bar = HandleOf(request);
    const Inside inside(bar, kInsideBytes);
    Json panels = Json::array();
    const auto count = Send(bar, SB_GETPARTS);
    for (WPARAM panel = 0; panel < count; ++panel) {
        Send(bar, SB_GETTEXTW, panel, reinterpret_cast<LPARAM>(inside.At(kTextPlace)));
        panels.push_back(inside.TextAt(kTextPlace));
    }
    return panels;
}

Json Checked(const Json& request) {
    return Send(HandleOf(request), BM_GETCHECK) == BST_CHECKED;
}

// Null when there is no text on it.
Json Clipboard(const Json&) {
    if (!OpenClipboard(nullptr)) throw std::runtime_error("the clipboard is in use");
    Json text;
    if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
        text = Utf8(static_cast<const wchar_t*>(GlobalLock(memory)));
        GlobalUnlock(memory);
    }
    CloseClipboard();
    return text;
}

Json Dpi(const Json&) {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi;
}

const std::map<std::string, Json (*)(const Json&)> kAnswers = {
    {"windows", Windows},     {"children", Children}, {"look", Look},      {"focus", Focus},
    {"rows", Rows},           {"tabs", Tabs},         {"panels", Panels},  {"checked", Checked},
    {"clipboard", Clipboard}, {"dpi", Dpi},           {"tab", SelectedTab}};

std::string Answer(const std::string& line) {
    try {
        const Json request = Json::parse(line);
        return Json{{"answer", kAnswers.at(request.at("do").get<std::string>())(request)}}.dump();
    } catch (const std::exception& error) {
        return Json{{"error", error.what()}}.dump();
    }
}

}  // namespace

int main() {
    SetProcessDPIAware();
    for (std::string line; std::getline(std::cin, line);) std::cout << Answer(line) << std::endl;
    return 0;
}
