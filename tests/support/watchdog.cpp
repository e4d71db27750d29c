#include "support/watchdog.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <mutex>

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
public:
    static void Begin(const std::string& what) {
        const std::lock_guard hold(s_lock);
        s_watched = what;
        s_start = GetTickCount();
    }

private:
    void OnTestProgramStart(const ::testing::UnitTest&) override {
        CloseHandle(CreateThread(nullptr, 0, Watch, nullptr, 0, nullptr));
    }
    void OnTestStart(const ::testing::TestInfo& test) override {
        Begin(std::string(test.test_suite_name()) + "." + test.name());
    }
    void OnTestEnd(const ::testing::TestInfo&) override { Begin({}); }

    static DWORD WINAPI Watch(void*) {
        const DWORD longest = Longest() * 1000;
        for (;;) {
            Sleep(500);
            const std::lock_guard hold(s_lock);
            if (s_watched.empty() || GetTickCount() - s_start < longest) continue;
            std::fprintf(stderr, "[  FAILED  ] %s does not end\n", s_watched.c_str());
            std::fflush(nullptr);
            TerminateProcess(GetCurrentProcess(), kHung);
        }
    }

    static inline std::mutex s_lock;
    static inline std::string s_watched;
    static inline DWORD s_start = 0;
};

const bool kWatched = [] {
    ::testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
    return true;
}();

}  // namespace

void WatchRound(const std::string& name) {
    Watchdog::Begin(name);
}

}  // namespace quillon::test
