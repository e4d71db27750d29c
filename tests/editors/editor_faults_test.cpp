// Faults while an editor is up: the owner's window goes, the host fails at every call in turn, long
// values.
#include "com/error.h"
#include "editors/editor_test.h"

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
    FakePoint number(L"Float");
    number.Set(L"Value", longText);
    Edit(number, [&](const Editor& editor) {
        EXPECT_EQ(editor.Text(), digits);
        editor.Ok();
    });
    EXPECT_EQ(number.Written(), Lines{digits});
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
