#include "window/app_status.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

AppStatusView Failing(std::wstring_view caption) {
    return {.caption = std::wstring(caption), .failureIcon = true};
}

AppStatusView Working() {
    return {.caption = L"Merrowind New_Nimbra PlugIn", .failureIcon = false};
}

TEST(AppStatus, ZeroReplacesTheDesignCaptionByTheNormalOne) {
    EXPECT_EQ(kDesignCaption, L"Merrowind Nimbra PlugIn");
    EXPECT_EQ(AfterStatus(0, kDesignCaption), Working());
}

TEST(AppStatus, ZeroKeepsTheNormalCaption) {
    EXPECT_EQ(AfterStatus(0, kNormalCaption), Working());
}

TEST(AppStatus, FailureBlinksBetweenNothingAndItsCaption) {
    AppStatusView view = AfterStatus(1, kNormalCaption);
    EXPECT_EQ(view, Failing(L""));
    view = AfterStatus(1, view.caption);
    EXPECT_EQ(view, Failing(L"Nimbra Failure"));
    view = AfterStatus(1, view.caption);
    EXPECT_EQ(view, Failing(L""));
}

TEST(AppStatus, FailureBeforeTheFirstGoodStatusBlinksFromTheDesignCaption) {
    EXPECT_EQ(AfterStatus(1, kDesignCaption), Failing(L""));
}

TEST(AppStatus, EveryOtherByteIsAFailure) {
    for (int status = 1; status <= 255; ++status) {
        EXPECT_EQ(AfterStatus(static_cast<std::uint8_t>(status), L""), Failing(kFailureCaption));
    }
}

TEST(AppStatus, NormalCaptionAndIconComeBackFromEitherHalfOfTheBlink) {
    EXPECT_EQ(AfterStatus(0, L""), Working());
    EXPECT_EQ(AfterStatus(0, kFailureCaption), Working());
}

}  // namespace
}  // namespace quillon
