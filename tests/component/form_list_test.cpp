#include "ui/form_list.h"

#include <optional>
#include <stdexcept>

#include "support/component_fixture.h"
#include "support/test_window.h"
#include "ui/pump.h"

namespace quillon {
namespace {

using test::TestWindow;
using ui::Form;

int g_forms = 0;

// A form with a real window and nothing in it.
class BareForm final : public Form {
public:
    explicit BareForm(TestWindow::Handler handler = {}) : m_window(std::move(handler)) {
        ++g_forms;
    }
    ~BareForm() override { --g_forms; }

    void Show(HWND) override { ShowWindow(Window(), SW_SHOWNA); }
    HWND Window() const { return m_window.Get(); }
    void Post() const { m_window.Post(); }

    std::function<void()> onClose;

protected:
    void Close() override {
        ++closed;
        DestroyWindow(Window());
        if (onClose) onClose();
    }

public:
    int closed = 0;

private:
    TestWindow m_window;
};

class FormListTest : public test::ComponentTest {
protected:
    ~FormListTest() override {
        EXPECT_TRUE(ui::OpenForms().empty());
        EXPECT_EQ(g_forms, 0);
    }

    std::shared_ptr<BareForm> Open(const wchar_t* tag, TestWindow::Handler handler = {}) {
        const auto form = std::make_shared<BareForm>(std::move(handler));
        form->SetTag(tag);
        form->Open();
        return form;
    }
    static auto HasTag(std::wstring tag) {
        return [tag = std::move(tag)](const Form& form) { return form.Tag() == tag; };
    }
    static void UnloadAll() {
        for (const auto& form : ui::OpenForms()) form->Unload();
    }
    static std::wstring Tags() {
        std::wstring tags;
        for (const auto& form : ui::OpenForms()) tags += form->Tag() + L" ";
        return tags;
    }
};

TEST_F(FormListTest, OpenFormsStandInTheOrderOfOpening) {
    for (const wchar_t* tag : {L"a", L"b", L"c"}) Open(tag);
    EXPECT_EQ(Tags(), L"a b c ");
    UnloadAll();
}

TEST_F(FormListTest, ListKeepsAFormAliveUntilItIsUnloaded) {
    HWND window = Open(L"a")->Window();
    EXPECT_EQ(g_forms, 1);
    EXPECT_TRUE(IsWindow(window));
    ui::OpenForms().front()->Unload();
    EXPECT_EQ(g_forms, 0);
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(FormListTest, FormIsOpenFromOpenToUnloadAndListedOnce) {
    const auto form = std::make_shared<BareForm>();
    EXPECT_FALSE(form->IsOpen());
    form->Open();
    form->Open();
    EXPECT_TRUE(form->IsOpen());
    EXPECT_EQ(ui::OpenForms().size(), 1u);
    form->Unload();
    EXPECT_FALSE(form->IsOpen());
}

TEST_F(FormListTest, SecondUnloadDoesNothing) {
    const auto form = Open(L"a");
    form->Unload();
    form->Unload();
    EXPECT_EQ(form->closed, 1);
    const auto never = std::make_shared<BareForm>();
    never->Unload();
    EXPECT_EQ(never->closed, 0);
}

TEST_F(FormListTest, FormIsOutOfTheListWhenItCloses) {
    const auto form = Open(L"a");
    std::optional<bool> open;
    form->onClose = [&] {
        open = form->IsOpen();
        form->Unload();
    };
    form->Unload();
    EXPECT_EQ(open, false);
    EXPECT_EQ(form->closed, 1);
    form->onClose = {};
}

TEST_F(FormListTest, FormThatClosesWhileItIsComparedIsNotFound) {
    const auto form = Open(L"a");
    const auto closing = [&](const Form&) {
        form->Unload();
        return true;
    };
    EXPECT_EQ(ui::FindForm(closing), nullptr);
}

TEST_F(FormListTest, FormThatClosesAnotherWithItself) {
    const auto first = Open(L"a");
    const auto second = Open(L"b");
    Open(L"c");
    first->onClose = [&] { second->Unload(); };
    first->Unload();
    EXPECT_EQ(Tags(), L"c ");
    UnloadAll();
}

TEST_F(FormListTest, FindGivesTheOldestMatch) {
    const auto first = Open(L"x");
    Open(L"y");
    Open(L"x");
    EXPECT_EQ(ui::FindForm(HasTag(L"x")), first);
    EXPECT_EQ(ui::FindForm(HasTag(L"z")), nullptr);
    UnloadAll();
    EXPECT_EQ(ui::FindForm(HasTag(L"x")), nullptr);
}

TEST_F(FormListTest, TagMayChange) {
    const auto form = Open(L"");
    form->SetTag(L"frmVantor0123456789AB");
    EXPECT_EQ(ui::FindForm(HasTag(L"frmVantor0123456789AB")), form);
    UnloadAll();
}

TEST_F(FormListTest, EveryOpenFormIsAskedOnceUntilOneMatches) {
    for (const wchar_t* tag : {L"a", L"b", L"c", L"d"}) Open(tag);
    std::wstring asked;
    ui::FindForm([&](const Form& form) {
        asked += form.Tag();
        return form.Tag() == L"c";
    });
    EXPECT_EQ(asked, L"abc");
    UnloadAll();
}

TEST_F(FormListTest, PendingMessagesAreHandledBeforeEachForm) {
    int handled = 0;
    const TestWindow window([&](UINT) { ++handled; });
    for (const wchar_t* tag : {L"a", L"b", L"c"}) Open(tag);
    std::vector<int> before;
    window.Post();
    ui::FindForm([&](const Form&) {
        before.push_back(handled);
        window.Post();
        return false;
    });
    EXPECT_EQ(before, (std::vector<int>{1, 2, 3}));
    UnloadAll();
    ui::PumpMessages();
}

TEST_F(FormListTest, FormClosedFromInsideThePumpIsNotFound) {
    const TestWindow window([&](UINT) { UnloadAll(); });
    for (const wchar_t* tag : {L"a", L"b", L"x"}) Open(tag);
    window.Post();
    int asked = 0;
    EXPECT_EQ(ui::FindForm([&](const Form& form) {
                  ++asked;
                  return form.Tag() == L"x";
              }),
              nullptr);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(g_forms, 0);
}

TEST_F(FormListTest, FormThatClosesItselfOnItsOwnMessageIsNotFound) {
    std::weak_ptr<BareForm> closing;
    const auto form = Open(L"x", [&](UINT) { closing.lock()->Unload(); });
    closing = form;
    const auto other = Open(L"x");
    form->Post();
    EXPECT_EQ(ui::FindForm(HasTag(L"x")), other);
    UnloadAll();
}

TEST_F(FormListTest, FormOpenedFromInsideThePumpIsLookedAtNextTime) {
    const TestWindow window([&](UINT) { Open(L"late"); });
    Open(L"a");
    window.Post();
    EXPECT_EQ(ui::FindForm(HasTag(L"late")), nullptr);
    EXPECT_NE(ui::FindForm(HasTag(L"late")), nullptr);
    UnloadAll();
}

TEST_F(FormListTest, FoundFormStaysAliveAfterItWasUnloaded) {
    Open(L"x");
    const auto found = ui::FindForm(HasTag(L"x"));
    found->Unload();
    EXPECT_EQ(found->Tag(), L"x");
    EXPECT_EQ(g_forms, 1);
}

TEST_F(FormListTest, WhatTheQuestionThrowsComesOut) {
    Open(L"a");
    EXPECT_THROW(ui::FindForm([](const Form&) -> bool { throw std::runtime_error("no"); }),
                 std::runtime_error);
    UnloadAll();
}

// How the windows of one device are closed: by the first 12 characters of their tags.
TEST_F(FormListTest, AllFormsOfOneDeviceAreFoundAndUnloadedOneByOne) {
    const std::wstring neuron = L"0123456789AB";
    for (const std::wstring& tag :
         {neuron, L"frmVantor" + neuron, neuron + L"x", std::wstring(L"FFFFFFFFFFFF"), neuron})
        Open(tag.c_str());
    const auto isOurs = [&](const Form& form) { return form.Tag().substr(0, 12) == neuron; };
    while (const auto form = ui::FindForm(isOurs)) form->Unload();
    EXPECT_EQ(Tags(), L"frmVantor0123456789AB FFFFFFFFFFFF ");
    UnloadAll();
}

}  // namespace
}  // namespace quillon
