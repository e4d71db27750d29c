// The edit command of the device window, on the simulated host.
#include "editors/editor_driver.h"
#include "editors/editors_resource.h"
#include "window/window_test.h"

namespace quillon::test {
namespace {

class EditCommand : public WindowTest {
protected:
    struct Place {
        int tab;
        int list;
    };
    static constexpr Place kMonitor{kTabTest, IDC_LVMONITOR};
    static constexpr Place kSetup{kTabSetup, IDC_LVADVANCEDCPS};
    static constexpr Place kTune{kTabTune, IDC_LVCPS};
    static constexpr Place kCov{kTabTune, IDC_LVCOV};

    void SetUp() override {
        WindowTest::SetUp();
        m_driver = std::make_unique<EditorDriver>();
        static bool s_warm = false;
        if (!std::exchange(s_warm, true)) WarmUpEditors();
        CountAgain();
    }
    void TearDown() override {
        m_driver.reset();
        WindowTest::TearDown();
    }
    void WarmUpEditors() {
        const Window window = Open();
        for (int round = 0; round < 2; ++round)
            for (const auto& [place, row] :
                 {std::pair{kMonitor, 0}, {kMonitor, 2}, {kSetup, 0}, {kCov, 1}})
                EXPECT_TRUE(Edit(window, place, row,
                                 [](const Editor& editor) { UpdateWindow(editor.Window()); }));
        CloseAll();
        Poster::Drain();
        CloseNetwork();
    }

    static HWND Select(const Window& window, Place place, int row) {
        window->SelectTab(place.tab);
        const HWND list = PageItem(*window, place.tab, place.list);
        SetFocus(list);
        ListView_SetItemState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
        ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
        return list;
    }
    static void TakeKey(HWND control, WPARAM key) {
        PostMessageW(control, WM_KEYDOWN, key, 1);
        MSG message{};
        PeekMessageW(&message, control, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE);
        // What the key does is posted.
        if (PeekMessageW(&message, GetAncestor(control, GA_ROOT), WM_COMMAND, WM_COMMAND,
                         PM_REMOVE))
            DispatchMessageW(&message);
    }
    // By Enter. False: no editor came up.
    bool Edit(const Window& window, Place place, int row, Steps steps, WPARAM key = VK_RETURN) {
        const HWND list = Select(window, place, row);
        Host().Clear();
        const int before = m_driver->Shown();
        m_driver->Expect(std::move(steps));
        TakeKey(list, key);
        m_driver->Forget();
        return m_driver->Shown() > before;
    }
    bool OpensNothing(const Window& window, Place place, int row) {
        return !Edit(window, place, row, [](const Editor&) {});
    }
    static std::wstring ValueOf(const Window& window, Place place, int row) {
        return CellText(PageItem(*window, place.tab, place.list), row, 1);
    }
    static void Write(const Editor& editor, std::wstring_view keys) {
        editor.Type(keys);
        editor.Key(VK_RETURN);
    }

