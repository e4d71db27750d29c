// frmVantor: one step of the calibration procedure, at every tick of the hardware timer.
#include "com/module.h"
#include "plugin/calibration_file.h"
#include "plugin/clock.h"
#include "plugin/settings_text.h"
#include "ui/message_box.h"
#include "window/frmVantor.h"
#include "window/mCalibra.h"

namespace quillon {

namespace {

// The record is of the whole process, and a step lets messages be handled: a step of another window
// must not meet it half-way.
class Turn {
public:
    Turn() : m_mine(!std::exchange(s_taken, true)) {}
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() {
        if (m_mine) s_taken = false;
    }
    bool IsMine() const { return m_mine; }

private:
    static inline bool s_taken = false;
    bool m_mine;
};

// Writes the device's calibration file and has the device load it. True when the device holds it.
bool SaveCalibration(const CalibrationValues& values, CDevice& device) {
    const auto text = CalibrationText(values, Today());
    if (!text) return false;
    com::Bstr id;
    com::Check(device.HostDevice().get_NeuronID(id.Out()));
    const std::wstring neuronId = id.Text();
    const auto name = CalibrationFileName(neuronId);
    const std::wstring file = name ? com::ModuleFolder() + L"\\" + *name : std::wstring();
    WriteCalibrationFile(file, neuronId, *text);
    // A file that could not be written may hold an older calibration, which is not to be loaded.
    if (ReadCalibrationFile(file, neuronId) != *text) {
        ShowMissingCalibrations();
        return false;
    }
    return device.IDeviceEx_LoadCalibration(file);
}

}  // namespace

void frmVantor::CalibrationStep(std::int16_t count, std::uint8_t inputs) {
    Page& page = PageAt(kTabCalibration);
    const std::wstring typed = page.ItemText(IDC_TXTVOLTAGE);
    const Turn turn;
    if (!IsModeAlone(inputs) || typed.empty() || !turn.IsMine()) return;
    const float volts = TypedVoltage(typed);
    page.SetItemText(IDC_TXTVOLTAGE, L"");
    const auto limits = ReadCalibrationLimits(
        [this](const wchar_t* section, const wchar_t* key) { return ReadSetting(section, key); });
    const CalibrationPoint point = Classify(count, volts, limits);
    if (point == CalibrationPoint::kNone) {
        ui::ShowMessage(kVoltageNotValid, MB_OK | MB_ICONEXCLAMATION, kVoltageNotValidTitle);
        return;
    }
    Calibration().Take(point, count, volts);
    page.SetItemText(IDC_LBLISTRUZIONI, point == CalibrationPoint::kLow ? kLowTaken : kHighTaken);
    if (Calibration().IsComplete()) FinishCalibration();
}

// Ends silently, with both points kept, where there are no values or the device did not take them.
// The instructions come back then: that the last point was taken would read as success of the
// whole.
void frmVantor::FinishCalibration() {
    const auto values = ComputeCalibration(Calibration());
    const com::Ptr<CDevice> device = m_object;
    const bool calibrated =
        values && com::Quietly([&] { return SaveCalibration(*values, *device); });
    if (!calibrated) {
        if (IsOpen()) PageAt(kTabCalibration).SetItemText(IDC_LBLISTRUZIONI, kInstructions);
        return;
    }
    ui::ShowMessage(kCalibrationDone, MB_OK | MB_ICONINFORMATION);
    Calibration() = CalibrationRecord();
    if (!IsOpen()) return;
    SSCalibrations_Click();
    if (!IsOpen()) return;
    SelectTab(kTabLabelPrint);
    HideTab(kTabCalibration);
}

}  // namespace quillon
