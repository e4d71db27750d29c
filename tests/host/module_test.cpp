// The version that the DLL shows in its file properties.
#include "support/host_test.h"

namespace quillon::test {
namespace {

TEST(Module, VersionResourceSaysTwoOneFourteen) {
    const std::wstring path = Wide(QUILLON_STRIPPED_DLL);
    DWORD ignored = 0;
    std::string block(GetFileVersionInfoSizeW(path.c_str(), &ignored), '\0');
    ASSERT_FALSE(block.empty());
    ASSERT_TRUE(
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
    for (const auto& [high, low] : {std::pair{fixed->dwFileVersionMS, fixed->dwFileVersionLS},
                                    {fixed->dwProductVersionMS, fixed->dwProductVersionLS}}) {
        EXPECT_EQ(high, DWORD{(2 << 16) | 1});
        EXPECT_EQ(low, DWORD{14 << 16});
    }
    wchar_t* text = nullptr;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904E4\\FileVersion",
                               reinterpret_cast<void**>(&text), &length));
    EXPECT_STREQ(text, L"2.1.14");
}

}  // namespace
}  // namespace quillon::test
