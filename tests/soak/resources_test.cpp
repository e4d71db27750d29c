// What the day is judged by sees what would grow.
#include "soak/resources.h"

#include <gtest/gtest-spi.h>
#include <windows.h>

#include <memory>

namespace quillon::test {
namespace {

template <class Work>
ResourceCurve CurveOf(Work work) {
    ResourceCurve curve;
    for (const double part : {0.5, 0.9}) {
        work();
        curve.Add(part);
    }
    return curve;
}

TEST(ResourceCurve, IsFlatWhereNothingIsKept) {
    CurveOf([] { std::make_unique<char[]>(100'000); }).ExpectFlat();
}

TEST(ResourceCurve, SeesMemoryThatIsKept) {
    std::vector<std::unique_ptr<char[]>> kept;
    static ResourceCurve s_curve;
    s_curve = CurveOf([&] { kept.push_back(std::make_unique<char[]>(100'000)); });
    EXPECT_NONFATAL_FAILURE(s_curve.ExpectFlat(), "bytes in the heaps");
}

TEST(ResourceCurve, SeesHandlesThatAreKept) {
    std::vector<HANDLE> kept;
    static ResourceCurve s_curve;
    s_curve = CurveOf([&] {
        for (int i = 0; i < 8; ++i) kept.push_back(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    });
    for (const HANDLE handle : kept) CloseHandle(handle);
    EXPECT_NONFATAL_FAILURE(s_curve.ExpectFlat(), "handles");
}

TEST(ResourceCurve, SeesMenusThatAreKept) {
    std::vector<HMENU> kept;
    static ResourceCurve s_curve;
    s_curve = CurveOf([&] {
        for (int i = 0; i < 4; ++i) kept.push_back(CreatePopupMenu());
    });
    for (const HMENU menu : kept) DestroyMenu(menu);
    EXPECT_NONFATAL_FAILURE(s_curve.ExpectFlat(), "menus");
}

}  // namespace
}  // namespace quillon::test
