#include "model/parameter_subset.h"

#include <gtest/gtest.h>

#include <map>

namespace quillon {
namespace {

using Sections = std::vector<std::wstring>;

std::int32_t Variables(std::wstring_view total, const Sections& sections) {
    return EntryCount(total, sections, kVariableEntries);
}

TEST(EntryCount, FollowsTheTotalWhereTheSectionsAreThere) {
    const Sections sections{L"GEN_INFO", L"NCIs", L"NCI_0", L"NCI_1", L"NCI_2", L"CPs", L"CP_0"};
    EXPECT_EQ(Variables(L"3", sections), 3);
    EXPECT_EQ(Variables(L"2", sections), 2);
    EXPECT_EQ(Variables(L"0", sections), 0);
    EXPECT_EQ(EntryCount(L"1", sections, kPropertyEntries), 1);
}

TEST(EntryCount, TotalThatPromisesMoreIsNotBelieved) {
    const Sections sections{L"NCI_0", L"NCI_4", L"CP_9"};
    for (const wchar_t* total : {L"5", L"6", L"1000000000", L"99999999999999999999"})
        EXPECT_EQ(Variables(total, sections), 5) << "gaps give empty lines";
    EXPECT_EQ(Variables(L"1000000000", {}), 0);
}

TEST(EntryCount, NoListIsLongerThanTheLimit) {
    EXPECT_EQ(Variables(L"1000000000", {L"NCI_65534"}), 65535);
    EXPECT_EQ(Variables(L"1000000000", {L"NCI_65535"}), 65536);
    EXPECT_EQ(Variables(L"1000000000", {L"NCI_65536"}), 65536);
    EXPECT_EQ(Variables(L"1000000000", {L"NCI_99999999999999999999"}), 65536);
}

TEST(EntryCount, TotalThatIsNoNumberOrNegativeMeansNone) {
    for (const wchar_t* total : {L"", L"-1", L"-1000000000", L"many", L"&H123456789"})
        EXPECT_EQ(Variables(total, {L"NCI_0"}), 0) << total;
    EXPECT_EQ(Variables(std::wstring(400, L'9'), {L"NCI_0"}), 0);
}

TEST(EntryCount, SectionIsAnEntryOnlyWithItsPlainNumber) {
    for (const wchar_t* name : {L"NCI_", L"NCI_00", L"NCI_01", L"NCI_-1", L"NCI_1x", L"NCI_ 1",
                                L"NCI", L"XNCI_1", L"CP_1", L""})
        EXPECT_EQ(Variables(L"9", {name}), 0) << name;
    EXPECT_EQ(Variables(L"9", {L"nci_3"}), 4) << "letter case does not matter";
}

class Source {
public:
    Source& Put(const wchar_t* key, const wchar_t* value) {
        m_values[key] = value;
        return *this;
    }
    ParameterLine Read(const ParameterKind& kind, std::int32_t n) const {
        return ReadParameter(
            [this](const std::wstring& section, const std::wstring& key) {
                const auto found = m_values.find(section + L" " + key);
                return found == m_values.end() ? std::wstring() : found->second;
            },
            kind, n);
    }

private:
    std::map<std::wstring, std::wstring> m_values;
};

TEST(Parameter, IsShownByNameAndKeptWithTagNumberAndValue) {
    Source source;
    source.Put(L"NCI_7 Index", L"12").Put(L"NCI_7 Value", L"100.0 1").Put(L"NCI_7 Name", L"nci");
    const ParameterLine variable = source.Read(kVariableEntries, 7);
    EXPECT_EQ(variable.name, L"nci");
    EXPECT_EQ(variable.hidden, L"NC\\12\\100.0 1");
    EXPECT_FALSE(variable.selected);
    source.Put(L"CP_0 Address", L"3").Put(L"CP_0 Value", L"26.00").Put(L"CP_0 Mark", L"1");
    const ParameterLine property = source.Read(kPropertyEntries, 0);
    EXPECT_EQ(property.hidden, L"CP\\3\\26.00");
    EXPECT_EQ(property.name, L"");
    EXPECT_TRUE(property.selected);
}

TEST(Parameter, AnyNumberButZeroMarks) {
    for (const wchar_t* mark : {L"1", L"-1", L"0.5", L"2 yes", L"&H1"})
        EXPECT_TRUE(Source().Put(L"CP_0 Mark", mark).Read(kPropertyEntries, 0).selected) << mark;
    for (const wchar_t* mark : {L"", L"0", L"0.0", L"yes", L"-", L"&H123456789"})
        EXPECT_FALSE(Source().Put(L"CP_0 Mark", mark).Read(kPropertyEntries, 0).selected) << mark;
}

TEST(Parameter, NumberIsTheNumericValueOfItsText) {
    const auto hidden = [](const wchar_t* index) {
        return Source().Put(L"NCI_0 Index", index).Read(kVariableEntries, 0).hidden;
    };
    EXPECT_EQ(hidden(L"007"), L"NC\\7\\");
    EXPECT_EQ(hidden(L"12 and more"), L"NC\\12\\");
    EXPECT_EQ(hidden(L""), L"NC\\0\\");
    EXPECT_EQ(hidden(L"5\\6"), L"NC\\5\\") << "cannot shift the value behind it";
    EXPECT_EQ(hidden(L"3000000000"), L"NC\\-1\\") << "not the number of another point";
}

TEST(Parameter, GapIsAnEmptyLine) {
    const ParameterLine line = Source().Read(kPropertyEntries, 3);
    EXPECT_EQ(line.name, L"");
    EXPECT_EQ(line.hidden, L"CP\\0\\");
    EXPECT_FALSE(line.selected);
}

constexpr const wchar_t* kEmpty =
    L"[GEN_INFO]\r\nProgramId=9F\r\n[NCIs]\r\nTotalNumber=0\r\n[CPs]\r\nTotalNumber=0\r\n";

TEST(Subset, WithoutAnyEntryHasTheProgramAndTheTotals) {
    EXPECT_EQ(ParameterSubset(L"9F").Text(), kEmpty);
}

TEST(Subset, EntriesAreNumberedAnewByKind) {
    ParameterSubset subset(L"9FFFFF0512040410");
    subset.Add(L"NC\\12\\100.0 1");
    subset.Add(L"CP\\0\\26.00");
    subset.Add(L"NC\\13\\Hall");
    subset.Add(L"CP\\4\\");
    EXPECT_EQ(subset.Text(),
              L"[GEN_INFO]\r\nProgramId=9FFFFF0512040410\r\n"
              L"[NCI_0]\r\nIndex=12\r\nValue=100.0 1\r\n"
              L"[CP_0]\r\nAddress=0\r\nValue=26.00\r\n"
              L"[NCI_1]\r\nIndex=13\r\nValue=Hall\r\n"
              L"[CP_1]\r\nAddress=4\r\nValue=\r\n"
              L"[NCIs]\r\nTotalNumber=2\r\n[CPs]\r\nTotalNumber=2\r\n");
}

TEST(Subset, TextCanBeAskedForMeanwhile) {
    ParameterSubset subset(L"9F");
    EXPECT_EQ(subset.Text(), kEmpty);
    subset.Add(L"CP\\1\\x");
    EXPECT_EQ(subset.Text(),
              L"[GEN_INFO]\r\nProgramId=9F\r\n[CP_0]\r\nAddress=1\r\nValue=x\r\n"
              L"[NCIs]\r\nTotalNumber=0\r\n[CPs]\r\nTotalNumber=1\r\n");
}

std::wstring WrittenValue(std::wstring_view hidden) {
    ParameterSubset subset(L"9F");
    subset.Add(hidden);
    const std::wstring text = subset.Text();
    const std::size_t begin = text.find(L"Value=") + 6;
    return text.substr(begin, text.find(L"\r\n", begin) - begin);
}

TEST(Subset, ValueEndsBeforeItsFirstBackslash) {
    EXPECT_EQ(WrittenValue(L"NC\\1\\a\\b\\c"), L"a");
    EXPECT_EQ(WrittenValue(L"NC\\1\\\\b"), L"");
    EXPECT_EQ(WrittenValue(L"NC\\1\\\"a\" 'b' \x20AC=;"), L"\"a\" 'b' \x20AC=;");
    EXPECT_EQ(WrittenValue(L"NC\\1\\" + std::wstring(4095, L'x')), std::wstring(4095, L'x'));
}

TEST(Subset, BlanksAroundAValueAreLeftOut) {
    EXPECT_EQ(WrittenValue(L"NC\\1\\ \t a b "), L"a b");
    EXPECT_EQ(WrittenValue(L"NC\\1\\   "), L"");
}

TEST(Subset, OtherLinesAreLeftOut) {
    ParameterSubset subset(L"9F");
    for (const wchar_t* line : {L"", L"NC", L"XX\\1\\2", L"nc\\1\\2", L"\\1\\2"}) subset.Add(line);
    EXPECT_EQ(subset.Text(), kEmpty);
}

}  // namespace
}  // namespace quillon
