// frmCPModif4, alone and with the editors of its fields.
#include "editors/editor_test.h"
//
#include <commctrl.h>

#include "window/window_reading.h"

namespace quillon::test {
namespace {

class StructureEditor : public EditorTest {
protected:
    FakePoint point{L"Struct", L"1 20 3"};

    void SetUp() override {
        EditorTest::SetUp();
        point.AddField(L"a", L"SignedNumeric", L"1");
        point.AddField(L"b", L"Enum", L"20").Set(L"EnumDesc", L"20,Twenty;21,More;");
        point.AddField(L"c", L"Textual", L"3");
    }
    static HWND List(const Editor& editor) { return editor.Item(IDC_LVWMAIN); }
    static Lines Column(const Editor& editor, int column) {
        Lines cells;
        for (int row = 0; row < ListView_GetItemCount(List(editor)); ++row)
            cells.push_back(CellText(List(editor), row, column));
        return cells;
    }
    static void SelectRow(const Editor& editor, int row) {
        ListView_SetItemState(List(editor), row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
    }
    // Opens the row's field by a key and runs the steps in its editor.
    void EditField(const Editor& editor, int row, Steps steps, WPARAM key = VK_RETURN) {
        SelectRow(editor, row);
        Driver().Expect(std::move(steps));
        editor.Key(key);
    }
    // What it posts is handled at once.
    static void PressCloseBox(const Editor& editor) {
        SendMessageW(editor.Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
        MSG posted{};
        while (editor.IsUp() &&
               PeekMessageW(&posted, editor.Window(), WM_COMMAND, WM_COMMAND, PM_REMOVE))
            DispatchMessageW(&posted);
    }
    static void DoubleClick(const Editor& editor) {
        NMITEMACTIVATE notice{};
        notice.hdr = {List(editor), IDC_LVWMAIN, static_cast<UINT>(NM_DBLCLK)};
        SendMessageW(editor.Window(), WM_NOTIFY, IDC_LVWMAIN, reinterpret_cast<LPARAM>(&notice));
    }
};

TEST_F(StructureEditor, ListsTheFieldsInTheirOrder) {
    point.Set(L"Name", L"nviFanSpeedCmd");
    EXPECT_TRUE(Edit(point, [](const Editor& editor) {
        EXPECT_EQ(editor.Text(IDC_LBLNAME), L"nviFanSpeedCmd");
        EXPECT_EQ(Headers(List(editor)), (Lines{L"Field", L"Value"}));
        EXPECT_EQ(Column(editor, 0), (Lines{L"a", L"b", L"c"}));
        EXPECT_EQ(Column(editor, 1), (Lines{L"1", L"20", L"3"}));
        EXPECT_EQ(editor.Text(IDOK), L"&Ok");
        EXPECT_EQ(editor.Text(IDCANCEL), L"&Cancel");
        EXPECT_EQ(GetFocus(), List(editor));
        EXPECT_EQ(ListView_GetNextItem(List(editor), -1, LVNI_SELECTED), 0);
    }));
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(StructureEditor, OkWritesTheFieldsJoined) {
    Edit(point, [](const Editor& editor) { editor.Ok(); });
    EXPECT_EQ(point.Written(), Lines{L"1 20 3"});
}

TEST_F(StructureEditor, EmptyFieldLeavesTwoBlanks) {
    point.Field(1).Set(L"Value", L"");
    Edit(point, [](const Editor& editor) { editor.Ok(); });
    EXPECT_EQ(point.Written(), Lines{L"1  3"});
}

TEST_F(StructureEditor, WithoutFieldsWritesAnEmptyText) {
    FakePoint empty(L"Struct", L"x");
    Edit(empty, [](const Editor& editor) {
        editor.Key(VK_RETURN);
        EXPECT_TRUE(editor.IsUp()) << "there is no row to open";
        editor.Ok();
    });
    EXPECT_EQ(empty.Written(), Lines{L""});
}

TEST_F(StructureEditor, EnterF2AndDoubleClickOpenTheRow) {
    Edit(point, [&](const Editor& editor) {
        for (const WPARAM key : {VK_RETURN, VK_F2})
            EditField(
                editor, 0, [](const Editor& field) { EXPECT_EQ(field.Text(IDC_LBLNAME), L"a"); },
                key);
        Driver().Expect([](const Editor& field) { EXPECT_EQ(field.Text(IDC_LBLNAME), L"a"); });
        DoubleClick(editor);
        EXPECT_TRUE(editor.IsUp());
    });
}

TEST_F(StructureEditor, EachFieldGetsItsEditorAndItsRowTheNewValue) {
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 0, [](const Editor& field) {
            field.Type(L"-7.5");
            field.Key(VK_RETURN);
        });
        EditField(editor, 1, [](const Editor& field) {
            field.Key(VK_DOWN);
            field.Key(VK_RETURN);
        });
        EditField(editor, 2, [](const Editor& field) {
            field.Type(L"x y");
            field.Key(VK_RETURN);
        });
        EXPECT_EQ(Column(editor, 1), (Lines{L"-7.5", L"21", L"x_y"}));
        EXPECT_EQ(point.Written(), Lines()) << "the structure waits for OK";
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"-7.5 21 x_y"});
    EXPECT_EQ(point.Field(0).Written(), (Lines{L"1", L"-7.5"})) << "first the row's value";
}

TEST_F(StructureEditor, CancelledFieldIsLeftAsItWas) {
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 0, [&](const Editor& field) {
            field.Type(L"5");
            point.Field(0).Set(L"Value", L"4");
            field.Cancel();
        });
        EXPECT_EQ(Column(editor, 1)[0], L"1");
    });
    EXPECT_EQ(point.Field(0).Value(), L"1") << "even if the host had an intermediate value";
    EXPECT_EQ(point.Field(0).Written(), (Lines{L"1", L"1"}));
}

