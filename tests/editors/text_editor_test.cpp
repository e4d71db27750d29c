// frmCPModif2 by real keys.
#include "editors/editor_test.h"

namespace quillon::test {
namespace {

class TextEditor : public EditorTest {
protected:
    FakePoint point{L"Textual", L"  Room 101 "};

    void ExpectTooLong() {
        EXPECT_EQ(LastBox().text, L"The text cannot exceed 30 characters");
        EXPECT_EQ(LastBox().title, L"Name too long");
        EXPECT_EQ(LastBox().icon, Icon::kExclamation);
        EXPECT_EQ(LastBox().buttons, std::vector<int>{IDOK});
    }
};

TEST_F(TextEditor, ShowsNameAndTrimmedValueSelected) {
    point.Set(L"Name", L"cpUnitName");
    EXPECT_TRUE(Edit(point, [](const Editor& editor) {
        EXPECT_EQ(editor.Text(IDC_LBLNAME), L"cpUnitName");
        EXPECT_EQ(editor.Text(), L"Room 101");
        EXPECT_EQ(editor.Selected(), (Selection{0, 8}));
        EXPECT_EQ(GetFocus(), editor.Item(IDC_TXTNEWCPVALUE));
        EXPECT_EQ(editor.Text(IDOK), L"&OK");
        EXPECT_EQ(editor.Text(IDCANCEL), L"&Cancel");
    }));
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(TextEditor, SpaceIsTypedAsUnderscoreAndEnterWrites) {
    Edit(point, [](const Editor& editor) {
        editor.Type(L"My room, 2;-\xe8");
        editor.Key(VK_RETURN);
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Written(), Lines{L"My_room,_2;-\xe8"});
}

TEST_F(TextEditor, BackspaceTakesTheCharacterBeforeTheCaret) {
    Edit(point, [](const Editor& editor) {
        editor.Select(4, 4);
        editor.Type(L"\b");
        EXPECT_EQ(editor.Text(), L"Roo 101");
    });
}

TEST_F(TextEditor, EscapePutsTheCurrentValueBack) {
    Edit(point, [&](const Editor& editor) {
        editor.Type(L"x");
        point.Set(L"Value", L"now");
        editor.Key(VK_ESCAPE);
        EXPECT_TRUE(editor.IsUp());
        EXPECT_EQ(editor.Text(), L"now");
        SetFocus(editor.Item(IDOK));
        editor.Key(VK_ESCAPE);
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(TextEditor, EscapePutsTheValueBackUntrimmed) {
    Edit(point, [](const Editor& editor) {
        editor.Type(L"x");
        editor.Key(VK_ESCAPE);
        EXPECT_EQ(editor.Text(), L"  Room 101 ");
    });
}

TEST_F(TextEditor, ThirtyFirstCharacterIsCut) {
    Edit(point, [&](const Editor& editor) {
        editor.Type(std::wstring(30, L'x'));
        EXPECT_TRUE(Boxes().Seen().empty());
        Boxes().Answer(IDOK);
        editor.Type(L"y");
        ExpectTooLong();
        EXPECT_EQ(editor.Text(), std::wstring(30, L'x'));
    });
}

TEST_F(TextEditor, PastingFortyCharactersMessagesOnceAndLeavesThirty) {
    Edit(point, [&](const Editor& editor) {
        PutOnClipboard(std::wstring(20, L'a') + L" " + std::wstring(19, L'b') + L"\r\nmore");
        Boxes().Answer(IDOK);
        editor.Control(L'V');
        ExpectTooLong();
        EXPECT_EQ(editor.Text(), std::wstring(20, L'a') + L"_" + std::wstring(9, L'b'));
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(point.Written(), Lines{std::wstring(20, L'a') + L"_" + std::wstring(9, L'b')});
    EXPECT_EQ(Boxes().Seen().size(), 1u);
    TakeFromClipboard();
}

TEST_F(TextEditor, TextOfThirtyOneCharactersMessagesOnOpening) {
    point.Set(L"Value", com::Variant(std::wstring_view(std::wstring(31, L'x'))));
    Boxes().Answer(IDOK);
    Edit(point, [&](const Editor& editor) {
        ExpectTooLong();
        EXPECT_EQ(editor.Text(), std::wstring(30, L'x'));
        EXPECT_EQ(editor.Selected(), (Selection{0, 30}));
    });
    EXPECT_EQ(Boxes().Seen().size(), 1u);
}

TEST_F(TextEditor, CutCopyUndoAndSelectAllWork) {
    Edit(point, [](const Editor& editor) {
        editor.Select(0, 4);
        editor.Control(L'X');
        EXPECT_EQ(editor.Text(), L" 101");
        editor.Control(L'Z');
        EXPECT_EQ(editor.Text(), L"Room 101");
        editor.Control(L'A');
        EXPECT_EQ(editor.Selected(), (Selection{0, 8}));
        TakeFromClipboard();
        editor.Control(L'C');
        EXPECT_EQ(TakeFromClipboard(), L"Room 101");
    });
}

TEST_F(TextEditor, EmptyTextIsWritten) {
    Edit(point, [](const Editor& editor) {
        editor.Type(L"\b");
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L""});
}

TEST_F(TextEditor, RefusingHostIsReportedAndTheDialogStays) {
    point.Fail(L"Value.put");
    Edit(point, [&](const Editor& editor) {
        Boxes().Answer(IDOK);
        editor.Ok();
        EXPECT_EQ(LastBox().text, L"error in calculating CP value");
        EXPECT_EQ(LastBox().title, L"Quillon");
        EXPECT_TRUE(editor.IsUp());
    });
    EXPECT_EQ(point.Value(), L"  Room 101 ");
}

}  // namespace
}  // namespace quillon::test
