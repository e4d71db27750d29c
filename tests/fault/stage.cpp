// The room, its settings and the files that operations work with.
#include <algorithm>

#include "com/error_text.h"
#include "com/late.h"
#include "fault/operations.h"
#include "support/host_app_file.h"

namespace quillon::test {

namespace {

const char* const kSettings =
    "[Settings]\r\nDisplayHW=1\r\nDownLoadCPs=1\r\nCP_AppCode=1\r\nHtmlHelp=room.chm\r\n"
    "[MainView]\r\n0=20\r\n1=2\r\n2=22\r\n3=21\r\n4=3\r\n5=0\r\n"
    "[OptionEditors]\r\n20=AppMode\r\n2=Occupancy\r\n22=Lighting\r\n21=EnergyHoldOff\r\n3=Fan,3\r\n"
    "[TestNVIs]\r\n0=0\r\n1=1\r\n2=3\r\n[CommissioningNCIs]\r\n0=7\r\n"
    "[CommissioningCPs]\r\n0=1\r\n1=2\r\n[AdvancedNCIs]\r\n0=5\r\n1=6\r\n[AdvancedCPs]\r\n0=0\r\n"
    "[ChangeOfValueCPs]\r\n0=4\r\n1=3\r\n"
    "[LowCalib]\r\nCountL=1500\r\nCountH=2000\r\nVoltL=2.2\r\nVoltH=2.5\r\n"
    "[HighCalib]\r\nCountL=6300\r\nCountH=7300\r\nVoltL=9\r\nVoltH=9.6\r\n"
    "[Nimbra Codes]\r\n0Model=KX-1\r\n"
    "[Label Printer]\r\n0Model=label.prn\r\nCOMPort=7\r\nCOMSettings=9600,n,8,1\r\n";

// Two entries that are offered as selected, and one that is not.
const char* const kParameters =
    "[GEN_INFO]\r\nProgramId=9FFFFF0512040410\r\n[NCIs]\r\nTotalNumber=1\r\n"
    "[NCI_0]\r\nIndex=7\r\nValue=2.5\r\nName=nciFlowFactor\r\nMark=1\r\n"
    "[CPs]\r\nTotalNumber=2\r\n[CP_0]\r\nAddress=1\r\nValue=9\r\nName=cpApplCode\r\nMark=1\r\n"
    "[CP_1]\r\nAddress=2\r\nValue=40\r\nName=cpFanHigh\r\nMark=0\r\n";

// With a property whose value has to be made up: all ones, as long as it says.
std::string ApplicationText() {
    std::string text = AppFile().Text();
    return text.insert(text.find("</CPs>"), "<cpUnitName><Length>8</Length></cpUnitName>");
}

const wchar_t* const kPrinted = L"Etichetta stampata";

}  // namespace

const std::vector<Operation>& Operations() {
    static const std::vector<Operation> all = [] {
        std::vector<Operation> joined(DeviceOperations().begin(), DeviceOperations().end());
        joined.insert(joined.end(), WindowOperations().begin(), WindowOperations().end());
        return joined;
    }();
    return all;
}

Json FaultNetwork() {
    Json network = SmallNetwork();
    const auto add = [&](int index, const char* name, const char* type, const char* raw) {
        DeviceOf(network, kRight)["nvs"].push_back(
            {{"index", index}, {"name", name}, {"type", type}, {"raw", raw}});
    };
    add(20, "nviApplicMode", "SNVT_hvac_mode", "03");
    add(21, "nviEnergyHldOff", "SNVT_switch", "0001");
    add(22, "nviLighting", "SNVT_switch", "00FF");
    return network;
}

void WriteInputFiles(const std::wstring& folder) {
    const auto write = [&](const std::wstring& name, const std::string& bytes) {
        WriteBytes(folder + L"\\" + name, bytes);
    };
    write(Wide(kSmallProgramId) + L".ini", kSettings);
    write(kApplicationFile, ApplicationText());
    write(kFactoryFile, "[0000000000A2]\r\nCalibration=27103EA80028011C2F\r\n");
    write(kChosenFile, kParameters);
    write(L"label.prn", "^XA" + std::string(400, '-') + "^FDnnnnnnnnnnnn^FS^XZ\r\n");
}

HRESULT ShowWindowOf(Stage& stage) {
    IDispatch* none = nullptr;
    long rate = 25;
    return stage.room.ex.Get()->ShowFocus(&none, &rate);
}

void PutQuietly(const Stage& stage, Points points, const wchar_t* key, const wchar_t* value) {
    Host().Record(false);
    com::Ptr<IDispatch> all;
    com::Check((stage.host.Get()->*points)(all.Out()));
    const auto point = com::Get(all.Get(), L"Item", {com::Variant(key)}).AsObject();
    com::Put(point.Get(), L"Value", com::Variant(value));
    Host().Record(true);
}

void ChangePolledValues(const Stage& stage) {
    PutQuietly(stage, &IDevice::get_NetworkVariables, L"0", L"25");
    PutQuietly(stage, &IDevice::get_NetworkVariables, L"3", L"40.0 1");
    PutQuietly(stage, &IDevice::get_NetworkVariables, L"20", L"1");
}

int ButtonFor(const Operation& operation, const Box& box) {
    const auto has = [&](int button) {
        return std::find(box.buttons.begin(), box.buttons.end(), button) != box.buttons.end();
    };
    // Of the loader of application files, also for what it has no memory for.
    if (box.text.starts_with(L"Bad Application file: ")) return IDOK;
    if (box.text.starts_with(L"Error when saving the file: ")) return IDOK;
    if (box.text == L"Error: multiple connection index!") return IDOK;
    if (box.text == L"The operation was not successfull.") return IDCANCEL;
    if (box.text == L"No calibration values are present in the file for the device") return IDOK;
    if (box.text == L"La calibrazione e' stata eseguita correttamente.") return IDOK;
    if (box.text == L"Il valore di tensione non e' valido!") return IDOK;
    if (box.text == kPrinted && operation.showsFailures) return IDOK;
    if (box.icon == Icon::kExclamation && operation.showsFailures) return IDOK;
    if (box.text == com::SystemText(E_OUTOFMEMORY)) return IDOK;
    // Of the editors.
    if (box.text.starts_with(L"error in calculating ")) return IDOK;
    if (box.text.starts_with(L"The value cannot ")) return IDOK;
    if (box.text.starts_with(L"Merrowind New_Nimbra PlugIn enables")) return IDOK;
    // Another program than the device's own: not downloaded.
    return has(IDNO) ? IDNO : 0;
}

}  // namespace quillon::test