TEST_F(StructureEditor, FieldLeftByTheCloseBoxIsLeftAsItWas) {
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 0, [&](const Editor& field) {
            field.Type(L"5");
            point.Field(0).Set(L"Value", L"4");
            PressCloseBox(field);
            EXPECT_FALSE(field.IsUp());
        });
        EXPECT_EQ(Column(editor, 1)[0], L"1");
    });
    EXPECT_EQ(point.Field(0).Written(), (Lines{L"1", L"1"}));
}

TEST_F(StructureEditor, FieldWhoseOkWasRefusedIsStillPutBackByCancel) {
    FakePoint& refused = point.Field(0);
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 0, [&](const Editor& field) {
            field.Type(L"5");
            refused.Fail(L"Value.put");
            Boxes().Answer(IDOK);
            field.Ok();
            EXPECT_TRUE(field.IsUp());
            refused.Restore();
            refused.Set(L"Value", L"4");
            field.Cancel();
        });
    });
    EXPECT_EQ(refused.Written(), (Lines{L"1", L"5", L"1"}));
    EXPECT_EQ(refused.Value(), L"1");
}

TEST_F(StructureEditor, RowShowsTheFormattedValueAndKeepsTheValueText) {
    FakePoint& degrees = point.Field(0);
    degrees.Set(L"FormattedValue", L"1.00 degrees");
    Edit(point, [&](const Editor& editor) {
        EXPECT_EQ(Column(editor, 1), (Lines{L"1.00 degrees", L"20", L"3"}));
        EditField(editor, 0, [&](const Editor& field) {
            EXPECT_EQ(field.Text(), L"1");
            field.Type(L"7");
            degrees.Set(L"FormattedValue", L"7.00 degrees");
            field.Ok();
        });
        EXPECT_EQ(Column(editor, 1)[0], L"7.00 degrees");
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"7 20 3"});
}

TEST_F(StructureEditor, OkAndCancelInsideTheHostsCallsOfAFieldAreIgnored) {
    Edit(point, [&](const Editor& editor) {
        for (const int id : {IDOK, IDCANCEL}) {
            point.Field(0).During(L"Value.put", [&] { editor.Command(id); });
            EditField(editor, 0, [](const Editor& field) { field.Cancel(); });
            ASSERT_TRUE(editor.IsUp()) << id;
        }
        point.Field(0).During(L"Value.put", [&] { editor.Key(VK_ESCAPE); });
        EditField(editor, 0, [](const Editor& field) { field.Cancel(); });
        EXPECT_TRUE(editor.IsUp());
        EXPECT_EQ(point.Written(), Lines());
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"1 20 3"});
}

TEST_F(StructureEditor, RowInsideTheWriteOpensNoField) {
    Edit(point, [&](const Editor& editor) {
        point.During(L"Value.put", [&] { DoubleClick(editor); });
        editor.Ok();
        EXPECT_FALSE(editor.IsUp());
    });
    EXPECT_EQ(point.Field(0).Written(), Lines()) << "which would get its row's value first";
}

