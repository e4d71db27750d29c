#include "window/shell_answer.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon {
namespace {

TEST(DocumentationMessage, NoViewer) {
    EXPECT_EQ(DocumentationMessage(31),
              L"Viewer not Available. Please install the viewer to see the documentation");
}

TEST(DocumentationMessage, MissingFile) {
    EXPECT_EQ(DocumentationMessage(2), L"Technical bullettin not available");
    EXPECT_EQ(DocumentationMessage(kShellFileNotFound), L"Technical bullettin not available");
}

TEST(DocumentationMessage, EveryOtherCodeBelow31IsNotAllowed) {
    for (std::intptr_t result = -1; result < 31; ++result) {
        if (result == 2) continue;
        EXPECT_EQ(DocumentationMessage(result), L"Visualization not allowed") << result;
    }
    EXPECT_EQ(DocumentationMessage(std::numeric_limits<std::intptr_t>::min()),
              L"Visualization not allowed");
}

TEST(DocumentationMessage, SuccessShowsNothing) {
    for (const std::intptr_t result : {std::intptr_t{32}, std::intptr_t{33}, std::intptr_t{42},
                                       std::numeric_limits<std::intptr_t>::max()}) {
        EXPECT_EQ(DocumentationMessage(result), std::nullopt) << result;
    }
}

TEST(BulletinFile, IsTheFirstFourDigitsAsAPdf) {
    EXPECT_EQ(BulletinFile(L"00010001"), L"0001.pdf");
    EXPECT_EQ(BulletinFile(L"4410"), L"4410.pdf");
    EXPECT_EQ(BulletinFile(L"0a0Bxyz"), L"0a0B.pdf");
}

TEST(BulletinFile, ShortTextNamesNone) {
    for (const wchar_t* text : {L"", L"0", L"000"}) {
        EXPECT_EQ(BulletinFile(text), std::nullopt) << text;
    }
}

TEST(BulletinFile, TextThatIsNotHexadecimalNamesNone) {
    for (const wchar_t* text : {L"..\\x", L"C:\\x", L"000G", L" 0001", L"/../", L"\uFF10001"}) {
        EXPECT_EQ(BulletinFile(text), std::nullopt) << text;
    }
    EXPECT_EQ(BulletinFile(std::wstring(8, L'\0')), std::nullopt);
}

}  // namespace
}  // namespace quillon
