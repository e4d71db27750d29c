// Ends a test program whose test does not end: a real window can wait for ever, and a run must not.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <string>

#include "com/platform.h"

namespace quillon::test {

namespace {

constexpr DWORD kLongest = 200'000;  // milliseconds; the longest test takes a few seconds
constexpr UINT kHung = 4;

class Watchdog final : public ::testing::EmptyTestEventListener {
    void OnTestProgramStart(const ::testing::UnitTest&) override {
        CloseHandle(CreateThread(nullptr, 0, Watch, nullptr, 0, nullptr));
    }
    void OnTestStart(const ::testing::TestInfo& test) override {
        s_test = &test;
        s_start = GetTickCount();
    }
    void OnTestEnd(const ::testing::TestInfo&) override { s_test = nullptr; }

    static DWORD WINAPI Watch(void*) {
        for (;;) {
            Sleep(500);
            const ::testing::TestInfo* const test = s_test;
            if (!test || GetTickCount() - s_start < kLongest) continue;
            std::fprintf(stderr, "[  FAILED  ] %s.%s does not end\n", test->test_suite_name(),
                         test->name());
            std::fflush(nullptr);
            TerminateProcess(GetCurrentProcess(), kHung);
        }
    }

    static inline std::atomic<const ::testing::TestInfo*> s_test = nullptr;
    static inline std::atomic<DWORD> s_start = 0;
};

const bool kWatched = [] {
    ::testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
    return true;
}();

}  // namespace

}  // namespace quillon::test
