// frmVantor: saving the device's calibration to a file and loading it from one.
#include "ui/file_dialog.h"
#include "window/frmVantor.h"

namespace quillon {

namespace {

const ui::FileFilter kCalibrationFiles{L"CAL Files (*.tca)", L"*.tca"};

}  // namespace

void frmVantor::SaveCalibrationFile() {
    RunBusy([&] {
        com::Bstr neuronId;
        com::Check(m_device->get_NeuronID(neuronId.Out()));
        const com::Ptr<IDeviceEx> device = m_deviceEx;
        if (const auto file = ui::AskSaveFile(Handle(), L"Save calibration data to file...",
                                              kCalibrationFiles, neuronId.Text(), L"tca"))
            com::Check(device->SaveCalibration(com::Bstr(*file).Get()));
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
