// frmCPModif3 by real keys.
#include "editors/editor_test.h"

namespace quillon::test {
namespace {

class EnumerationEditor : public EditorTest {
protected:
    FakePoint point{L"Enum", L"1"};

    void SetUp() override {
        EditorTest::SetUp();
        point.Set(L"EnumDesc", L"0,Auto;1,Off;2,On");
    }
    static Lines Entries(const Editor& editor) {
        Lines entries;
        const HWND box = editor.Item(IDC_CBOENUM);
        const LRESULT count = SendMessageW(box, CB_GETCOUNT, 0, 0);
        for (LRESULT place = 0; place < count; ++place) {
            const auto index = static_cast<WPARAM>(place);
            std::wstring text(
                static_cast<std::size_t>(SendMessageW(box, CB_GETLBTEXTLEN, index, 0)) + 1, L'\0');
            text.resize(static_cast<std::size_t>(
                SendMessageW(box, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()))));
            entries.push_back(std::move(text));
        }
        return entries;
    }
    static LRESULT Selected(const Editor& editor) {
        return SendMessageW(editor.Item(IDC_CBOENUM), CB_GETCURSEL, 0, 0);
    }
    static void SelectByCode(const Editor& editor, int entry) {
        SendMessageW(editor.Item(IDC_CBOENUM), CB_SETCURSEL, static_cast<WPARAM>(entry), 0);
    }
};

TEST_F(EnumerationEditor, ShowsTheEntriesInTheirOrderAndTheCurrentOne) {
    point.Set(L"Name", L"nviOccCmd");
    EXPECT_TRUE(Edit(point, [](const Editor& editor) {
        EXPECT_EQ(editor.Text(IDC_LBLNAME), L"nviOccCmd");
        EXPECT_EQ(Entries(editor), (Lines{L"Auto", L"Off", L"On"}));
        EXPECT_EQ(Selected(editor), 1);
        EXPECT_EQ(GetFocus(), editor.Item(IDC_CBOENUM));
        EXPECT_EQ(editor.Text(IDOK), L"&OK");
    }));
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(EnumerationEditor, EntryPickedByKeyIsWrittenByEnter) {
    Edit(point, [](const Editor& editor) {
        editor.Key(VK_DOWN);
        EXPECT_EQ(Selected(editor), 2);
        editor.Key(VK_RETURN);
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Written(), Lines{L"2"});
}

TEST_F(EnumerationEditor, WithoutAPickTheShownLabelIsWritten) {
    Edit(point, [](const Editor& editor) { editor.Ok(); });
    EXPECT_EQ(point.Written(), Lines{L"1"});
}

TEST_F(EnumerationEditor, ValueWithoutEntryLeavesTheBoxEmptyAndWritesMinusOne) {
    point.Set(L"Value", L"7");
    Edit(point, [](const Editor& editor) {
        EXPECT_EQ(Selected(editor), CB_ERR);
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"-1"});
}

TEST_F(EnumerationEditor, SelectingByCodeIsNoPick) {
    point.Set(L"EnumDesc", L"3,same;4,same;");
    Edit(point, [](const Editor& editor) {
        SelectByCode(editor, 1);
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"3"}) << "the first of that label";
}

TEST_F(EnumerationEditor, PickedEntryNumberedMinusOneFallsBackToItsLabel) {
    point.Set(L"EnumDesc", L"9,none;-1,none;").Set(L"Value", L"9");
    Edit(point, [](const Editor& editor) {
        editor.Key(VK_DOWN);
        EXPECT_EQ(Selected(editor), 1);
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"9"});
}

TEST_F(EnumerationEditor, EscapeCancels) {
    Edit(point, [](const Editor& editor) {
        editor.Key(VK_DOWN);
        editor.Key(VK_ESCAPE);
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(EnumerationEditor, EscapeClosesADroppedListFirst) {
    Edit(point, [](const Editor& editor) {
        SendMessageW(editor.Item(IDC_CBOENUM), CB_SHOWDROPDOWN, TRUE, 0);
        editor.Key(VK_ESCAPE);
        EXPECT_TRUE(editor.IsUp());
        EXPECT_FALSE(SendMessageW(editor.Item(IDC_CBOENUM), CB_GETDROPPEDSTATE, 0, 0));
        editor.Key(VK_ESCAPE);
        EXPECT_FALSE(editor.IsUp());
    });
}

TEST_F(EnumerationEditor, OddListsAreReadAsFarAsTheyGo) {
    point.Set(L"EnumDesc", L";5;7,;x,Letter;1,a,b;1,twice;99999999999,Huge;2,Last")
        .Set(L"Value", L"1");
    Edit(point, [](const Editor& editor) {
        EXPECT_EQ(Entries(editor), (Lines{L"", L"Letter", L"a,b", L"twice", L"Last"}));
        EXPECT_EQ(Selected(editor), 2) << "the first of a number";
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"1"});
}

TEST_F(EnumerationEditor, EmptyListOpensEmpty) {
    point.Set(L"EnumDesc", L"");
    Edit(point, [](const Editor& editor) {
        EXPECT_EQ(Entries(editor), Lines());
        editor.Key(VK_DOWN);
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(EnumerationEditor, TenThousandEntriesAreAllThere) {
    std::wstring list;
    for (int code = 0; code < 10'000; ++code)
        list += std::to_wstring(code) + L",entry " + std::to_wstring(code) + L";";
    point.Set(L"EnumDesc", com::Variant(std::wstring_view(list))).Set(L"Value", L"9998");
    Edit(point, [](const Editor& editor) {
        EXPECT_EQ(SendMessageW(editor.Item(IDC_CBOENUM), CB_GETCOUNT, 0, 0), 10'000);
        EXPECT_EQ(Selected(editor), 9998);
        editor.Key(VK_DOWN);
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"9999"});
}

TEST_F(EnumerationEditor, RefusingHostIsReportedAndTheDialogStays) {
    point.Fail(L"Value.put");
    Edit(point, [&](const Editor& editor) {
        Boxes().Answer(IDOK);
        editor.Ok();
        EXPECT_EQ(LastBox().text, L"error in calculating CP value");
        EXPECT_TRUE(editor.IsUp());
    });
}

}  // namespace
}  // namespace quillon::test
