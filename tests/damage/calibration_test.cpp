// Damaged calibration files, loaded by the member that a host calls.
#include <algorithm>

#include "damage/damage_test.h"

namespace quillon::test {
namespace {

constexpr long kFactory = -1;
const wchar_t* const kMissing = L"No calibration values are present in the file for the device";

bool IsHex(wchar_t one) {
    return (one >= L'0' && one <= L'9') || (one >= L'A' && one <= L'F') ||
           (one >= L'a' && one <= L'f');
}

// Also of a file whose characters have become units of 16 bits.
std::string WithoutNuls(std::string bytes) {
    std::erase(bytes, '\0');
    return bytes;
}

class DamagedCalibrations : public DamageTest {
protected:
    std::string Take(const std::string& bytes, Random&) override { return Judge(bytes); }
    void ExpectGoodWorks() override { EXPECT_EQ(Judge(Good()), "taken"); }

    static std::string Good() { return "[0000000000A2]\r\nCalibration=27103EA80028011C2F\r\n"; }
    std::string Saved() {
        const Room& room = FreshRoom();
        EXPECT_EQ(room.ex->SaveCalibration(com::Bstr(InFolder(L"out.tca")).Get()), S_OK);
        DropRoom();
        return ReadBytes(InFolder(L"out.tca"));
    }

private:
    std::string Judge(const std::string& bytes) {
        const std::wstring path = InFolder(L"in.tca");
        WriteBytes(path, bytes);
        Boxes().AnswerBy([](const Box& box) { return box.text == kMissing ? IDOK : 0; });
        const Room& room = FreshRoom();
        const std::wstring before = EntryText(kFactory);
        Host().Clear();
        EXPECT_EQ(room.ex->LoadCalibration(com::Bstr(path).Get()), S_OK);
        const Lines changes = Changes(Host().Log());
        const std::wstring after = EntryText(kFactory);
        const bool told = !NewBoxes().empty();
        EXPECT_EQ(changes.size(), told ? 0u : 1u) << "told, or written";
        if (told)
            EXPECT_EQ(after, before);
        else
            ExpectFromFile(after, bytes);
        DropRoom();
        return told ? "refused: no values for the device" : "taken";
    }

    static void ExpectFromFile(const std::wstring& text, const std::string& bytes) {
        EXPECT_EQ(text.size(), 18u);
        EXPECT_TRUE(std::ranges::all_of(text, IsHex)) << Narrow(text);
        std::string upper = WithoutNuls(bytes);
        for (char& one : upper)
            if (one >= 'a' && one <= 'f') one = static_cast<char>(one - 'a' + 'A');
        EXPECT_NE(upper.find(Narrow(text)), std::string::npos) << "not in the file";
    }
};

TEST_F(DamagedCalibrations, AreToldOrLoaded) {
    const std::string other = Example("0123456789AB.tca");
    RunAll(FileKind::kCalibration, {Good(), Saved(), other + Good(), Good() + Saved() + other});
}

}  // namespace
}  // namespace quillon::test
