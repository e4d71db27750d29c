// Ends a test program whose test does not end: a real window can wait for ever, and a run must not.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <string>

#include "com/platform.h"

namespace quillon::test {

namespace {

// Seconds; the longest test takes a few. A build that counts its lines is given more.
DWORD Longest() {
    wchar_t asked[16];
    const DWORD length = GetEnvironmentVariableW(L"QUILLON_TEST_SECONDS", asked, 16);
    return length > 0 && length < 16 ? std::stoul(asked) : 200;
}

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
        const DWORD longest = Longest() * 1000;
        for (;;) {
            Sleep(500);
            const ::testing::TestInfo* const test = s_test;
            if (!test || GetTickCount() - s_start < longest) continue;
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
