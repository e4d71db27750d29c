// The fixture of the calibration tests: limits in the settings, a day on the clock, and hands on
// the unit: calibration switch, tester, MODE button.
#pragma once

#include <string>
#include <string_view>

#include "window/file_dialog.h"
#include "window/mCalibra.h"
#include "window/window_test.h"

namespace quillon::test {

// The factory data that LOW at 1753 counts and 2.35 V and HIGH at 6819 counts and 9.30 V give, on
// 21 November 2026: B = 10000, A = 16040, offset 40.
inline constexpr const wchar_t* kCalibrated = L"27103EA80028011C2F";

// As the small network has it.
inline constexpr const wchar_t* kUncalibrated = L"0102030405061A170C";

class CalibrationTest : public WindowTest {
protected:
    void SetUp() override;
    void TearDown() override;

    // The window of a unit, its page "Calibration" shown.
    Window OpenPage(std::wstring_view neuron = kLeft);
    // What the hardware timer finds: this A/D count, and inputs of which the second is MODE.
    void Measure(int count, std::wstring_view inputs = L"0100") { Measure(kLeft, count, inputs); }
    void Measure(std::wstring_view neuron, int count, std::wstring_view inputs);
    // Puts a voltage into the text box, character by character.
    static void Type(const frmVantor& window, std::wstring_view voltage);
    static void TickHardware(const frmVantor& window);
    // A point as the operator takes it. The box that may come up must have its answer.
    void TakePoint(const Window& window, int count, std::wstring_view voltage);
    void TakeLow(const Window& window) { TakePoint(window, 1753, L"2.35"); }
    void TakeHigh(const Window& window) { TakePoint(window, 6819, L"9.3"); }

    static std::wstring Instructions(const frmVantor& window) {
        return PageText(window, kTabCalibration, IDC_LBLISTRUZIONI);
    }
    static std::wstring Voltage(const frmVantor& window) {
        return PageText(window, kTabCalibration, IDC_TXTVOLTAGE);
    }
    // Entry "FFFF" of a unit, past the plug-in.
    std::wstring FactoryText(std::wstring_view neuron = kLeft);
    std::wstring CalibrationFile(std::wstring_view neuron = kLeft) const;
    // Its text; empty when there is no such file.
    std::string CalibrationFileText(std::wstring_view neuron = kLeft) const;
    // Boxes so far, each "title: text".
    Lines SeenBoxes();

private:
    com::Ptr<IFile> Entry(std::wstring_view neuron, long identifier);
};

inline constexpr const wchar_t* kMissingBox =
    L"Missing calibrations: No calibration values are present in the file for the device";
inline constexpr const wchar_t* kDoneBox =
    L"Quillon: La calibrazione e' stata eseguita correttamente.";

}  // namespace quillon::test
