#include "editors/number_typing.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

// A text box that obeys.
struct Box {
    NumberRules rules;
    std::wstring text;
    Selection selection;

    static Box With(std::wstring text, std::optional<std::size_t> decimals = 2,
                    wchar_t separator = L'.') {
        const std::size_t end = text.size();
        return {{separator, decimals}, std::move(text), {end, end}};
    }
    Box& Select(std::size_t from, std::size_t to) {
        selection = {from, to};
        return *this;
    }
    Box& SelectAll() { return Select(0, text.size()); }
    Box& Do(const TextEdit& edit) {
        text = Applied(text, edit);
        return Select(edit.caret, edit.caret);
    }
    Box& Type(std::wstring_view keys) {
        for (const wchar_t key : keys) {
            const KeyAnswer answer = OnNumberKey(rules, text, selection, key);
            if (answer.act == KeyAct::kEdit) Do(answer.edit);
        }
        return *this;
    }
    Box& Paste(std::wstring_view pasted) {
        if (const auto edit = PasteNumber(rules, text, selection, pasted)) Do(*edit);
        return *this;
    }
};

const std::wstring kBack(1, kBackspace);

TEST(NumberTyping, DigitsAreAppended) {
    EXPECT_EQ(Box::With(L"").Type(L"0123456789").text, L"0123456789");
}

TEST(NumberTyping, DecimalsEndAtTheTypesExponent) {
    EXPECT_EQ(Box::With(L"").Type(L"1.2345").text, L"1.23");
    EXPECT_EQ(Box::With(L"", 0).Type(L"5.5").text, L"5.") << "exponent 0 takes \"5.\"";
    EXPECT_EQ(Box::With(L"", std::nullopt).Type(L"1.23456789").text, L"1.23456789");
}

TEST(NumberTyping, RulesComeFromTheType) {
    EXPECT_EQ(RulesOf(false, -2, L'.').decimals, 2u);
    EXPECT_EQ(RulesOf(false, 0, L'.').decimals, 0u);
    EXPECT_EQ(RulesOf(false, 3, L'.').decimals, 0u);
    EXPECT_EQ(RulesOf(true, 0, L',').decimals, std::nullopt);
    EXPECT_EQ(RulesOf(true, 0, L',').separator, L',');
    EXPECT_EQ(RulesOf(false, std::numeric_limits<int>::min(), L'.').decimals, 2147483648u);
}

TEST(NumberTyping, DigitInsideGoesInAtTheCaret) {
    Box box = Box::With(L"13").Select(1, 1);
    EXPECT_EQ(box.Type(L"2").text, L"123");
    EXPECT_EQ(box.selection, (Selection{2, 2}));
}

TEST(NumberTyping, DigitReplacesTheSelection) {
    Box box = Box::With(L"1995").Select(1, 3);
    EXPECT_EQ(box.Type(L"0").text, L"105");
    EXPECT_EQ(box.selection, (Selection{2, 2}));
    EXPECT_EQ(Box::With(L"-12.5").SelectAll().Type(L"7").text, L"7");
}

TEST(NumberTyping, DecimalsAreCountedInTheResultingText) {
    EXPECT_EQ(Box::With(L"1.23").Select(2, 2).Type(L"9").text, L"1.23");
    EXPECT_EQ(Box::With(L"1.23").Select(2, 3).Type(L"9").text, L"1.93");
    EXPECT_EQ(Box::With(L"1.23").Select(0, 0).Type(L"9").text, L"91.23");
    EXPECT_EQ(Box::With(L"1.234").Select(1, 2).Type(L"9").text, L"19234")
        << "without its separator it has no decimals";
}

TEST(NumberTyping, NoDigitInFrontOfAMinus) {
    EXPECT_EQ(Box::With(L"-5").Select(0, 0).Type(L"1").text, L"-5");
    EXPECT_EQ(Box::With(L"-5").Select(0, 1).Type(L"1").text, L"15");
}

TEST(NumberTyping, SeparatorGoesInAtTheEndOnly) {
    EXPECT_EQ(Box::With(L"12").Type(L".").text, L"12.");
    EXPECT_EQ(Box::With(L"12").Select(1, 1).Type(L".").text, L"12");
    EXPECT_EQ(Box::With(L"12").Select(1, 2).Type(L".").text, L"12");
    EXPECT_EQ(Box::With(L"").Type(L".").text, L".");
}

TEST(NumberTyping, SeparatorReplacesTheWholeText) {
    Box box = Box::With(L"12.5").SelectAll();
    EXPECT_EQ(box.Type(L".").text, L".");
    EXPECT_EQ(box.selection, (Selection{1, 1}));
}

