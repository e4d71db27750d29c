// CDevice: reading the physical inputs, reading and setting the outputs.
#include "plugin/CDevice.h"

namespace quillon {

namespace {

// Places in the input/output image.
constexpr std::size_t kFirstOutputByte = 4;
constexpr std::size_t kSecondOutputByte = 5;

void RequirePointer(const void* target) {
    if (!target) throw com::Error(E_POINTER);
}

}  // namespace

std::wstring CDevice::ReadImageText(com::Ptr<IFile>& entry) {
    entry = FindDeviceFile(L"FFFD");
    if (!entry) throw com::Error(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    com::Bstr text;
    com::Check(entry->get_ValueText(text.Out()));
    return text.Text();
}

void CDevice::IDeviceEx_ReadInputs(std::int16_t* analog, std::uint8_t* inputs) {
    com::Ptr<IFile> entry;
    const InputsReading reading = ReadInputImage(ReadImageText(entry));
    if (!reading.analog) throw com::Error(DISP_E_TYPEMISMATCH);
    RequirePointer(analog);
    *analog = *reading.analog;
    if (!reading.inputs) throw com::Error(DISP_E_TYPEMISMATCH);
    RequirePointer(inputs);
    *inputs = *reading.inputs;
}

void CDevice::IDeviceEx_ReadOutputs(std::uint8_t* first, std::uint8_t* second) {
    com::Ptr<IFile> entry;
    const auto image = ReadOutputImage(ReadImageText(entry));
    if (!image) throw com::Error(DISP_E_TYPEMISMATCH);
    RequirePointer(first);
    *first = (*image)[kFirstOutputByte];
    RequirePointer(second);
    *second = (*image)[kSecondOutputByte];
}

void CDevice::IDeviceEx_WriteOutputs(std::uint8_t first, std::uint8_t second) {
    com::Ptr<IFile> entry;
    auto image = ReadOutputImage(ReadImageText(entry));
    if (!image) throw com::Error(DISP_E_TYPEMISMATCH);
    (*image)[kFirstOutputByte] = first;
    (*image)[kSecondOutputByte] = second;
    // Only these bytes are written back: the inputs behind them are not ours to set.
    com::Check(entry->put_ValueText(com::Bstr(OutputImageText(*image)).Get()));
}

}  // namespace quillon
