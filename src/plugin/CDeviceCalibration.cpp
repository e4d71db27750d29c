// CDevice: saving the factory data to a calibration file, and loading it from one.
#include "plugin/CDevice.h"
#include "plugin/MMain.h"
#include "plugin/calibration_file.h"
#include "plugin/factory_data.h"
#include "ui/message_box.h"
#include "ui/pump.h"

namespace quillon {

namespace {

const wchar_t* const kCalibrationKey = L"Calibration";

// Digits of either case.
bool SameDigits(std::wstring_view one, std::wstring_view other) {
    return CompareStringOrdinal(one.data(), static_cast<int>(one.size()), other.data(),
                                static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

std::wstring NeuronIdOf(IDevice& device) {
    com::Bstr neuronId;
    com::Check(device.get_NeuronID(neuronId.Out()));
    return neuronId.Text();
}

}  // namespace

std::wstring ReadCalibrationFile(const std::wstring& file, const std::wstring& neuronId) {
    return ReadIniValue(file, neuronId, kCalibrationKey);
}

void WriteCalibrationFile(const std::wstring& file, const std::wstring& neuronId,
                          const std::wstring& text) {
    WriteIniValue(file, neuronId, kCalibrationKey, text);
}

void ShowMissingCalibrations() {
    ui::ShowMessage(L"No calibration values are present in the file for the device", MB_ICONSTOP,
                    L"Missing calibrations");
}

// An entry that cannot be read, or is no factory data, is asked for again as an empty one is: what
// was read of it before must not be saved as what it holds now, nor replace a good calibration by
// what cannot be loaded.
void CDevice::IDeviceEx_SaveCalibration(const std::wstring& fileName) {
    com::Quietly([&] {
        VARIANT_BOOL granted = VARIANT_FALSE;
        com::Check(moDevice->Focus(nullptr, &granted));
        if (granted == VARIANT_FALSE) return;
        // The text as just read: asking the host may let others read into it.
        std::wstring text;
        while (!ReadFactoryData() || (text = FactoryDigits(m_factoryText)).empty()) {
            const int answer = ui::ShowMessage(L"The operation was not successfull.",
                                               MB_RETRYCANCEL | MB_ICONINFORMATION, L"Warining");
            if (answer != IDRETRY) return;
            ui::PumpMessages();
        }
        WriteCalibrationFile(fileName, NeuronIdOf(*moDevice), text);
    });
}

// Each step that fails is left out; but only 18 digits go to the device.
bool CDevice::IDeviceEx_LoadCalibration(const std::wstring& fileName) {
    return com::Quietly([&] {
        const com::Ptr<IFile> entry = FindDeviceFile(L"FFFF");
        const std::wstring neuronId = com::Quietly([&] { return NeuronIdOf(*moDevice); });
        const std::wstring text = ReadCalibrationFile(fileName, neuronId);
        m_factoryText = text;
        if (!IsFactoryText(text)) {
            ShowMissingCalibrations();
            return false;
        }
        const bool written = entry && com::Quietly([&] {
                                 com::Check(entry->put_ValueText(com::Bstr(text).Get()));
                                 return true;
                             });
        return ReadFactoryData() && written && SameDigits(FactoryDigits(m_factoryText), text);
    });
}

}  // namespace quillon