TEST_F(StructureEditor, RestoringThatFailsIsIgnored) {
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 0, [&](const Editor& field) {
            point.Field(0).Fail(L"Value.put");
            field.Cancel();
        });
        EXPECT_TRUE(editor.IsUp());
    });
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(StructureEditor, CancelAfterAnEditedFieldDoesNotTakeItBack) {
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 0, [](const Editor& field) {
            field.Type(L"5");
            field.Ok();
        });
        editor.Cancel();
    });
    EXPECT_EQ(point.Field(0).Value(), L"5");
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(StructureEditor, FieldOfUnknownTypeIsRefused) {
    point.AddField(L"d", L"User", L"0102");
    point.AddField(L"e", L"enum", L"0");
    Edit(point, [&](const Editor& editor) {
        for (const int row : {3, 4}) {
            SelectRow(editor, row);
            Boxes().Answer(IDOK);
            editor.Key(VK_RETURN);
            EXPECT_EQ(LastBox().text, L"Unknown or Not modificable Attribute");
            EXPECT_EQ(LastBox().title, L"Edit Value");
            EXPECT_EQ(LastBox().icon, Icon::kExclamation);
        }
    });
    EXPECT_EQ(Boxes().Seen().size(), 2u);
}

TEST_F(StructureEditor, StructureInAStructure) {
    FakePoint& inner = point.AddField(L"d", L"Struct", L"8 9");
    inner.AddField(L"x", L"Float", L"8");
    inner.AddField(L"y", L"Float", L"9");
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 3, [&](const Editor& nested) {
            EXPECT_EQ(Column(nested, 0), (Lines{L"x", L"y"}));
            EditField(nested, 1, [](const Editor& field) {
                field.Type(L"99");
                field.Ok();
            });
            nested.Ok();
        });
        EXPECT_EQ(Column(editor, 1)[3], L"8 99");
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"1 20 3 8 99"});
}

TEST_F(StructureEditor, CancelledInnerStructureGetsItsValueBack) {
    FakePoint& inner = point.AddField(L"d", L"Struct", L"8 9");
    inner.AddField(L"x", L"Float", L"8");
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 3, [&](const Editor& nested) {
            EditField(nested, 0, [](const Editor& field) {
                field.Type(L"7");
                field.Ok();
            });
        });
    });
    EXPECT_EQ(inner.Written(), (Lines{L"8 9", L"8 9"}));
}

TEST_F(StructureEditor, FieldThatCouldNotBeReadIsGivenNothingBack) {
    FakePoint& unread = point.AddField(L"t", L"Textual", L"?");
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 3, [](const Editor& field) { field.Cancel(); });
    });
    EXPECT_EQ(unread.Written(), Lines());
}

TEST_F(StructureEditor, TwentyDeep) {
    FakePoint outer(L"Struct", L"0");
    FakePoint* level = &outer;
    for (int depth = 0; depth < 20; ++depth) level = &level->AddField(L"f", L"Struct", L"0");
    level->AddField(L"f", L"Float", L"0");
    std::function<void(const Editor&, int)> dive = [&](const Editor& editor, int depth) {
        if (depth == 21) {
            editor.Type(L"7");
        } else {
            EditField(editor, 0, [&, depth](const Editor& inner) { dive(inner, depth + 1); });
        }
        editor.Ok();
    };
    Edit(outer, [&](const Editor& editor) { dive(editor, 0); });
    EXPECT_EQ(outer.Written(), Lines{L"7"});
}

TEST_F(StructureEditor, VanishedFieldOpensNothing) {
    Edit(point, [&](const Editor& editor) {
        point.RemoveFields();
        editor.Key(VK_RETURN);
        EXPECT_TRUE(editor.IsUp());
        editor.Ok();
    });
    EXPECT_EQ(point.Written(), Lines{L"1 20 3"});
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(StructureEditor, ValueThatCannotBeReadBackIsNotWrittenAsTheField) {
    Edit(point, [&](const Editor& editor) {
        EditField(editor, 0, [&](const Editor& field) {
            field.Type(L"5");
            point.Field(0).During(L"Value.put",
                                  [&] { point.Field(0).Fail(L"FormattedValue.get"); });
            field.Ok();
        });
        EXPECT_EQ(Column(editor, 1)[0], L"?");
        Boxes().Answer(IDOK);
        editor.Ok();
        EXPECT_EQ(LastBox().text, L"error in calculating CP value");
        EXPECT_TRUE(editor.IsUp());
        editor.Key(VK_ESCAPE);
    });
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(StructureEditor, RefusingHostIsReportedAndTheDialogStays) {
    point.Fail(L"Value.put");
    Edit(point, [&](const Editor& editor) {
        Boxes().Answer(IDOK);
        editor.Ok();
        EXPECT_EQ(LastBox().text, L"error in calculating CP value");
        EXPECT_EQ(LastBox().title, L"Quillon");
        EXPECT_TRUE(editor.IsUp());
        editor.Key(VK_ESCAPE);
        EXPECT_FALSE(editor.IsUp());
    });
}

}  // namespace
}  // namespace quillon::test
