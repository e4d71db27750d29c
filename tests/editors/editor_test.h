// The fixture of the editors' tests: a window that owns them, and the proof that nothing is left.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "editors/EditPoint.h"
#include "editors/editor_driver.h"
#include "editors/editors_resource.h"
#include "editors/fake_point.h"
#include "support/message_boxes.h"
#include "support/test_window.h"
#include "window/gui_objects.h"

namespace quillon::test {

using Lines = std::vector<std::wstring>;

class EditorTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Runs the steps in the point's editor. False: none was shown.
    bool Edit(FakePoint& point, Steps steps);
    // The point's editor is expected not to come up.
    bool OpensNothing(FakePoint& point);

    HWND Owner() const { return m_owner->Get(); }
    EditorDriver& Driver() { return *m_driver; }
    MessageBoxes& Boxes() { return *m_boxes; }
    // The last message box that was seen.
    const Box& LastBox() { return m_boxes->Seen().back(); }

private:
    void WarmUp();

    std::unique_ptr<TestWindow> m_owner;
    std::unique_ptr<MessageBoxes> m_boxes;
    std::unique_ptr<EditorDriver> m_driver;
    GuiObjects m_before;
};

// A region whose decimal separator is a comma, for as long as this lives.
class CommaRegion {
public:
    CommaRegion();
    CommaRegion(const CommaRegion&) = delete;
    ~CommaRegion();

private:
    wchar_t m_decimal[8] = {};
    wchar_t m_thousand[8] = {};
};

}  // namespace quillon::test
