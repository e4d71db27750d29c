#include <charconv>

#include "commands.h"
#include "text.h"
#include "window.h"

namespace quorvex::bench::commands {
namespace {

constexpr long kLongestTime = 86'400;  // seconds

double ParseDecimal(const std::wstring& word) {
    const std::string digits = Utf8FromWide(word);
    double number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (read.ec != std::errc() || read.ptr != digits.data() + digits.size())
        throw Failure{L"\"" + word + L"\" is no number"};
    return number;
}

long ParseUpTo(const std::wstring& word, long least, long most) {
    const long number = ParseNumber(word, least);
    if (number > most) throw Failure{L"\"" + word + L"\" is more than " + std::to_wstring(most)};
    return number;
}

// A person answers message boxes while this lives.
class Attendance {
public:
    explicit Attendance(MessageBoxes& boxes) : m_boxes(boxes) { m_boxes.SetAttended(true); }
    Attendance(const Attendance&) = delete;
    Attendance& operator=(const Attendance&) = delete;
    ~Attendance() { m_boxes.SetAttended(false); }

private:
    MessageBoxes& m_boxes;
};

}  // namespace

void Advance(Session& session, const Words& words) {
    session.GetHost().Advance(ParseNumber(words[0], 0));
}

void Plug(Session& session, const Words& words) {
    Host& host = session.GetHost();
    host.Plug(host.Find(words[0]), ParseSwitch(words[1], L"in", L"out"));
}

void Input(Session& session, const Words& words) {
    Host& host = session.GetHost();
    host.SetInput(host.Find(words[0]), ParseUpTo(words[1], 1, 4) - 1,
                  ParseSwitch(words[2], L"on", L"off"));
}

void Status(Session& session, const Words& words) {
    Host& host = session.GetHost();
    host.SetApplicationStatus(host.Find(words[0]),
                              static_cast<unsigned char>(ParseUpTo(words[1], 0, 255)));
}

void Analog(Session& session, const Words& words) {
    Host& host = session.GetHost();
    std::optional<std::int16_t> counts;
    if (words[1] != L"auto") counts = static_cast<std::int16_t>(ParseUpTo(words[1], -32768, 32767));
    host.SetAnalog(host.Find(words[0]), counts);
}

void Calibration(Session& session, const Words& words) {
    Host& host = session.GetHost();
    host.SetCalibrationSwitch(host.Find(words[0]), ParseSwitch(words[1], L"high", L"low"));
}

void Temperature(Session& session, const Words& words) {
    Host& host = session.GetHost();
    host.SetTemperature(host.Find(words[0]), ParseDecimal(words[1]));
}

void Window(Session& session, const Words& words) {
    WindowOptions options;
    std::size_t i = 0;
    if (!words.empty() && words[0] == L"--for") {
        if (words.size() == 1) throw Failure{L"--for needs a number of seconds"};
        options.time = std::chrono::seconds(ParseUpTo(words[1], 1, kLongestTime));
        i = 2;
    }
    Host& host = session.GetHost();
    for (; i < words.size(); ++i) options.open.push_back(host.Find(words[i]).neuron);
    const Attendance attended(session.Boxes());
    BenchWindow(host).Run(options);
    // The person at the window has seen them.
    for (Report& report : host.Reports()) report.seen = true;
    for (Event& event : host.Events()) event.seen = true;
}

}  // namespace quorvex::bench::commands
