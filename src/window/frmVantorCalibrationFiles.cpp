// frmVantor: saving the device's calibration to a file and loading it from one.
#include "ui/file_dialog.h"
#include "window/frmVantor.h"

namespace quillon {

namespace {

const ui::FileFilter kCalibrationFiles{L"CAL Files (*.tca)", L"*.tca"};

}  // namespace

// The device objects are those of the start: a window closed meanwhile has let go of its own.
void frmVantor::SaveCalibrationFile() {
    RunBusy([&] {
        const com::Ptr<IDevice> device = m_device;
        const com::Ptr<IDeviceEx> deviceEx = m_deviceEx;
        com::Bstr neuronId;
        com::Check(device->get_NeuronID(neuronId.Out()));
        if (!IsOpen()) return;
        if (const auto file = ui::AskSaveFile(Handle(), L"Save calibration data to file...",
                                              kCalibrationFiles, neuronId.Text(), L"tca"))
            com::Check(deviceEx->SaveCalibration(com::Bstr(*file).Get()));
    });
}

void frmVantor::LoadCalibrationFile() {
    RunBusy([&] {
        const com::Ptr<IDeviceEx> device = m_deviceEx;
        const auto file =
            ui::AskOpenFile(Handle(), L"Download calibration data from file...", kCalibrationFiles);
        if (!file) return;
        com::Check(device->LoadCalibration(com::Bstr(*file).Get()));
        if (IsOpen()) SSCalibrations_Click();
    });
}

}  // namespace quillon
