#include "bench/script_reader.h"

#include <gtest/gtest.h>

#include <random>

namespace quorvex::bench {
namespace {

std::optional<std::wstring> Variable(std::wstring_view name) {
    if (name == L"ROOM") return L"Room 101";
    if (name == L"EMPTY") return L"";
    if (name == L"TRICK") return L"a\"b ${ROOM} # c";
    return std::nullopt;
}

Words Split(std::wstring_view line) {
    return SplitWords(line, Variable);
}

std::string Complaint(std::wstring_view line) {
    try {
        Split(line);
    } catch (const ScriptError& error) {
        return error.what();
    }
    return "none";
}

TEST(SplitWords, BlanksAndTabsSeparateWords) {
    EXPECT_EQ(Split(L"set  101\tnv 5   21.5 "), (Words{L"set", L"101", L"nv", L"5", L"21.5"}));
    EXPECT_EQ(Split(L""), Words());
    EXPECT_EQ(Split(L" \t "), Words());
}

TEST(SplitWords, ACommentBeginsWhereAWordCould) {
    EXPECT_EQ(Split(L"# list"), Words());
    EXPECT_EQ(Split(L"list # all"), Words{L"list"});
    EXPECT_EQ(Split(L"list#all"), Words{L"list#all"});
    EXPECT_EQ(Split(L"echo \"# no comment\""), (Words{L"echo", L"# no comment"}));
}

TEST(SplitWords, QuotesKeepBlanksAndMayBeEmpty) {
    EXPECT_EQ(Split(L"info \"Room 101\""), (Words{L"info", L"Room 101"}));
    EXPECT_EQ(Split(L"set \"\""), (Words{L"set", L""}));
    EXPECT_EQ(Split(L"say \"a \"\"word\"\"\""), (Words{L"say", L"a \"word\""}));
    EXPECT_EQ(Split(L"C:\\\"My folder\"\\x.app"), Words{L"C:\\My folder\\x.app"});
}

TEST(SplitWords, VariablesStandAnywhereAndNeverSplitOrNest) {
    EXPECT_EQ(Split(L"info ${ROOM}"), (Words{L"info", L"Room 101"}));
    EXPECT_EQ(Split(L"echo \"in ${ROOM}!\""), (Words{L"echo", L"in Room 101!"}));
    EXPECT_EQ(Split(L"echo ${EMPTY}"), (Words{L"echo", L""}));
    EXPECT_EQ(Split(L"echo ${TRICK}"), (Words{L"echo", L"a\"b ${ROOM} # c"}));
    EXPECT_EQ(Split(L"echo $ROOM $5"), (Words{L"echo", L"$ROOM", L"$5"}));
}

TEST(SplitWords, ABadLineSaysWhatIsWrong) {
    EXPECT_EQ(Complaint(L"echo \"open"), "a quotation mark is not closed");
    EXPECT_EQ(Complaint(L"echo \"a\"\""), "a quotation mark is not closed");
    EXPECT_EQ(Complaint(L"echo ${ROOM"), "a \"${\" is not closed");
    EXPECT_EQ(Complaint(L"echo ${NONE}"), "there is no variable \"NONE\"");
    EXPECT_EQ(Complaint(L"echo ${\x00E9}"), "there is no variable \"?\"");
}

TEST(SplitWords, AnyLineIsReadOrRefused) {
    std::mt19937 random(7);
    constexpr std::wstring_view letters = L"ab \t\"#${}ROM\\";
    for (int i = 0; i < 20000; ++i) {
        std::wstring line;
        for (auto n = random() % 24; n > 0; --n) line += letters[random() % letters.size()];
        try {
            for (const auto& word : Split(line)) EXPECT_LE(word.size(), 24 * 16U);
        } catch (const ScriptError&) {
        }
    }
}

TEST(SplitLines, EveryLineEndAndAMissingOne) {
    using Lines = std::vector<std::wstring>;
    EXPECT_EQ(SplitLines(L"a\nb\r\n\nc"), (Lines{L"a", L"b", L"", L"c"}));
    EXPECT_EQ(SplitLines(L"a\n"), Lines{L"a"});
    EXPECT_EQ(SplitLines(L""), Lines());
    EXPECT_EQ(SplitLines(L"\xFEFF"
                         L"list\n"),
              Lines{L"list"});
}

}  // namespace
}  // namespace quorvex::bench
