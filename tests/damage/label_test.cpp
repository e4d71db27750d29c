// Damaged label templates, printed with the button of the label tab.
#include <algorithm>
#include <cstdio>

#include "damage/damage_test.h"
#include "fault/device_window.h"
#include "fault/stand_ins.h"

namespace quillon::test {
namespace {

constexpr std::size_t kLongest = 13'000;
const char* const kSettings =
    "DisplayHW=1\r\n[Nimbra Codes]\r\n0Model=KX-1\r\n"
    "[Label Printer]\r\nCOMPort=7\r\n0Model=label.zpl\r\n";

// Year and week of today, as a label has them.
std::string YearAndWeek() {
    SYSTEMTIME today{};
    GetLocalTime(&today);
    SYSTEMTIME first = today;
    first.wMonth = first.wDay = 1;
    ULARGE_INTEGER days[2];
    const SYSTEMTIME* const dates[] = {&first, &today};
    for (int i = 0; i < 2; ++i) {
        FILETIME time{};
        SystemTimeToFileTime(dates[i], &time);
        days[i].LowPart = time.dwLowDateTime;
        days[i].HighPart = time.dwHighDateTime;
    }
    constexpr ULONGLONG kDay = 24ull * 3600 * 10'000'000;
    const auto day = static_cast<unsigned>((days[1].QuadPart - days[0].QuadPart) / kDay);
    char text[16];
    std::snprintf(text, sizeof text, "%02u%02u", today.wYear % 100u, std::min((day + 6) / 7, 52u));
    return text;
}

void Replace(std::string& text, const std::string& field, const std::string& value, int times) {
    for (; times > 0; --times) {
        const std::size_t place = text.find(field);
        if (place == std::string::npos) return;
        text.replace(place, field.size(), value);
    }
}

std::string Filled(std::string label) {
    Replace(label, "nnnnnnnnnnnn", Narrow(kRight), 5);
    Replace(label, "YYWW", YearAndWeek(), 3);
    return label;
}

class DamagedLabels : public DamageTest {
protected:
    void SetUp() override {
        DamageTest::SetUp();
        WriteSettings(kSettings);
        StandInForSystem(Module());
        m_window = OpenWindow(FreshRoom());
        SelectTab(m_window, L"Label Print");
        Host().Clear();
    }
    void TearDown() override {
        DropRoom();
        ForgetPrinted();
        DamageTest::TearDown();
    }

    std::string Take(const std::string& bytes, Random&) override { return Judge(bytes); }
    void ExpectGoodWorks() override { EXPECT_EQ(Judge(Example("room-unit.zpl")), "printed"); }

private:
    std::string Judge(const std::string& bytes) {
        WriteBytes(InFolder(L"label.zpl"), bytes);
        Boxes().AnswerBy([](const Box& box) {
            return box.text == L"Etichetta stampata" || box.icon == Icon::kExclamation ? IDOK : 0;
        });
        const std::string early = Filled(bytes);
        PrintFirstLabel(m_window);
        const std::string received = Printed().substr(m_printed);
        m_printed = Printed().size();
        EXPECT_EQ(Changes(Host().Log()), Lines()) << "printing writes nothing to the device";
        Host().Clear();
        const auto boxes = NewBoxes();
        EXPECT_EQ(boxes.size(), 1u) << "printed, or told why not";
        if (bytes.size() > kLongest) {
            EXPECT_EQ(received, "") << "nothing of a label that is too long";
            EXPECT_TRUE(!boxes.empty() && boxes[0].icon == Icon::kExclamation);
            return "refused: longer than 13,000 bytes";
        }
        // The date may have changed meanwhile.
        EXPECT_TRUE(received == early || received == Filled(bytes)) << received;
        EXPECT_TRUE(!boxes.empty() && boxes[0].text == L"Etichetta stampata");
        return "printed";
    }

    HWND m_window = nullptr;
    std::size_t m_printed = 0;
};

TEST_F(DamagedLabels, ArePrintedAsTheyAreOrTold) {
    RunAll(FileKind::kLabel, {Example("room-unit.zpl"), Example("room-unit-logo.epl")});
}

}  // namespace
}  // namespace quillon::test
