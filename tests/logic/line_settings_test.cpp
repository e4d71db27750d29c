#include "window/line_settings.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(LineSettings, OfTheWindowsDefault) {
    const auto line = ParseLineSettings(L"9600,e,7,1");
    ASSERT_TRUE(line);
    EXPECT_EQ(*line, (LineSettings{9600, Parity::kEven, 7, StopBits::kOne}));
    EXPECT_EQ(*line, LineSettings());
}

TEST(LineSettings, EveryParityInEitherCase) {
    const std::pair<const wchar_t*, Parity> kParities[] = {
        {L"300,n,8,1", Parity::kNone}, {L"300,N,8,1", Parity::kNone},
        {L"300,o,8,1", Parity::kOdd},  {L"300,O,8,1", Parity::kOdd},
        {L"300,E,8,1", Parity::kEven}, {L"300,m,8,1", Parity::kMark},
        {L"300,M,8,1", Parity::kMark}, {L"300,s,8,1", Parity::kSpace},
        {L"300,S,8,1", Parity::kSpace}};
    for (const auto& [text, parity] : kParities) {
        const auto line = ParseLineSettings(text);
        ASSERT_TRUE(line) << text;
        EXPECT_EQ(line->parity, parity) << text;
    }
}

TEST(LineSettings, DataAndStopBits) {
    EXPECT_EQ(ParseLineSettings(L"115200,n,8,2"),
              (LineSettings{115200, Parity::kNone, 8, StopBits::kTwo}));
    EXPECT_EQ(ParseLineSettings(L"110,n,5,1.5"),
              (LineSettings{110, Parity::kNone, 5, StopBits::kOneAndHalf}));
    EXPECT_EQ(ParseLineSettings(L"1,n,4,1"), (LineSettings{1, Parity::kNone, 4, StopBits::kOne}));
}

TEST(LineSettings, BlanksAroundAFieldDoNotCount) {
    EXPECT_EQ(ParseLineSettings(L" 9600 , e,\t7 ,1 "), LineSettings());
}

TEST(LineSettings, AnythingElseIsNone) {
    for (const wchar_t* text : {L"",
                                L"9600",
                                L"9600,e,7",
                                L"9600,e,7,",
                                L"9600,e,7,1,",
                                L"9600,e,7,1,x",
                                L",e,7,1",
                                L"0,e,7,1",
                                L"-9600,e,7,1",
                                L"9600.0,e,7,1",
                                L"9600,x,7,1",
                                L"9600,,7,1",
                                L"9600,en,7,1",
                                L"9600,e,3,1",
                                L"9600,e,9,1",
                                L"9600,e,7,3",
                                L"9600,e,7,1,5",
                                L"9600;e;7;1",
                                L"96 00,e,7,1",
                                L"99999999999999999999999,e,7,1",
                                L"100000001,e,7,1"})
        EXPECT_EQ(ParseLineSettings(text), std::nullopt) << text;
}

TEST(PortNumber, IsOneTo256) {
    EXPECT_EQ(ParsePortNumber(L"1"), 1u);
    EXPECT_EQ(ParsePortNumber(L" 10 "), 10u);
    EXPECT_EQ(ParsePortNumber(L"007"), 7u);
    EXPECT_EQ(ParsePortNumber(L"256"), 256u);
}

TEST(PortNumber, AnythingElseIsNone) {
    for (const wchar_t* text : {L"", L"0", L"257", L"-1", L"+1", L"1.0", L"COM1", L"1 2", L"one",
                                L"99999999999999999999999999"})
        EXPECT_EQ(ParsePortNumber(text), std::nullopt) << text;
}

}  // namespace
}  // namespace quillon
