// frmVantor: the tab "Label Print".
#include "com/error_text.h"
#include "plugin/clock.h"
#include "plugin/number_text.h"
#include "ui/message_box.h"
#include "window/frmVantor.h"

namespace quillon {

namespace {

const wchar_t* const kPrinted = L"Etichetta stampata";

void ShowFailure(const std::wstring& text) {
    ui::ShowMessage(text, MB_OK | MB_ICONEXCLAMATION);
}

}  // namespace

// The box about too many templates comes last: the window may be gone after it.
void frmVantor::SetUpLabelTab() {
    if (!m_label.TakeSetUp()) return;
    const auto read = [this](const wchar_t* section, const std::wstring& key) {
        return ReadSetting(section, key);
    };
    Page& page = PageAt(kTabLabelPrint);
    const HWND models = page.Item(IDC_NIMBRA_MODEL_LIST);
    for (const std::wstring& model : LabelPrinting::ReadModels(read))
        SendMessageW(models, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(model.c_str()));
    EnableWindow(page.Item(IDC_NIMBRA_PRINTBUTTON), FALSE);
    m_label.ReadPort(read);
    page.SetItemText(IDC_LABELCOMSETTINGS, m_label.PortCaption());
    try {
        m_label.ReadTemplates(read);
    } catch (...) {
        ShowFailure(com::DescribeCurrentException());
    }
}

std::optional<std::size_t> frmVantor::ChosenModel() {
    const LRESULT place =
        SendMessageW(PageAt(kTabLabelPrint).Item(IDC_NIMBRA_MODEL_LIST), LB_GETCURSEL, 0, 0);
    if (place < 0) return std::nullopt;
    return static_cast<std::size_t>(place);
}

void frmVantor::ChooseModel() {
    const auto position = ChosenModel();
    if (!position) return;
    PageAt(kTabLabelPrint).SetItemText(IDC_LABELFILENAME, m_label.FileCaption(*position));
    if (!m_printing) EnablePrinting(true);
}

// A disabled control that kept the focus would swallow every key.
void frmVantor::EnablePrinting(bool enable) {
    const Page& page = PageAt(kTabLabelPrint);
    const HWND button = page.Item(IDC_NIMBRA_PRINTBUTTON);
    if (!enable && GetFocus() == button) SetFocus(page.Item(IDC_NIMBRA_MODEL_LIST));
    EnableWindow(button, enable);
}

void frmVantor::PrintLabel() {
    const auto position = ChosenModel();
    if (!position || !IsWindowEnabled(PageAt(kTabLabelPrint).Item(IDC_NIMBRA_PRINTBUTTON))) return;
    RunBusy([&] {
        m_printing = true;
        EnablePrinting(false);
        const bool printed = SendLabel(*position);
        m_printing = false;
        if (!IsOpen()) return;
        if (printed)
            EndPrint();
        else if (ChosenModel())
            EnablePrinting(true);
    });
}

// True when the printer has taken the label; a failure has been shown.
bool frmVantor::SendLabel(std::size_t position) {
    const com::Ptr<IDevice> device = m_device;
    const LabelSource source{[&] {
                                 if (!device) throw com::Error(E_POINTER);
                                 com::Bstr neuron;
                                 com::Check(device->get_NeuronID(neuron.Out()));
                                 return neuron.Text();
                             },
                             [&] { return IsOpen(); }, Today()};
    try {
        return m_label.Print(position, source);
    } catch (...) {
        const std::wstring failure = com::DescribeCurrentException();
        if (IsOpen()) ShowFailure(failure);
        return false;
    }
}

// With nothing selected, choosing the same model again counts as a choice.
void frmVantor::EndPrint() {
    ui::ShowMessage(kPrinted, MB_OK);
    if (!IsOpen()) return;
    EnablePrinting(false);
    SendMessageW(PageAt(kTabLabelPrint).Item(IDC_NIMBRA_MODEL_LIST), LB_SETCURSEL,
                 static_cast<WPARAM>(-1), 0);
    m_applicationCodeIndex = com::Quietly(
        [&] { return LenientWhole(ReadSetting(L"Settings", L"ApplicationCodeCPIndex")); });
    SelectTab(kTabHw);
}

}  // namespace quillon
