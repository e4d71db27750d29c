// frmCPModif1: the mark "Invalid".
#include "editors/numeric_editor_test.h"

namespace quillon::test {
namespace {

class InvalidMark : public NumericEditor {
protected:
    FakePoint point{L"SignedNumeric", L"21.5"};
    void SetUp() override {
        NumericEditor::SetUp();
        point.Set(L"InvalidValue", L"327.67");
    }
    static bool Checked(const Editor& editor) {
        return IsDlgButtonChecked(editor.Window(), IDC_CHKINVALID) == BST_CHECKED;
    }
};

TEST_F(InvalidMark, ShowsTheInvalidValueAndWritesIt) {
    Edit(point, [&](const Editor& editor) {
        EXPECT_TRUE(IsWindowVisible(editor.Item(IDC_CHKINVALID)));
        EXPECT_FALSE(Checked(editor));
        editor.Type(L"\b");
        editor.Key(VK_TAB);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_CHKINVALID));
        editor.Click(IDC_CHKINVALID);
        EXPECT_EQ(editor.Text(), L"327.67");
        EXPECT_FALSE(editor.IsEnabled(IDC_TXTNEWCPVALUE));
        EXPECT_TRUE(editor.IsEnabled(IDOK));
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"327.67"});
}

TEST_F(InvalidMark, ClearedItShowsTheCurrentValueAgain) {
    Edit(point, [&](const Editor& editor) {
        editor.Click(IDC_CHKINVALID);
        point.Set(L"Value", L"22,5");
        editor.Click(IDC_CHKINVALID);
        EXPECT_EQ(editor.Text(), L"22.5");
        EXPECT_EQ(editor.Selected(), (Selection{0, 4}));
        EXPECT_TRUE(editor.IsEnabled(IDC_TXTNEWCPVALUE));
        EXPECT_EQ(GetFocus(), editor.Item(IDC_TXTNEWCPVALUE));
        EXPECT_TRUE(editor.IsEnabled(IDOK));
    });
}

TEST_F(InvalidMark, CheckedByCodeAtOpeningRunsTheClickRule) {
    point.Set(L"Value", L"327,67");
    Edit(point, [&](const Editor& editor) {
        EXPECT_TRUE(Checked(editor));
        EXPECT_EQ(editor.Text(), L"327.67");
        EXPECT_FALSE(editor.IsEnabled(IDC_TXTNEWCPVALUE));
        EXPECT_TRUE(editor.IsEnabled(IDOK));
    });
}

TEST_F(InvalidMark, WhileCheckedTheUpperLimitIsNotAsked) {
    Limit(point, L"", L"30");
    Edit(point, [&](const Editor& editor) {
        editor.Click(IDC_CHKINVALID);
        EXPECT_EQ(editor.Text(), L"327.67");
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"327.67"});
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(InvalidMark, LowerLimitIsMetAndARefusalEndsTheMark) {
    point.Set(L"InvalidValue", L"-999");
    Limit(point, L"0", L"");
    Edit(point, [&](const Editor& editor) {
        editor.Click(IDC_CHKINVALID);
        Boxes().Answer(IDOK);
        editor.Ok();
        EXPECT_EQ(LastBox().text, L"The value cannot not be less than 0");
        EXPECT_FALSE(Checked(editor));
        EXPECT_TRUE(editor.IsEnabled(IDC_TXTNEWCPVALUE));
        EXPECT_EQ(editor.Text(), L"0");
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(InvalidMark, InvalidValueThatIsNoNumberIsWrittenInSpiteOfALowerLimit) {
    Limit(point.Set(L"InvalidValue", L"NaN"), L"10", L"");
    Edit(point, [](const Editor& editor) {
        editor.Click(IDC_CHKINVALID);
        EXPECT_EQ(editor.Text(), L"NaN");
        editor.Ok();
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Written(), Lines{L"NaN"});
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(InvalidMark, FailingHostLeavesTheTextWhenCleared) {
    Edit(point, [&](const Editor& editor) {
        editor.Click(IDC_CHKINVALID);
        point.Fail(L"Value.get");
        editor.Click(IDC_CHKINVALID);
        EXPECT_EQ(editor.Text(), L"327.67");
        EXPECT_TRUE(editor.IsEnabled(IDC_TXTNEWCPVALUE));
    });
}

TEST_F(InvalidMark, BlankInvalidValueHidesIt) {
    point.Set(L"InvalidValue", L"  ");
    Edit(point,
         [](const Editor& editor) { EXPECT_FALSE(IsWindowVisible(editor.Item(IDC_CHKINVALID))); });
}

}  // namespace
}  // namespace quillon::test
