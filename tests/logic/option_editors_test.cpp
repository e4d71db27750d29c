#include "editors/option_editors.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using Choice = OptionEditorChoice;

TEST(ReadOptionEditor, NamesTheFiveSets) {
    EXPECT_EQ(ReadOptionEditor(L"AppMode"), Choice{OptionEditor::kAppMode});
    EXPECT_EQ(ReadOptionEditor(L"Occupancy"), Choice{OptionEditor::kOccupancy});
    EXPECT_EQ(ReadOptionEditor(L"Lighting"), Choice{OptionEditor::kLighting});
    EXPECT_EQ(ReadOptionEditor(L"EnergyHoldOff"), Choice{OptionEditor::kEnergyHoldOff});
    EXPECT_EQ(ReadOptionEditor(L"Fan,3"), (Choice{OptionEditor::kFan, 3}));
}

TEST(ReadOptionEditor, FanTakesEveryWholeNumber) {
    EXPECT_EQ(ReadOptionEditor(L"Fan,0"), (Choice{OptionEditor::kFan, 0}));
    EXPECT_EQ(ReadOptionEditor(L"Fan,5"), (Choice{OptionEditor::kFan, 5}));
    EXPECT_EQ(ReadOptionEditor(L"Fan,-1"), (Choice{OptionEditor::kFan, -1}));
    EXPECT_EQ(ReadOptionEditor(L" Fan , 2 "), (Choice{OptionEditor::kFan, 2}));
}

TEST(ReadOptionEditor, FanWithoutANumberIsNone) {
    for (const wchar_t* entry : {L"Fan", L"Fan,", L"Fan,x", L"Fan,2x", L"Fan,2.5", L"Fan,2,3",
                                 L"Fan 2", L"Fan,99999999999"})
        EXPECT_EQ(ReadOptionEditor(entry), std::nullopt) << testing::PrintToString(entry);
}

TEST(ReadOptionEditor, OtherTextsAreNone) {
    for (const wchar_t* entry :
         {L"", L" ", L"appmode", L"APPMODE", L"AppModes", L"AppMode,3", L",", L",3", L"Speed,3"})
        EXPECT_EQ(ReadOptionEditor(entry), std::nullopt) << testing::PrintToString(entry);
}

TEST(ReadOptionEditor, BlanksAroundANameDoNotCount) {
    EXPECT_EQ(ReadOptionEditor(L"  Lighting "), Choice{OptionEditor::kLighting});
}

}  // namespace
}  // namespace quillon
