// frmCPModif1 by real keys.
#include "editors/numeric_editor_test.h"
#include "support/plugin_window.h"

namespace quillon::test {
namespace {

TEST_F(NumericEditor, ShowsNameUnitLimitsAndTheValueSelected) {
    FakePoint point(L"SignedNumeric", L"21.5");
    Limit(point, L"-10.5", L"").Set(L"Name", L"nviSetpoint").Set(L"Units", L"degrees Celsius");
    EXPECT_TRUE(Edit(point, [](const Editor& editor) {
        EXPECT_EQ(editor.Text(IDC_LBLNAME), L"nviSetpoint");
        EXPECT_EQ(editor.Text(IDC_LBLUNITS), L"[ degrees Celsius ]");
        EXPECT_EQ(editor.Text(IDC_LABEL5), L"Min Value:");
        EXPECT_EQ(editor.Text(IDC_LBLMIN), L"-10.5");
        EXPECT_EQ(editor.Text(IDC_LABEL2), L"Max Value:");
        EXPECT_EQ(editor.Text(IDC_LBLMAX), L"---");
        EXPECT_EQ(editor.Text(IDOK), L"&OK");
        EXPECT_EQ(editor.Text(IDCANCEL), L"&Cancel");
        EXPECT_EQ(editor.Text(), L"21.5");
        EXPECT_EQ(editor.Selected(), (Selection{0, 4}));
        EXPECT_EQ(GetFocus(), editor.Item(IDC_TXTNEWCPVALUE));
        EXPECT_FALSE(IsWindowVisible(editor.Item(IDC_CHKINVALID)));
        EXPECT_EQ(WindowText(editor.Window()), L"Edit value");
    }));
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(NumericEditor, TypedNumberIsWrittenAsTyped) {
    EXPECT_EQ(Typed(L"25.75"), Lines{L"25.75"});
    EXPECT_EQ(Typed(L"-7"), Lines{L"-7"});
    EXPECT_EQ(Typed(L"007"), Lines{L"007"});
    EXPECT_EQ(Typed(L"99999999999999999999"), Lines{L"99999999999999999999"}) << "no limits";
}

TEST_F(NumericEditor, LeadingSeparatorIsWrittenWithAZero) {
    EXPECT_EQ(Typed(L".5"), Lines{L"0.5"});
    EXPECT_EQ(Typed(L"-.25"), Lines{L"-0.25"});
}

TEST_F(NumericEditor, KeysThatDoNotFitAreDropped) {
    EXPECT_EQ(Typed(L"1a2 e+3,.4.56"), Lines{L"123.45"});
    EXPECT_EQ(Typed(L"1.23456", L"Float"), Lines{L"1.23456"});
    EXPECT_EQ(Typed(L"-3", L"UnsignedNumeric"), Lines{L"-3"}) << "unsigned types take \"-\"";
}

TEST_F(NumericEditor, BackspaceAndCaretKeysWork) {
    FakePoint point(L"SignedNumeric", L"123");
    Edit(point, [](const Editor& editor) {
        editor.Key(VK_HOME);
        editor.Type(L"-");
        EXPECT_EQ(editor.Text(), L"-123");
        EXPECT_EQ(editor.Selected(), (Selection{1, 1}));
        editor.Type(L"9");
        EXPECT_EQ(editor.Text(), L"-9123");
        editor.Type(L"\b");
        EXPECT_EQ(editor.Text(), L"-912");
        EXPECT_EQ(editor.Selected(), (Selection{4, 4}));
        editor.Key(VK_LEFT);
        editor.Key(VK_DELETE);
        EXPECT_EQ(editor.Text(), L"-91");
    });
}

TEST_F(NumericEditor, OkNeedsMoreThanASeparator) {
    FakePoint point(L"SignedNumeric", L"5");
    Edit(point, [](const Editor& editor) {
        EXPECT_TRUE(editor.IsEnabled(IDOK));
        editor.Type(L"\b");
        EXPECT_EQ(editor.Text(), L"");
        EXPECT_FALSE(editor.IsEnabled(IDOK));
        editor.Type(L".");
        EXPECT_FALSE(editor.IsEnabled(IDOK));
        editor.Key(VK_RETURN);
        EXPECT_TRUE(editor.IsUp()) << "Enter presses OK only where it can be pressed";
        editor.Type(L"5");
        EXPECT_TRUE(editor.IsEnabled(IDOK));
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(NumericEditor, EmptyValueOpensWithOkDisabled) {
    FakePoint point(L"Float", L"");
    Edit(point, [](const Editor& editor) { EXPECT_FALSE(editor.IsEnabled(IDOK)); });
}

TEST_F(NumericEditor, EscapeInTheTextBoxRestoresTheTextAndNothingElse) {
    FakePoint point(L"SignedNumeric", L"21.5");
    Edit(point, [&](const Editor& editor) {
        editor.Type(L"3");
        point.Set(L"Value", L"22,5");
        editor.Key(VK_ESCAPE);
        EXPECT_TRUE(editor.IsUp());
        EXPECT_EQ(editor.Text(), L"22.5") << "what it is now";
        SetFocus(editor.Item(IDCANCEL));
        editor.Key(VK_ESCAPE);
        EXPECT_FALSE(editor.IsUp()) << "elsewhere it cancels";
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(NumericEditor, NumberAboveTheLimitGivesWayToIt) {
    FakePoint point(L"SignedNumeric", L"20");
    Limit(point, L"", L"30.5");
    Edit(point, [&](const Editor& editor) {
        Boxes().Answer(IDOK);
        editor.Type(L"31");
        ASSERT_EQ(Boxes().Seen().size(), 1u);
        EXPECT_EQ(LastBox().text, L"The value cannot not be greater than 30.5");
        EXPECT_EQ(LastBox().title, L"Quillon");
        EXPECT_EQ(LastBox().buttons, std::vector<int>{IDOK});
        EXPECT_EQ(LastBox().icon, Icon::kNone);
        EXPECT_EQ(editor.Text(), L"30.5");
        EXPECT_EQ(editor.Selected(), (Selection{0, 0}));
        EXPECT_TRUE(editor.IsEnabled(IDOK));
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"30.5"});
}

TEST_F(NumericEditor, LoadingAboveTheLimitIsSilent) {
    FakePoint point(L"SignedNumeric", L"40");
    Limit(point, L"", L"30");
    Edit(point, [](const Editor& editor) { EXPECT_EQ(editor.Text(), L"30"); });
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(NumericEditor, SmallValueWithAnExponentIsNotReplacedByTheLimitOnOpening) {
    FakePoint point(L"Float", L"5e-06");
    Limit(point, L"-3.4E+38", L"1");
    Edit(point, [](const Editor& editor) {
        EXPECT_EQ(editor.Text(), L"5e-06");
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"5e-06"});
}

TEST_F(NumericEditor, LimitsWithExponentsAreThoseOfTheType) {
    FakePoint point(L"Float", L"1");
    Limit(point, L"-3.4E+38", L"3.4E+38");
    Edit(point, [](const Editor& editor) {
        editor.Type(L"500");
        EXPECT_EQ(editor.Text(), L"500");
        editor.Control(L'A');
        editor.Type(L"-500");
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(point.Written(), Lines{L"-500"});
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(NumericEditor, NegativeMaximumTurnsAMinusIntoTheLimit) {
    FakePoint point(L"SignedNumeric", L"-8");
    Limit(point, L"", L"-5");
    Edit(point, [&](const Editor& editor) {
        Boxes().Answer(IDOK);
        editor.Type(L"-");
        EXPECT_EQ(editor.Text(), L"-5");
        editor.Control(L'A');
        Boxes().Answer(IDOK);
        editor.Type(L"\b");
        EXPECT_EQ(editor.Text(), L"-5") << "and an empty text";
    });
}

TEST_F(NumericEditor, NumberBelowTheLimitIsRefusedOnOk) {
    FakePoint point(L"SignedNumeric", L"20");
    Limit(point, L"10,5", L"");
    Edit(point, [&](const Editor& editor) {
        editor.Type(L"3");
        Boxes().Answer(IDOK);
        SetFocus(editor.Item(IDOK));
        editor.Ok();
        ASSERT_EQ(Boxes().Seen().size(), 1u);
        EXPECT_EQ(LastBox().text, L"The value cannot not be less than 10.5");
        EXPECT_EQ(LastBox().title, L"Quillon");
        EXPECT_EQ(LastBox().icon, Icon::kNone);
        EXPECT_TRUE(editor.IsUp());
        EXPECT_EQ(editor.Text(), L"10.5");
        EXPECT_EQ(editor.Selected(), (Selection{0, 4}));
        EXPECT_EQ(GetFocus(), editor.Item(IDC_TXTNEWCPVALUE));
        EXPECT_EQ(point.Written(), Lines());
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(point.Written(), Lines{L"10.5"});
}

TEST_F(NumericEditor, HugeNumberIsAnErrorOnOk) {
    FakePoint point(L"Float", L"1");
    Limit(point, L"0", L"");
    Edit(point, [&](const Editor& editor) {
        PutOnClipboard(std::wstring(400, L'9'));
        editor.Control(L'V');
        Boxes().Answer(IDOK);
        editor.Key(VK_RETURN);
        EXPECT_TRUE(editor.IsUp());
        EXPECT_EQ(LastBox().text, L"error in calculating the value");
    });
    EXPECT_EQ(point.Written(), Lines());
    TakeFromClipboard();
}

TEST_F(NumericEditor, RefusingHostIsReportedAndTheDialogStays) {
    FakePoint point(L"Float", L"1");
    point.Fail(L"Value.put");
    Edit(point, [&](const Editor& editor) {
        editor.Type(L"2");
        for (int attempt = 0; attempt < 2; ++attempt) {
            Boxes().Answer(IDOK);
            editor.Key(VK_RETURN);
            EXPECT_TRUE(editor.IsUp());
            EXPECT_EQ(LastBox().text, L"error in calculating the value");
            EXPECT_EQ(LastBox().title, L"Quillon");
            EXPECT_EQ(LastBox().icon, Icon::kNone);
        }
        point.Restore();
        editor.Key(VK_RETURN);
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Value(), L"2");
}

// ---- the clipboard

class NumericClipboard : public NumericEditor {
protected:
    void TearDown() override {
        TakeFromClipboard();
        NumericEditor::TearDown();
    }
};

TEST_F(NumericClipboard, PastedNumberIsCutToWhatTypingLetsThrough) {
    FakePoint point(L"SignedNumeric", L"21.5");
    Edit(point, [](const Editor& editor) {
        PutOnClipboard(L" -12.345abc\r\n6");
        editor.Control(L'V');
        EXPECT_EQ(editor.Text(), L"-12.34");
        PutOnClipboard(L"abc");
        editor.Control(L'V');
        EXPECT_EQ(editor.Text(), L"-12.34");
        PutOnClipboard(L"7");
        editor.Select(1, 3);
        SendMessageW(editor.Item(IDC_TXTNEWCPVALUE), WM_PASTE, 0, 0);
        EXPECT_EQ(editor.Text(), L"-7.34") << "the context menu's way";
        EXPECT_EQ(editor.Selected(), (Selection{2, 2}));
    });
}

TEST_F(NumericClipboard, PastedNumberMeetsTheLimitOnce) {
    FakePoint point(L"SignedNumeric", L"21.5");
    Limit(point, L"", L"30");
    Edit(point, [&](const Editor& editor) {
        PutOnClipboard(L"1234");
        Boxes().Answer(IDOK);
        editor.Control(L'V');
        EXPECT_EQ(editor.Text(), L"30");
    });
}

TEST_F(NumericClipboard, CutCopyUndoAndSelectAllWork) {
    FakePoint point(L"SignedNumeric", L"21.5");
    Edit(point, [](const Editor& editor) {
        editor.Select(4, 4);
        editor.Control(L'A');
        EXPECT_EQ(editor.Selected(), (Selection{0, 4}));
        editor.Control(L'C');
        EXPECT_EQ(TakeFromClipboard(), L"21.5");
        editor.Control(L'X');
        EXPECT_EQ(editor.Text(), L"");
        EXPECT_FALSE(editor.IsEnabled(IDOK));
        EXPECT_EQ(TakeFromClipboard(), L"21.5");
        editor.Control(L'Z');
        EXPECT_EQ(editor.Text(), L"21.5");
        editor.Control(L'A');
        editor.Type(L"7");
        EXPECT_EQ(editor.Text(), L"7");
        editor.Control(L'Z');
        EXPECT_EQ(editor.Text(), L"21.5") << "what the filter wrote is undone, too";
    });
}

// ---- regional settings

class CommaEditor : public NumericEditor {
protected:
    CommaRegion region;
};

TEST_F(CommaEditor, NumbersAreShownAndWrittenWithAComma) {
    FakePoint point(L"SignedNumeric", L"21.5");
    Limit(point, L"-1.5", L"30.5").Set(L"InvalidValue", L"327.67");
    Edit(point, [](const Editor& editor) {
        EXPECT_EQ(editor.Text(), L"21,5");
        EXPECT_EQ(editor.Text(IDC_LBLMIN), L"-1,5");
        EXPECT_EQ(editor.Text(IDC_LBLMAX), L"30,5");
        editor.Type(L"1.5");
        EXPECT_EQ(editor.Text(), L"15");
        editor.Control(L'A');
        editor.Type(L"0,5");
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(point.Written(), Lines{L"0,5"});
}

TEST_F(CommaEditor, LeadingCommaIsWrittenWithAZero) {
    EXPECT_EQ(Typed(L",5"), Lines{L"0,5"});
    EXPECT_EQ(Typed(L"-,25"), Lines{L"-0,25"});
}

TEST_F(CommaEditor, LimitsAreCompared) {
    FakePoint point(L"SignedNumeric", L"20");
    Limit(point, L"10.5", L"30.5");
    Edit(point, [&](const Editor& editor) {
        Boxes().Answer(IDOK);
        editor.Type(L"30,6");
        EXPECT_EQ(LastBox().text, L"The value cannot not be greater than 30,5");
        EXPECT_EQ(editor.Text(), L"30,5");
        editor.Control(L'A');
        editor.Type(L"10,4");
        Boxes().Answer(IDOK);
        editor.Key(VK_RETURN);
        EXPECT_EQ(LastBox().text, L"The value cannot not be less than 10,5");
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(CommaEditor, TextThatIsNoNumberIsAnErrorOnOkAndNotCompared) {
    FakePoint point(L"SignedNumeric", L"-8");
    Limit(point, L"-20", L"-5");
    Edit(point, [&](const Editor& editor) {
        editor.Type(L"-");
        EXPECT_EQ(editor.Text(), L"-");
        Boxes().Answer(IDOK);
        editor.Key(VK_RETURN);
        EXPECT_EQ(LastBox().text, L"error in calculating the value");
        EXPECT_TRUE(editor.IsUp());
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(CommaEditor, InvalidValueThatIsNoNumberIsWrittenInSpiteOfALowerLimit) {
    FakePoint point(L"Float", L"8");
    Limit(point.Set(L"InvalidValue", L"NaN"), L"-20", L"");
    Edit(point, [](const Editor& editor) {
        editor.Click(IDC_CHKINVALID);
        editor.Ok();
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Written(), Lines{L"NaN"});
}

TEST_F(CommaEditor, CommaAloneKeepsOkDisabled) {
    FakePoint point(L"SignedNumeric", L"8");
    Edit(point, [&](const Editor& editor) {
        editor.Type(L",");
        EXPECT_EQ(editor.Text(), L",");
        EXPECT_FALSE(editor.IsEnabled(IDOK));
    });
}

}  // namespace
}  // namespace quillon::test
