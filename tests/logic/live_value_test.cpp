#include "window/live_value.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quillon {
namespace {

struct Read {
    LiveReading reading;
    int formattedReads = 0;
};

Read ReadOf(std::wstring_view raw, std::wstring_view invalid, std::wstring_view separator = L".") {
    Read read;
    const auto formatted = [&read]() -> std::wstring {
        ++read.formattedReads;
        return L"formatted";
    };
    read.reading = ReadLiveValue(raw, invalid, formatted, separator);
    return read;
}

void ExpectShown(const Read& read, std::wstring_view text) {
    EXPECT_FALSE(read.reading.silent);
    EXPECT_EQ(read.reading.text, text);
}

TEST(LiveValue, ValidValueShowsItsFormattedText) {
    const Read read = ReadOf(L"21.5", L"327.67");
    ExpectShown(read, L"formatted");
    EXPECT_EQ(read.formattedReads, 1);
}

TEST(LiveValue, QuestionMarkMeansThatTheDeviceIsSilent) {
    const Read read = ReadOf(L"?", L"327.67");
    EXPECT_TRUE(read.reading.silent);
    EXPECT_EQ(read.reading.text, L"");
    EXPECT_EQ(read.formattedReads, 0);
}

TEST(LiveValue, QuestionMarkIsSilentEvenWhenItIsTheInvalidValue) {
    EXPECT_TRUE(ReadOf(L"?", L"?").reading.silent);
}

TEST(LiveValue, OnlyTheLoneQuestionMarkIsSilent) {
    for (const wchar_t* raw : {L"??", L" ?", L"? ", L"", L"1?"}) {
        EXPECT_FALSE(SaysSilent(raw)) << raw;
        ExpectShown(ReadOf(raw, L"x"), L"formatted");
    }
    EXPECT_TRUE(SaysSilent(L"?"));
}

TEST(LiveValue, InvalidValueShowsInvalidWithoutReadingTheFormattedText) {
    const Read read = ReadOf(L"327.67", L"327.67");
    ExpectShown(read, L"Invalid");
    EXPECT_EQ(read.formattedReads, 0);
}

TEST(LiveValue, InvalidValueIsFoundAcrossBothDecimalSeparators) {
    for (const wchar_t* separator : {L".", L","}) {
        ExpectShown(ReadOf(L"327.67", L"327,67", separator), L"Invalid");
        ExpectShown(ReadOf(L"327,67", L"327.67", separator), L"Invalid");
    }
}

TEST(LiveValue, ComparisonIsOfTextsNotOfNumbers) {
    ExpectShown(ReadOf(L"327.670", L"327.67"), L"formatted");
    ExpectShown(ReadOf(L"off", L"OFF"), L"formatted");
    ExpectShown(ReadOf(L"0", L""), L"formatted");
}

TEST(LiveValue, EmptyValueEqualToAnEmptyInvalidValueShowsInvalid) {
    ExpectShown(ReadOf(L"", L""), L"Invalid");
}

TEST(LiveValue, OnlyTheFirstSeparatorIsReplacedBeforeComparing) {
    ExpectShown(ReadOf(L"1,2,3", L"1.2,3"), L"Invalid");
    ExpectShown(ReadOf(L"1,2,3", L"1,2.3"), L"formatted");
}

TEST(LiveValue, VeryLongValueIsShownWhole) {
    const std::wstring text(10000, L'7');
    const auto reading = ReadLiveValue(
        text, L"", [&text] { return text; }, L".");
    EXPECT_EQ(reading.text, text);
}

TEST(LiveValue, FailureOfTheFormattedTextGoesToTheCaller) {
    const auto fail = []() -> std::wstring { throw std::runtime_error("host"); };
    EXPECT_THROW(ReadLiveValue(L"1", L"2", fail, L"."), std::runtime_error);
}

}  // namespace
}  // namespace quillon
