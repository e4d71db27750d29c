#include "window/label_text.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

using namespace std::string_literals;

constexpr const char* kNeuronPlace = "nnnnnnnnnnnn";
constexpr const char* kNeuron = "0123456789AB";

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

std::string Filled(std::string_view bytes, int* asked = nullptr) {
    LabelText label;
    label.Append(bytes);
    FillPlaceholders(
        label,
        [&] {
            if (asked) ++*asked;
            return L"0123456789AB"s;
        },
        L"2647");
    return std::string(label.Used());
}

TEST(LabelText, IsTheBytesAppendedWithNulsInside) {
    LabelText label;
    label.Append("a\0b"s);
    label.Append(""s);
    label.Append("\xFF\0"s);
    EXPECT_EQ(label.Used(), "a\0b\xFF\0"s);
    label.Clear();
    EXPECT_EQ(label.Used(), "");
}

TEST(LabelText, ThirteenThousandBytesFitAndOneMoreDoesNot) {
    LabelText label;
    label.Append(std::string(kLongestLabel, 'x'));
    EXPECT_EQ(label.Used().size(), 13000u);
    EXPECT_THROW(label.Append("y"), LabelError);
    label.Clear();
    EXPECT_THROW(label.Append(std::string(kLongestLabel + 1, 'x')), LabelError);
    EXPECT_EQ(label.Used().size(), 13000u);
}

TEST(LabelText, ClearingLeavesNothingOfALongerLabelBehind) {
    LabelText label;
    label.Append(Repeated(kNeuronPlace, 3));
    label.Clear();
    label.Append("ab");
    label.ReplaceFirst(kNeuronPlace, kNeuron);
    EXPECT_EQ(label.Used(), "ab");
}

TEST(LabelText, ReplacesTheFirstOccurrenceAlone) {
    LabelText label;
    label.Append("-YYWW-YYWW-");
    label.ReplaceFirst("YYWW", "2647");
    EXPECT_EQ(label.Used(), "-2647-YYWW-");
    label.ReplaceFirst("YYWW", "2648");
    label.ReplaceFirst("YYWW", "2649");
    EXPECT_EQ(label.Used(), "-2647-2648-");
}

TEST(LabelText, ReplacementOfAnotherLengthIsRefusedEvenWithoutAPlace) {
    LabelText label;
    label.Append("nothing here");
    EXPECT_THROW(label.ReplaceFirst(kNeuronPlace, "0123456789A"), LabelError);
    EXPECT_THROW(label.ReplaceFirst(kNeuronPlace, ""), LabelError);
    EXPECT_EQ(label.Used(), "nothing here");
}

TEST(FillPlaceholders, FiveNeuronIdsAndThreeDatesOfForty) {
    const std::string filled = Filled(Repeated(kNeuronPlace + "."s, 20) + Repeated("YYWW,", 20));
    EXPECT_EQ(filled, Repeated(kNeuron + "."s, 5) + Repeated(kNeuronPlace + "."s, 15) +
                          Repeated("2647,", 3) + Repeated("YYWW,", 17));
}

TEST(FillPlaceholders, NeuronIdIsAskedForBeforeEachOfItsFiveReplacements) {
    int asked = 0;
    EXPECT_EQ(Filled("^XA^XZ", &asked), "^XA^XZ");
    EXPECT_EQ(asked, 5);
    LabelText label;
    label.Append(Repeated(kNeuronPlace, 5));
    int number = 0;
    FillPlaceholders(
        label, [&] { return L"00000000000" + std::to_wstring(++number); }, L"2647");
    EXPECT_EQ(label.Used(), "000000000001000000000002000000000003000000000004000000000005");
}

TEST(FillPlaceholders, FoundAtBothEndsOfALongestLabel) {
    const std::string between(kLongestLabel - 16, '\x80');
    EXPECT_EQ(Filled(kNeuronPlace + between + "YYWW"), kNeuron + between + "2647");
}

TEST(FillPlaceholders, FoundAcrossTheBordersOfPiecesAndInsideGraphics) {
    const std::string before(kLabelPiece - 5, '\xAA');
    EXPECT_EQ(Filled(before + kNeuronPlace + "GW10,20,2,8,\x01\x02YYWW\xFF"),
              before + kNeuron + "GW10,20,2,8,\x01\x02"s + "2647\xFF");
}

TEST(FillPlaceholders, LongerRunsAreFilledFromTheirFront) {
    EXPECT_EQ(Filled("nnnnnnnnnnnnnn"), "0123456789ABnn");
    EXPECT_EQ(Filled("YYYWWW"), "Y2647W");
}

TEST(FillPlaceholders, OtherCaseIsNoPlaceholder) {
    EXPECT_EQ(Filled("NNNNNNNNNNNN yyww nnnnnnnnnnn"), "NNNNNNNNNNNN yyww nnnnnnnnnnn");
}

TEST(FillPlaceholders, NeuronIdThatIsNotTwelveBytesIsRefused) {
    for (const wchar_t* neuron : {L"", L"0123456789A", L"0123456789ABC", L"0123456789A\u00E9",
                                  L"0123456789A\n", L"0123456789A\u20AC"}) {
        LabelText label;
        label.Append(kNeuronPlace);
        EXPECT_THROW(FillPlaceholders(
                         label, [&] { return std::wstring(neuron); }, L"2647"),
                     LabelError);
        EXPECT_EQ(label.Used(), kNeuronPlace);
    }
}

TEST(FillPlaceholders, DateThatIsNotFourCharactersIsRefused) {
    LabelText label;
    label.Append("YYWW");
    EXPECT_THROW(FillPlaceholders(
                     label, [] { return L"0123456789AB"s; }, L"-1047"),
                 LabelError);
}

}  // namespace
}  // namespace quillon
