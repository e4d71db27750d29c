#include "plugin/io_image.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

// An image of 11 bytes, all zero but for the four digital pieces and the analog word.
std::wstring Image(const std::wstring& piece2, const std::wstring& piece4,
                   const std::wstring& piece7, const std::wstring& piece8,
                   const std::wstring& analog = L"0000") {
    return L"0000" + piece2 + L"00" + piece4 + L"0000" + piece7 + piece8 + analog;
}

TEST(ReadInputImage, ReadsASignedAnalogValueAndFourInputs) {
    const InputsReading reading = ReadInputImage(L"000001000100000101FF9C");
    EXPECT_EQ(reading.analog, -100);
    EXPECT_EQ(reading.inputs, 15);
}

TEST(ReadInputImage, EachDigitalPieceHasItsBit) {
    EXPECT_EQ(ReadInputImage(Image(L"01", L"00", L"00", L"00")).inputs, 1);
    EXPECT_EQ(ReadInputImage(Image(L"00", L"01", L"00", L"00")).inputs, 2);
    EXPECT_EQ(ReadInputImage(Image(L"00", L"00", L"01", L"00")).inputs, 4);
    EXPECT_EQ(ReadInputImage(Image(L"00", L"00", L"00", L"01")).inputs, 8);
}

TEST(ReadInputImage, AnalogWordCoversTheSignedRange) {
    EXPECT_EQ(ReadInputImage(Image(L"00", L"00", L"00", L"00", L"7FFF")).analog, 32767);
    EXPECT_EQ(ReadInputImage(Image(L"00", L"00", L"00", L"00", L"8000")).analog, -32768);
    EXPECT_EQ(ReadInputImage(Image(L"00", L"00", L"00", L"00", L"ffff")).analog, -1);
}

TEST(ReadInputImage, PiecesAreReadAsDecimalNumbers) {
    EXPECT_EQ(ReadInputImage(Image(L"10", L"00", L"00", L"00")).inputs, 10);
    EXPECT_EQ(ReadInputImage(Image(L" 1", L"1 ", L"00", L"00")).inputs, 3);
}

TEST(ReadInputImage, HexadecimalPieceFailsTheInputsAfterTheAnalogValueIsSet) {
    const InputsReading reading = ReadInputImage(Image(L"0A", L"00", L"00", L"00", L"FF9C"));
    EXPECT_EQ(reading.analog, -100);
    EXPECT_EQ(reading.inputs, std::nullopt);
    EXPECT_EQ(ReadInputImage(Image(L"00", L"00", L"00", L"0A")).inputs, std::nullopt);
    EXPECT_EQ(ReadInputImage(Image(L"00", L"  ", L"00", L"00")).inputs, std::nullopt);
}

TEST(ReadInputImage, SumBeyondAByteFailsTheInputs) {
    EXPECT_EQ(ReadInputImage(Image(L"15", L"00", L"00", L"30")).inputs, 255);
    EXPECT_EQ(ReadInputImage(Image(L"16", L"00", L"00", L"30")).inputs, std::nullopt);
    EXPECT_EQ(ReadInputImage(Image(L"99", L"99", L"99", L"99")).inputs, std::nullopt);
    EXPECT_EQ(ReadInputImage(Image(L"-1", L"00", L"00", L"00")).inputs, std::nullopt);
}

TEST(ReadInputImage, FractionsAreSummedBeforeTheyAreRounded) {
    EXPECT_EQ(ReadInputImage(Image(L".5", L".5", L"00", L"00")).inputs, 2);
    EXPECT_EQ(ReadInputImage(Image(L"-1", L".5", L"00", L"00")).inputs, 0);
    EXPECT_EQ(ReadInputImage(Image(L".5", L"00", L"00", L"00")).inputs, 0);
}

TEST(ReadInputImage, TooShortOrWithoutAnAnalogValueGivesNothingAtAll) {
    for (const wchar_t* text : {L"", L"?", L"000001000100000101FF9", L"000001000100000101FF9G",
                                L"000001000100000101?F9C", L"000001000100000101&H9C"}) {
        const InputsReading reading = ReadInputImage(text);
        EXPECT_EQ(reading.analog, std::nullopt) << text;
        EXPECT_EQ(reading.inputs, std::nullopt) << text;
    }
}

TEST(ReadInputImage, UnusedPiecesAndTheRestOfALongerTextAreNotLookedAt) {
    const InputsReading reading = ReadInputImage(L"????01??01????0101FF9C????");
    EXPECT_EQ(reading.analog, -100);
    EXPECT_EQ(reading.inputs, 15);
}

TEST(ReadOutputImage, OutputsAreBytesFourAndFive) {
    const OutputImage image = ReadOutputImage(L"0000000000A5").value();
    EXPECT_EQ(image[4], 0x00);
    EXPECT_EQ(image[5], 0xA5);
}

TEST(ReadOutputImage, WhatFollowsIsIgnored) {
    EXPECT_EQ(ReadOutputImage(L"0102030405fF??").value(), (OutputImage{1, 2, 3, 4, 5, 255}));
}

TEST(ReadOutputImage, ShortOrWrongTextGivesNothing) {
    for (const wchar_t* text :
         {L"", L"?", L"0000000000A", L"0000000000", L"0000000000A ", L"x000000000A5"}) {
        EXPECT_EQ(ReadOutputImage(text), std::nullopt) << text;
    }
}

TEST(OutputImageText, IsTwelveUpperCaseDigits) {
    EXPECT_EQ(OutputImageText({0, 0, 0, 0, 0x01, 0x0F}), L"00000000010F");
    EXPECT_EQ(OutputImageText({0xFF, 0xAB, 0, 9, 0x10, 0xFF}), L"FFAB000910FF");
}

TEST(OutputImageText, ChangedOutputsKeepTheOtherBytesAndDropWhatFollowed) {
    OutputImage image = ReadOutputImage(L"a1b2c3d4e5f60708090A0B").value();
    image[4] = 0x01;
    image[5] = 0x0F;
    EXPECT_EQ(OutputImageText(image), L"A1B2C3D4010F");
}

}  // namespace
}  // namespace quillon
