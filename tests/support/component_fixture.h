// Base of every test of COM classes and windows.
#pragma once

#include <gtest/gtest.h>

#include "support/message_boxes.h"

namespace quillon::test {

// COM is there, single-threaded; message boxes are answered. At a test's end, members of derived
// fixtures included, nothing may be left alive: no object of ours, no window of this thread, no GDI
// or USER object more than before, no message to quit.
class ComponentTest : public ::testing::Test {
protected:
    ComponentTest();
    ~ComponentTest() override;

    MessageBoxes& boxes() { return *m_boxes; }

private:
    struct Resources {
        int windows = 0;
        DWORD gdi = 0;
        DWORD user = 0;
    };

    static Resources Count();

    std::optional<MessageBoxes> m_boxes;
    Resources m_before;
};

}  // namespace quillon::test