    std::unique_ptr<EditorDriver> m_driver;
};

TEST_F(EditCommand, EditsARowOfEachList) {
    const Window window = Open();
    EXPECT_TRUE(Edit(window, kMonitor, 0, [](const Editor& editor) { Write(editor, L"19.25"); }));
    EXPECT_EQ(ValueOf(window, kMonitor, 0), L"19.25 degrees Celsius");
    EXPECT_TRUE(Edit(window, kSetup, 0, [](const Editor& editor) { Write(editor, L"My lab"); }));
    EXPECT_EQ(ValueOf(window, kSetup, 0), L"My_lab");
    EXPECT_TRUE(Edit(window, kTune, 2, [](const Editor& editor) { Write(editor, L".5"); }));
    EXPECT_EQ(ValueOf(window, kTune, 2), L"0.5 % of full level");
    EXPECT_TRUE(Edit(window, kCov, 1, [](const Editor& editor) {
        editor.Key(VK_DOWN);
        editor.Ok();
    }));
    EXPECT_EQ(ValueOf(window, kCov, 1), L"HVAC_TEST");
    EXPECT_TRUE(Edit(window, kCov, 0, [](const Editor& editor) { Write(editor, L"20.5"); }));
    EXPECT_EQ(ValueOf(window, kCov, 0), L"20.5 degrees Celsius");
}

TEST_F(EditCommand, StructureIsEditedFieldByField) {
    const Window window = Open();
    EXPECT_TRUE(Edit(window, kMonitor, 2, [&](const Editor& editor) {
        m_driver->Expect([](const Editor& field) { Write(field, L"75"); });
        editor.Key(VK_RETURN);
        editor.Ok();
    }));
    EXPECT_EQ(ValueOf(window, kMonitor, 2), L"75.0 1");
}

TEST_F(EditCommand, AsksTheHostForTheRowsPointAlone) {
    const Window window = Open();
    Edit(window, kMonitor, 0, [](const Editor&) {
        EXPECT_EQ(Host().Log(),
                  (Lines{L"IDevice.NetworkVariables.get()", L"Points.Item(\"0\")",
                         L"Point.NVDirection.get()", L"Point.SNVType.get()", L"Type.GenType.get()",
                         L"Point.Value.get()", L"Point.MinOverride.get()",
                         L"Point.MaxOverride.get()", L"Point.Name.get()", L"Type.Units.get()",
                         L"Type.InvalidValue.get()", L"Type.BCoef.get()"}));
    });
}

TEST_F(EditCommand, OutputOpensNothing) {
    const Window window = Open();
    EXPECT_TRUE(OpensNothing(window, kMonitor, 1));
    EXPECT_EQ(Host().Count(L"Point.NVDirection.get"), 1);
    EXPECT_EQ(Host().Count(L"Type.GenType.get"), 0);
}

TEST_F(EditCommand, PropertysKeyIsLookedUpAsANumber) {
    const Window window = Open();
    Host().Answer(L"Point.Key.get", L"007");
    window->Update();
    Host().Restore();
    EXPECT_TRUE(OpensNothing(window, kCov, 0)) << "there is no property 7";
    EXPECT_EQ(Only(Host().Log(), L"Points.Item"), Lines{L"Points.Item(\"7\")"});
    Host().Answer(L"Point.Key.get", L"no number");
    window->Update();
    Host().Restore();
    EXPECT_TRUE(OpensNothing(window, kCov, 0));
    EXPECT_EQ(Host().Count(L"Points.Item"), 0);
}

TEST_F(EditCommand, UserTypeIsRefusedAndAnUnknownOneIsNot) {
    const Window window = Open();
    Host().Answer(L"Type.GenType.get", L"User");
    Boxes().Answer(IDOK);
    EXPECT_TRUE(OpensNothing(window, kCov, 0));
    EXPECT_EQ(Boxes().Seen().at(0).text, L"Unknown or Not modificable Attribute");
    EXPECT_TRUE(Boxes().Seen().at(0).hadOwner);
    for (const wchar_t* type : {L"user", L"Flot", L""}) {
        Host().Answer(L"Type.GenType.get", type);
        EXPECT_TRUE(OpensNothing(window, kCov, 0));
    }
    EXPECT_EQ(Boxes().Seen().size(), 1u);
}

TEST_F(EditCommand, F2DoubleClickAndMenuCommandOpenTheEditor) {
    const Window window = Open();
    const Steps nothing = [](const Editor&) {};
    EXPECT_TRUE(Edit(window, kTune, 1, nothing, VK_F2));
    const HWND list = Select(window, kTune, 1);
    m_driver->Expect(nothing);
    Choose(*window, IDM_EDIT_VALUE);
    EXPECT_EQ(m_driver->Waiting(), 0);
    m_driver->Expect(nothing);
    NMITEMACTIVATE notice{};
    notice.hdr = {list, IDC_LVCPS, static_cast<UINT>(NM_DBLCLK)};
    SendMessageW(GetParent(list), WM_NOTIFY, IDC_LVCPS, reinterpret_cast<LPARAM>(&notice));
    EXPECT_EQ(m_driver->Waiting(), 0);
}

TEST_F(EditCommand, ContextMenuOffersItForASelectedRow) {
    const Window window = Open();
    const HWND list = Select(window, kTune, 1);
    EXPECT_EQ(ContextMenu(list).at(0), L"&Edit Value\tEnter");
}

TEST_F(EditCommand, WithoutASelectedRowNothingHappens) {
    const Window window = Open();
    const HWND list = Select(window, kTune, 1);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    Host().Clear();
    TakeKey(list, VK_RETURN);
    Choose(*window, IDM_EDIT_VALUE);
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(EditCommand, OfSeveralSelectedRowsTheFocusedOneIsEdited) {
    const Window window = Open();
    const HWND list = Select(window, kTune, 1);
    ListView_SetItemState(list, -1, LVIS_SELECTED, LVIS_SELECTED);
    m_driver->Expect(
        [](const Editor& editor) { EXPECT_EQ(editor.Text(IDC_LBLNAME), L"cpApplCode"); });
    TakeKey(list, VK_RETURN);
}

TEST_F(EditCommand, EditedRowIsReadOnceAndNoOther) {
    const Window window = Open();
    Edit(window, kMonitor, 0, [](const Editor& editor) {
        editor.Type(L"18");
        Host().Clear();
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(Host().Log(),
              (Lines{L"Point.Value.put(\"18\")", L"Point.Value.get()", L"Point.SNVType.get()",
                     L"Type.InvalidValue.get()", L"Point.FormattedValue.get()"}));
    EXPECT_EQ(ValueOf(window, kMonitor, 0), L"18.00 degrees Celsius");
}

TEST_F(EditCommand, CancelledRowIsReadToo) {
    const Window window = Open();
    Edit(window, kMonitor, 0, [&](const Editor&) { PutValue(kLeft, 0, L"17"); });
    EXPECT_EQ(ValueOf(window, kMonitor, 0), L"17.00 degrees Celsius");
}

TEST_F(EditCommand, ValueThatCannotBeReadBackIsGreyed) {
    const Window window = Open();
    Edit(window, kTune, 1, [&](const Editor& editor) {
        editor.Type(L"5");
        Host().Silence(kLeft, true);
        editor.Cancel();
    });
    const HWND list = PageItem(*window, kTune.tab, kTune.list);
    EXPECT_EQ(ValueOf(window, kTune, 1), L"7 units");
    EXPECT_EQ(ValueColor(list, 1), GetSysColor(COLOR_GRAYTEXT));
    Host().Silence(kLeft, false);
    Edit(window, kTune, 1, [](const Editor&) {});
    EXPECT_EQ(ValueColor(list, 1), CLR_DEFAULT);
}

TEST_F(EditCommand, MonitoredValueThatWasGreyedIsShownAsUsualFromItsNextPollOn) {
    const Window window = Open();
    Edit(window, kMonitor, 0, [&](const Editor& editor) {
        Host().Silence(kLeft, true);
        editor.Cancel();
    });
    const HWND list = PageItem(*window, kMonitor.tab, kMonitor.list);
    EXPECT_TRUE(IsRowGreyed(list, 0));
    Host().Silence(kLeft, false);
    window->Tick(frmVantor::Timer::kTmrNvs);
    EXPECT_FALSE(IsRowGreyed(list, 0));
}

TEST_F(EditCommand, FailingHostEndsTheCommandInSilence) {
    const Window window = Open();
    for (const wchar_t* member :
         {L"IDevice.ConfigProperties.get", L"Points.Item", L"Point.SNVType.get",
          L"Type.GenType.get", L"Point.Value.get", L"Point.MinOverride.get", L"Point.Name.get",
          L"Type.Units.get", L"Type.InvalidValue.get", L"Type.BCoef.get"}) {
        Host().FailAlways(member);
        EXPECT_TRUE(OpensNothing(window, kTune, 2)) << member;
        Host().Restore();
    }
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(EditCommand, HostThatClosesTheWindowEndsTheEditor) {
    const Window window = Open();
    EXPECT_TRUE(Edit(window, kTune, 1, [&](const Editor& editor) {
        editor.Type(L"5");
        window->Unload();
        EXPECT_FALSE(IsWindow(editor.Window()));
    }));
    EXPECT_FALSE(window->IsOpen());
    EXPECT_EQ(Host().Count(L"Point.Value.put"), 0);
    EXPECT_EQ(Host().Count(L"Point.FormattedValue.get"), 0);
}

TEST_F(EditCommand, HostThatClosesTheWindowRestoresTheField) {
    const Window window = Open();
    Edit(window, kMonitor, 2, [&](const Editor& editor) {
        m_driver->Expect([&](const Editor& field) {
            field.Type(L"75");
            Host().Clear();
            window->Unload();
        });
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(Changes(Host().Log()), Lines{L"Point.Value.put(\"50.0\")"});
}

TEST_F(EditCommand, WindowThatGoesWhileTheHostWritesDoesNoHarm) {
    const Window window = Open();
    Edit(window, kTune, 1, [&](const Editor& editor) {
        editor.Type(L"5");
        Host().Call(L"Point.Value.put", 1, [&] { window->Unload(); });
        editor.Ok();
    });
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(EditCommand, ListsBuiltAnewMeanwhileShowTheNewValue) {
    const Window window = Open();
    Edit(window, kTune, 1, [&](const Editor& editor) {
        WriteSettings(Section("CommissioningCPs", {"2", "1"}));
        window->Update();
        Write(editor, L"9");
    });
    EXPECT_EQ(ValueOf(window, kTune, 1), L"9 units") << "where the row now stands";
}

TEST_F(EditCommand, SecondCommandFromInsideIsLeftOut) {
    const Window window = Open();
    Edit(window, kTune, 1, [&](const Editor&) { Choose(*window, IDM_EDIT_VALUE); });
}

TEST_F(EditCommand, SilentDeviceRefusesTheValue) {
    const Window window = Open();
    Edit(window, kTune, 1, [&](const Editor& editor) {
        Host().Silence(kLeft, true);
        editor.Type(L"5");
        Boxes().Answer(IDOK);
        editor.Ok();
        EXPECT_TRUE(editor.IsUp());
        EXPECT_EQ(Boxes().Seen().at(0).text, L"error in calculating the value");
    });
    EXPECT_EQ(ValueOf(window, kTune, 1), L"7 units");
}

}  // namespace
}  // namespace quillon::test
