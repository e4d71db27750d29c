#include "window/calibration_fixture.h"

#include <cstdio>

#include "plugin/clock.h"

namespace quillon::test {

namespace {

constexpr long kImageEntry = -3;
constexpr long kFactoryEntry = -1;

}  // namespace

void CalibrationTest::SetUp() {
    WindowTest::SetUp();
    WriteSettings(UsualSettings() +
                  "[LowCalib]\r\nCountL=1500\r\nCountH=2000\r\nVoltL=2.2\r\nVoltH=2.5\r\n"
                  "[HighCalib]\r\nCountL=6300\r\nCountH=7300\r\nVoltL=9\r\nVoltH=9.6\r\n");
    SetToday(Date{2026, 11, 21});
    Calibration() = CalibrationRecord();
}

void CalibrationTest::TearDown() {
    SetToday(std::nullopt);
    Calibration() = CalibrationRecord();
    for (const wchar_t* neuron : {kLeft, kRight}) DeleteFileW(CalibrationFile(neuron).c_str());
    WindowTest::TearDown();
}

CalibrationTest::Window CalibrationTest::OpenPage(std::wstring_view neuron) {
    Window window = Open(neuron);
    window->SelectTab(kTabCalibration);
    StopTimers(*window);
    return window;
}

com::Ptr<IFile> CalibrationTest::Entry(std::wstring_view neuron, long identifier) {
    const com::Ptr<IDevice> device = MakeHostDevice();
    com::Check(device->putref_Network(OpenNetwork()));
    com::Check(device->put_NeuronID(com::Bstr(neuron).Get()));
    com::Ptr<IFiles> files;
    com::Check(device->get_Files(files.Out()));
    for (long place = 1;; ++place) {
        com::Ptr<IFile> entry;
        com::Check(files->get_Item(place, entry.Out()));
        long found = 0;
        com::Check(entry->get_Identifier(&found));
        if (found == identifier) return entry;
    }
}

void CalibrationTest::Measure(std::wstring_view neuron, int count, std::wstring_view inputs) {
    constexpr std::size_t kPieces[] = {2, 4, 7, 8};
    std::wstring image(22, L'0');
    for (std::size_t input = 0; input < inputs.size(); ++input)
        image[kPieces[input] * 2 + 1] = inputs[input];
    wchar_t digits[5];
    std::swprintf(digits, 5, L"%04X", static_cast<unsigned>(count & 0xFFFF));
    image.replace(18, 4, digits);
    Host().Record(false);
    com::Check(Entry(neuron, kImageEntry)->put_ValueText(com::Bstr(image).Get()));
    Host().Record(true);
}

std::wstring CalibrationTest::FactoryText(std::wstring_view neuron) {
    Host().Record(false);
    com::Bstr text;
    com::Check(Entry(neuron, kFactoryEntry)->get_ValueText(text.Out()));
    Host().Record(true);
    return text.Text();
}

void CalibrationTest::Type(const frmVantor& window, std::wstring_view voltage) {
    const HWND box = PageItem(window, kTabCalibration, IDC_TXTVOLTAGE);
    SetFocus(box);
    for (const wchar_t one : voltage) SendMessageW(box, WM_CHAR, one, 1);
}

void CalibrationTest::TickHardware(const frmVantor& window) {
    SendMessageW(window.Handle(), WM_TIMER, static_cast<WPARAM>(Timer::kTmrHw), 0);
}

void CalibrationTest::TakePoint(const Window& window, int count, std::wstring_view voltage) {
    Type(*window, voltage);
    Measure(count);
    TickHardware(*window);
}

std::wstring CalibrationTest::CalibrationFile(std::wstring_view neuron) const {
    return InFolder(std::wstring(neuron) + L".tca");
}

std::string CalibrationTest::CalibrationFileText(std::wstring_view neuron) const {
    const std::wstring path = CalibrationFile(neuron);
    return FileExists(path) ? ReadBytes(path) : std::string();
}

Lines CalibrationTest::SeenBoxes() {
    Lines boxes;
    for (const Box& box : Boxes().Seen()) boxes.push_back(box.title + L": " + box.text);
    return boxes;
}

}  // namespace quillon::test
