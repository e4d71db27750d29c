// How often an editor asks the host.
#include "editors/editor_test.h"

namespace quillon::test {
namespace {

class HostCalls : public EditorTest {
protected:
    // What opening asks, and then each key.
    Lines Opening(
        FakePoint& point, Steps steps = [](const Editor&) {}) {
        Lines opening;
        Edit(point, [&](const Editor& editor) {
            opening = std::exchange(point.Log(), {});
            steps(editor);
        });
        return opening;
    }
};

TEST_F(HostCalls, NumberAsksEachMemberOnce) {
    FakePoint point(L"SignedNumeric", L"1");
    EXPECT_EQ(Opening(point), (Lines{L"SNVType.get", L"GenType.get", L"Value.get",
                                     L"MinOverride.get", L"MaxOverride.get", L"Name.get",
                                     L"Units.get", L"InvalidValue.get", L"BCoef.get"}));
    FakePoint real(L"Float", L"1");
    EXPECT_EQ(Opening(real).size(), 8u) << "whose decimals have no limit";
}

TEST_F(HostCalls, TextEnumerationAndStructureAskEachMemberOnce) {
    FakePoint text(L"Textual", L"x");
    EXPECT_EQ(Opening(text), (Lines{L"SNVType.get", L"GenType.get", L"Value.get", L"Name.get"}));
    FakePoint enumeration(L"Enum", L"0");
    EXPECT_EQ(Opening(enumeration),
              (Lines{L"SNVType.get", L"GenType.get", L"Value.get", L"Name.get", L"EnumDesc.get"}));
    FakePoint structure(L"Struct", L"1");
    FakePoint& field = structure.AddField(L"a", L"Float", L"1");
    EXPECT_EQ(Opening(structure), (Lines{L"SNVType.get", L"GenType.get", L"Value.get", L"Name.get",
                                         L"Fields.get", L"Fields._NewEnum"}));
    EXPECT_EQ(field.Log(), (Lines{L"Key.get", L"Name.get", L"FormattedValue.get", L"Value.get"}));
}

TEST_F(HostCalls, KeysAskNothing) {
    FakePoint point(L"SignedNumeric", L"20");
    point.Set(L"MaxOverride", L"30").Set(L"MinOverride", L"5");
    Opening(point, [&](const Editor& editor) {
        editor.Type(L"12.5\b\b-x");
        editor.Key(VK_LEFT);
        editor.Key(VK_DELETE);
        editor.Control(L'A');
        editor.Control(L'X');
        editor.Control(L'Z');
        Boxes().Answer(IDOK);
        editor.Type(L"99");
        editor.Key(VK_TAB);
        EXPECT_EQ(point.Log(), Lines());
    });
    EXPECT_EQ(point.Log(), Lines()) << "and Cancel writes nothing";
    TakeFromClipboard();
}

TEST_F(HostCalls, EscapeEnterAndTheInvalidMarkAskOnce) {
    FakePoint point(L"SignedNumeric", L"20");
    point.Set(L"InvalidValue", L"99");
    Opening(point, [&](const Editor& editor) {
        editor.Key(VK_ESCAPE);
        EXPECT_EQ(std::exchange(point.Log(), {}), Lines{L"Value.get"});
        editor.Click(IDC_CHKINVALID);
        EXPECT_EQ(point.Log(), Lines());
        editor.Click(IDC_CHKINVALID);
        EXPECT_EQ(std::exchange(point.Log(), {}), Lines{L"Value.get"});
        editor.Key(VK_RETURN);
        EXPECT_EQ(point.Log(), Lines{L"Value.put 20"});
    });
}

TEST_F(HostCalls, KeysInTextAndEnumerationAskNothing) {
    FakePoint text(L"Textual", L"x");
    Opening(text, [&](const Editor& editor) {
        editor.Type(L"abc def\b");
        EXPECT_EQ(text.Log(), Lines());
    });
    FakePoint enumeration(L"Enum", L"0");
    enumeration.Set(L"EnumDesc", L"0,a;1,b;");
    Opening(enumeration, [&](const Editor& editor) {
        editor.Key(VK_DOWN);
        editor.Key(VK_UP);
        EXPECT_EQ(enumeration.Log(), Lines());
    });
}

TEST_F(HostCalls, FieldIsAskedForAgainByItsKey) {
    FakePoint structure(L"Struct", L"1");
    FakePoint& field = structure.AddField(L"a", L"Textual", L"1");
    Opening(structure, [&](const Editor& editor) {
        field.Log().clear();
        Driver().Expect([](const Editor& inner) { inner.Ok(); });
        editor.Key(VK_RETURN);
        EXPECT_EQ(structure.Log(), Lines{L"Fields.Item ka"});
        EXPECT_EQ(field.Log(),
                  (Lines{L"Value.put 1", L"SNVType.get", L"GenType.get", L"Value.get", L"Name.get",
                         L"Value.put 1", L"FormattedValue.get", L"Value.get"}));
    });
}

}  // namespace
}  // namespace quillon::test
