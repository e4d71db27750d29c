#include "window/LabelPrinting.h"

#include "com/error_text.h"
#include "plugin/settings_text.h"
#include "ui/pump.h"
#include "window/view_lists.h"

namespace quillon {

namespace {

const wchar_t* const kModels = L"Nimbra Codes";
const wchar_t* const kPrinter = L"Label Printer";
constexpr std::size_t kOutBufferSize = 1024;
// A printer that takes nothing for so long, in milliseconds, is given up.
constexpr ULONGLONG kPatience = 10000;
// How long the window may sleep while the printer works, in milliseconds.
constexpr DWORD kNap = 20;

std::vector<std::wstring> ReadKeys(const LabelPrinting::Setting& read, const wchar_t* section) {
    return ReadViewEntries([&](const std::wstring& key) { return read(section, key + L"Model"); });
}

}  // namespace

std::vector<std::wstring> LabelPrinting::ReadModels(const Setting& read) {
    return ReadKeys(read, kModels);
}

void LabelPrinting::ReadPort(const Setting& read) {
    if (const std::wstring port = read(kPrinter, L"COMPort"); !port.empty()) m_portNumber = port;
    if (const std::wstring settings = read(kPrinter, L"COMSettings"); !settings.empty())
        m_portSettings = settings;
}

void LabelPrinting::ReadTemplates(const Setting& read) {
    m_templates = ReadKeys(read, kPrinter);
    // The empty value that ends the list needs a position, too.
    if (m_templates.size() < kPositions) return;
    m_templates.resize(kPositions);
    throw LabelError("The settings file names more than 100 label templates.");
}

std::wstring LabelPrinting::PortCaption() const {
    return L"Porta Seriale: COM" + m_portNumber + L",  Parametri: " + m_portSettings;
}

std::wstring LabelPrinting::TemplatePath(std::size_t position) const {
    return position < m_templates.size() ? m_folder + L"\\" + m_templates[position]
                                         : std::wstring();
}

std::wstring LabelPrinting::FileCaption(std::size_t position) const {
    return L"File etichetta: " + TemplatePath(position);
}

bool LabelPrinting::Print(std::size_t position, const LabelSource& source) {
    m_label.Clear();
    if (!m_portOpened) OpenPort();
    ReadTemplate(position);
    FillPlaceholders(m_label, source.neuronId, YearAndWeek(source.today));
    if (!source.wanted()) return false;
    try {
        return Send(source);
    } catch (...) {
        m_port.Discard();
        throw;
    }
}

void LabelPrinting::OpenPort() {
    m_port.SetOutBufferSize(kOutBufferSize);
    m_port.SetCommPort(m_portNumber);
    m_port.SetSettings(m_portSettings);
    m_port.SetPortOpen(true);
    m_portOpened = true;
}

// The file is closed again before anything is sent, so that it can be mended while a box is up.
void LabelPrinting::ReadTemplate(std::size_t position) {
    if (position >= kPositions) throw LabelError("Only the first 101 models have a template.");
    const std::wstring name = position < m_templates.size() ? m_templates[position] : L"";
    if (!NamesFileInside(name)) com::ThrowSystemError(ERROR_FILE_NOT_FOUND);
    const com::Handle file(CreateFileW(TemplatePath(position).c_str(), GENERIC_READ,
                                       FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                       FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) com::ThrowSystemError(GetLastError());
    char bytes[4096];
    DWORD read = 0;
    do {
        if (!ReadFile(file.Get(), bytes, sizeof bytes, &read, nullptr))
            com::ThrowSystemError(GetLastError());
        m_label.Append({bytes, read});
    } while (read != 0);
}

bool LabelPrinting::Send(const LabelSource& source) {
    std::string_view rest = m_label.Used();
    while (!rest.empty()) {
        const std::string_view piece = rest.substr(0, kLabelPiece);
        m_port.Output(piece);
        if (!WaitUntilSent(source)) return false;
        rest.remove_prefix(piece.size());
    }
    return true;
}

// Only what the port takes counts as progress: an operator may keep a box open in here for as long
// as he likes.
bool LabelPrinting::WaitUntilSent(const LabelSource& source) {
    std::size_t left = m_port.OutBufferCount();
    ULONGLONG progress = GetTickCount64();
    do {
        ui::PumpMessages();
        if (!source.wanted()) {
            m_port.Discard();
            return false;
        }
        const std::size_t now = m_port.OutBufferCount();
        if (now < left)
            progress = GetTickCount64();
        else if (now != 0 && GetTickCount64() - progress >= kPatience)
            throw LabelError("The label printer has taken nothing for 10 seconds.");
        left = now;
        const HANDLE taken = m_port.Taken();
        if (left != 0)
            MsgWaitForMultipleObjectsEx(1, &taken, kNap, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    } while (left != 0);
    return true;
}

}  // namespace quillon
