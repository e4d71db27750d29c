// Faults while an editor is up: the owner's window goes, the host fails at every call in turn, long
// values.
#include "editors/editor_test.h"
//
#include <commctrl.h>

#include "com/error.h"
#include "support/plugin_window.h"

namespace quillon::test {
namespace {

class EditorFaults : public EditorTest {
protected:
    // A point of each kind, with what its editor reads.
    static std::unique_ptr<FakePoint> PointOf(const wchar_t* type) {
        auto point = std::make_unique<FakePoint>(type, L"1");
        point->Set(L"EnumDesc", L"1,One;2,Two;").Set(L"InvalidValue", L"99");
        point->Set(L"MinOverride", L"0").Set(L"MaxOverride", L"50");
        point->AddField(L"a", L"Float", L"1");
        return point;
    }
    void DestroyOwner() { DestroyWindow(Owner()); }
    // The point's editor is asked for, and its window never seen.
    bool ShowsNone(FakePoint& point) {
        const int before = Driver().Shown();
        Edit(point, [](const Editor& editor) { editor.Cancel(); });
        Driver().Forget();
        return Driver().Shown() == before;
    }
};

// From now on refuses, once, the nth message of a kind that a control made from now on gets.
class RefusedMessage {
public:
    RefusedMessage(const wchar_t* kind, UINT message, int nth, LRESULT answer) {
        s_kind = kind;
        s_message = message;
        s_left = nth;
        s_answer = answer;
        m_hook = SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId());
        EXPECT_NE(m_hook, nullptr);
    }
    RefusedMessage(const RefusedMessage&) = delete;
    RefusedMessage& operator=(const RefusedMessage&) = delete;
    ~RefusedMessage() { UnhookWindowsHookEx(m_hook); }

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam) noexcept {
        const auto window = reinterpret_cast<HWND>(wParam);
        if (code == HCBT_CREATEWND && ClassOf(window) == s_kind)
            SetWindowSubclass(window, OnMessage, 99, 0);
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    static LRESULT CALLBACK OnMessage(HWND control, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR) noexcept {
        if (message == WM_NCDESTROY) RemoveWindowSubclass(control, OnMessage, id);
        if (message == s_message && --s_left == 0) return s_answer;
        return DefSubclassProc(control, message, wParam, lParam);
    }

    static inline std::wstring s_kind;
    static inline UINT s_message = 0;
    static inline int s_left = 0;
    static inline LRESULT s_answer = 0;

    HHOOK m_hook = nullptr;
};

constexpr const wchar_t* kTypes[] = {L"SignedNumeric", L"Float", L"Textual", L"Enum", L"Struct"};

TEST_F(EditorFaults, EditorGoesWithItsOwner) {
    const auto point = PointOf(L"Float");
    Edit(*point, [&](const Editor& editor) {
        editor.Type(L"5");
        DestroyOwner();
        EXPECT_FALSE(IsWindow(editor.Window()));
    });
    EXPECT_EQ(point->Written(), Lines());
}

TEST_F(EditorFaults, FieldIsRestoredWhenTheOwnerGoes) {
    const auto point = PointOf(L"Struct");
    FakePoint& field = point->Field(0);
    Edit(*point, [&](const Editor& editor) {
        Driver().Expect([&](const Editor& inner) {
            inner.Type(L"5");
            field.Set(L"Value", L"4");
            DestroyOwner();
        });
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(field.Value(), L"1");
    EXPECT_EQ(point->Written(), Lines());
}

TEST_F(EditorFaults, OwnerGoesInsideAMessageBox) {
    const auto point = PointOf(L"Float");
    Edit(*point, [&](const Editor& editor) {
        Boxes().Answer(IDOK, [&] { DestroyOwner(); });
        editor.Type(L"51");
    });
    EXPECT_EQ(point->Written(), Lines());
}

TEST_F(EditorFaults, OwnerGoesInsideTheRefusalOfOk) {
    const auto point = PointOf(L"Float");
    Edit(*point, [&](const Editor& editor) {
        editor.Type(L"-1");
        Boxes().Answer(IDOK, [&] { DestroyOwner(); });
        editor.Key(VK_RETURN);
    });
    EXPECT_EQ(point->Written(), Lines());
}

TEST_F(EditorFaults, OwnerGoesInsideTheMessageOnOpening) {
    FakePoint point(L"Textual");
    point.Set(L"Value", com::Variant(std::wstring_view(std::wstring(31, L'x'))));
    std::optional<TestWindow> other;
    Boxes().Answer(IDOK, [&] {
        DestroyOwner();
        other.emplace();
        SetFocus(other->Get());
    });
    EXPECT_TRUE(ShowsNone(point));
    ASSERT_TRUE(other);
    EXPECT_EQ(GetFocus(), other->Get()) << "an editor that is gone takes no focus away";
    EXPECT_EQ(point.Written(), Lines());
}

TEST_F(EditorFaults, SecondOkAndCancelInsideTheWriteAreIgnored) {
    for (const wchar_t* type : kTypes) {
        const auto point = PointOf(type);
        Edit(*point, [&](const Editor& editor) {
            for (const int id : {IDOK, IDCANCEL}) {
                point->Fail(L"Value.put");
                point->During(L"Value.put", [&] { editor.Command(id); });
                Boxes().Answer(IDOK);
                editor.Ok();
                EXPECT_TRUE(editor.IsUp()) << type << id;
            }
            point->Restore();
            point->During(L"Value.put", [&] { editor.Command(IDOK); });
            editor.Ok();
            EXPECT_FALSE(editor.IsUp());
        });
        EXPECT_EQ(point->Written(), (Lines{L"1", L"1", L"1"})) << type << ": one for each OK";
    }
}

TEST_F(EditorFaults, HeldEnterPressesNothing) {
    for (const wchar_t* type : kTypes) {
        const auto point = PointOf(type);
        Edit(*point, [&](const Editor& editor) {
            const HWND first = GetFocus();
            for (const HWND focus : {first, editor.Item(IDOK), editor.Item(IDCANCEL)}) {
                SetFocus(focus);
                editor.HeldKey(VK_RETURN);
                ASSERT_TRUE(editor.IsUp()) << type;
            }
            EXPECT_EQ(point->Field(0).Written(), Lines()) << "nor does it open a field";
            SetFocus(editor.Item(IDOK));
            editor.Key(VK_RETURN);
            EXPECT_FALSE(editor.IsUp()) << "pressed anew it is OK";
        });
        EXPECT_EQ(point->Written(), Lines{L"1"}) << type;
    }
}

TEST_F(EditorFaults, HeldEnterPastTheDialogsOwnLoopPressesNothing) {
    for (const wchar_t* type : {L"Float", L"Textual"}) {
        const auto point = PointOf(type);
        Edit(*point, [&](const Editor& editor) {
            SendMessageW(editor.Item(IDC_TXTNEWCPVALUE), WM_CHAR, kEnter, kRepeated | 1);
            EXPECT_TRUE(editor.IsUp());
        });
        EXPECT_EQ(point->Written(), Lines()) << type;
    }
}

TEST_F(EditorFaults, EntryThatTheListDoesNotTakeShowsNoEditor) {
    const auto point = PointOf(L"Enum");
    {
        const RefusedMessage refused(L"ComboBox", CB_ADDSTRING, 2, CB_ERRSPACE);
        EXPECT_TRUE(ShowsNone(*point)) << "the entries after it would write others' numbers";
    }
    EXPECT_FALSE(ShowsNone(*point)) << "the next one is whole";
}

TEST_F(EditorFaults, RowThatTheListDoesNotTakeShowsNoEditor) {
    const auto point = PointOf(L"Struct");
    {
        const RefusedMessage refused(WC_LISTVIEWW, LVM_INSERTITEMW, 1, -1);
        EXPECT_TRUE(ShowsNone(*point)) << "a row after it would open another's field";
    }
    EXPECT_FALSE(ShowsNone(*point)) << "the next one is whole";
}

TEST_F(EditorFaults, OwnerGoesInsideTheHostsCall) {
    const auto point = PointOf(L"Textual");
    point->Fail(L"Value.put");
    Edit(*point, [&](const Editor& editor) {
        point->During(L"Value.put", [&] { DestroyOwner(); });
        editor.Ok();
    });
    EXPECT_TRUE(Boxes().Seen().empty()) << "there is nobody to tell any more";
}

TEST_F(EditorFaults, HostThatFailsAtTheNthCallOfOpeningOpensNothing) {
    for (const wchar_t* type : kTypes) {
        for (int nth = 1;; ++nth) {
            const auto point = PointOf(type);
            point->FailNth(nth);
            ASSERT_LT(nth, 30);
            bool opened = false;
            Driver().Expect([&](const Editor&) {
                opened = true;
                point->Restore();
            });
            try {
                EditPoint(point->Point(), Owner());
            } catch (const com::Error&) {
            }
            Driver().Forget();
            EXPECT_EQ(point->Written(), Lines()) << type << nth;
            if (opened) break;
        }
    }
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(EditorFaults, PointWithoutAMemberOpensNothing) {
    FakePoint point(L"Float", L"1");
    point.Fail(L"Units.get");
    EXPECT_TRUE(OpensNothing(point));
}

TEST_F(EditorFaults, UnknownTypeOpensNothingAndUserIsRefused) {
    for (const wchar_t* type : {L"", L"float", L"Numeric"}) {
        FakePoint point(type, L"1");
        EXPECT_TRUE(OpensNothing(point)) << type;
    }
    EXPECT_TRUE(Boxes().Seen().empty());
    FakePoint user(L"User", L"0102");
    Boxes().Answer(IDOK);
    EXPECT_TRUE(OpensNothing(user));
    EXPECT_EQ(LastBox().text, L"Unknown or Not modificable Attribute");
    EXPECT_EQ(LastBox().title, L"Edit Value");
    EXPECT_EQ(LastBox().icon, Icon::kExclamation);
    EXPECT_EQ(LastBox().buttons, std::vector<int>{IDOK});
}

TEST_F(EditorFaults, ValuesOfAnyVariantKindAreTexts) {
    FakePoint point(L"Float");
    com::Variant number;
    number.vt = VT_R8;
    number.dblVal = 21.5;
    com::Variant null;
    null.vt = VT_NULL;
    point.Set(L"Value", number).Set(L"MinOverride", com::Variant(-5)).Set(L"MaxOverride", null);
    point.Set(L"Units", com::Variant());
    Edit(point, [](const Editor& editor) {
        EXPECT_EQ(editor.Text(), L"21.5");
        EXPECT_EQ(editor.Text(IDC_LBLMIN), L"-5");
        EXPECT_EQ(editor.Text(IDC_LBLMAX), L"---");
        EXPECT_EQ(editor.Text(IDC_LBLUNITS), L"[  ]");
    });
}

TEST_F(EditorFaults, LongValuesPass) {
    const std::wstring digits(100'000, L'7');
    const com::Variant longText{std::wstring_view(digits)};
    // Wine lays a text box out by the square of its length.
    const std::wstring longNumber(1'000, L'7');
    FakePoint number(L"Float", longNumber);
    Edit(number, [&](const Editor& editor) {
        EXPECT_EQ(editor.Text(), longNumber);
        editor.Ok();
    });
    EXPECT_EQ(number.Written(), Lines{longNumber});
    FakePoint structure(L"Struct");
    structure.AddField(L"a", L"Textual", digits);
    Edit(structure, [&](const Editor& editor) { editor.Ok(); });
    EXPECT_EQ(structure.Written(), Lines{digits});
    FakePoint text(L"Textual");
    text.Set(L"Value", longText);
    Boxes().Answer(IDOK);
    Edit(text, [&](const Editor& editor) { EXPECT_EQ(editor.Text(), std::wstring(30, L'7')); });
}

}  // namespace
}  // namespace quillon::test