TEST(NumberTyping, SecondSeparatorIsRefusedEverywhere) {
    EXPECT_EQ(Box::With(L"1.2").Type(L".").text, L"1.2");
    EXPECT_EQ(Box::With(L"1.").Type(L".").text, L"1.");
    EXPECT_EQ(Box::With(L"1.2").Select(0, 0).Type(L".").text, L"1.2");
}

TEST(NumberTyping, OnlyTheLocalSeparatorCounts) {
    EXPECT_EQ(Box::With(L"", 2, L',').Type(L"1.5").text, L"15");
    EXPECT_EQ(Box::With(L"", 2, L',').Type(L"1,555").text, L"1,55");
    EXPECT_EQ(Box::With(L"").Type(L"1,5").text, L"15");
}

TEST(NumberTyping, MinusGoesInFront) {
    Box box = Box::With(L"5").Select(0, 0);
    EXPECT_EQ(box.Type(L"-").text, L"-5");
    EXPECT_EQ(box.selection, (Selection{1, 1})) << "the caret stands behind it";
    EXPECT_EQ(Box::With(L"5").Type(L"-").text, L"5") << "not elsewhere";
    EXPECT_EQ(Box::With(L"-5").Select(0, 0).Type(L"-").text, L"-5") << "not twice";
}

TEST(NumberTyping, MinusReplacesASelectionAtTheStart) {
    EXPECT_EQ(Box::With(L"125").Select(0, 2).Type(L"-").text, L"-5");
    EXPECT_EQ(Box::With(L"125").SelectAll().Type(L"-").text, L"-");
    EXPECT_EQ(Box::With(L"-5").SelectAll().Type(L"-7").text, L"-7");
}

TEST(NumberTyping, BackspaceTakesTheLastCharacter) {
    Box box = Box::With(L"123").Select(1, 1);
    EXPECT_EQ(box.Type(kBack).text, L"12");
    EXPECT_EQ(box.selection, (Selection{2, 2})) << "the caret stands behind the last one";
    EXPECT_EQ(Box::With(L"").Type(kBack).text, L"");
    EXPECT_EQ(OnNumberKey({}, L"", {}, kBackspace), KeyAnswer());
}

TEST(NumberTyping, BackspaceTakesTheSelection) {
    Box box = Box::With(L"12345").Select(1, 3);
    EXPECT_EQ(box.Type(kBack).text, L"145");
    EXPECT_EQ(box.selection, (Selection{3, 3}));
    EXPECT_EQ(Box::With(L"123").SelectAll().Type(kBack).text, L"");
}

TEST(NumberTyping, EnterAcceptsAndEscapeRestores) {
    EXPECT_EQ(OnNumberKey({}, L"1", {}, kEnter).act, KeyAct::kAccept);
    EXPECT_EQ(OnNumberKey({}, L"1", {}, kEscape).act, KeyAct::kRestore);
}

TEST(NumberTyping, EveryOtherKeyIsDropped) {
    for (const wchar_t key : std::wstring(L"aEe+ \t*/,\x7f\x1\x660\xff11"))
        EXPECT_EQ(OnNumberKey({}, L"1", {1, 1}, key), KeyAnswer()) << static_cast<int>(key);
}

TEST(NumberPasting, NumberIsTakenWhole) {
    Box box = Box::With(L"21.5").SelectAll();
    EXPECT_EQ(box.Paste(L"-12.25").text, L"-12.25");
    EXPECT_EQ(box.selection, (Selection{6, 6}));
    EXPECT_EQ(Box::With(L"14").Select(1, 1).Paste(L"23").text, L"1234");
}

TEST(NumberPasting, IsCutToWhatTypingLetsThrough) {
    EXPECT_EQ(Box::With(L"").Paste(L"1.2345").text, L"1.23");
    EXPECT_EQ(Box::With(L"").Paste(L"12abc34").text, L"12");
    EXPECT_EQ(Box::With(L"").Paste(L"1.2.3").text, L"1.2");
    EXPECT_EQ(Box::With(L"").Paste(L"1,234.5").text, L"1");
    EXPECT_EQ(Box::With(L"14").Select(1, 1).Paste(L"2.3").text, L"124");
    EXPECT_EQ(Box::With(L"5").Paste(L"-1").text, L"5");
}

TEST(NumberPasting, NothingFittingChangesNothing) {
    for (const wchar_t* pasted : {L"", L"abc", L"\r\n12", L"+5", L"  "})
        EXPECT_EQ(PasteNumber({}, L"123", {0, 3}, pasted), std::nullopt) << pasted;
}

TEST(NumberPasting, TakesTheFirstLineAndLeavesOutBlanksBeforeIt) {
    EXPECT_EQ(Box::With(L"").Paste(L" \t12\r\n34").text, L"12");
}

TEST(NumberPasting, LongTextTakesNoTime) {
    const std::wstring digits(1'000'000, L'7');
    EXPECT_EQ(Box::With(L"").Paste(digits).text, digits);
}

}  // namespace
}  // namespace quillon
