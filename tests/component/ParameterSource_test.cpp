#include "model/ParameterSource.h"

#include <algorithm>
#include <random>

#include "model/parameter_subset.h"
#include "plugin/MMain.h"
#include "plugin/code_page.h"
#include "plugin/whole_file.h"
#include "support/component_fixture.h"
#include "support/temp_folder.h"

namespace quillon {
namespace {

using Names = std::vector<std::wstring>;

class ParameterSourceTest : public test::ComponentTest {
protected:
    // Every value reads as the system's own reader gives it. The file gets a name of its own, for
    // that reader keeps files in memory for a while.
    ParameterSource SameAsTheSystems(const std::string& bytes) {
        const std::wstring path = folder.Write(L"p" + std::to_wstring(++m_files) + L".cps", bytes);
        const ParameterSource source(path);
        for (const wchar_t* section : {L"GEN_INFO", L"NCIs", L"nci_0", L"NCI_1", L"CP_0", L"S"})
            for (const wchar_t* key : {L"ProgramId", L"TotalNumber", L"Value", L"name", L"Mark"})
                EXPECT_EQ(source.Value(section, key), ReadIniValue(path, section, key))
                    << Narrow(section) << " " << Narrow(key) << " in " << bytes;
        EXPECT_EQ(source.Sections(), Once(ReadIniSections(path))) << bytes;
        return source;
    }
    void SameValue(const std::string& value) {
        EXPECT_TRUE(SameAsTheSystems("[S]\r\nValue=" + value + "\r\n").IsHeld()) << value;
    }

    // Without names that stand again, letter case apart.
    static Names Once(const Names& names) {
        Names once;
        for (const std::wstring& name : names)
            if (std::none_of(once.begin(), once.end(), [&](const std::wstring& other) {
                    return CompareStringOrdinal(name.c_str(), -1, other.c_str(), -1, TRUE) ==
                           CSTR_EQUAL;
                }))
                once.push_back(name);
        return once;
    }

    test::TempFolder folder;

private:
    int m_files = 0;
};

TEST_F(ParameterSourceTest, HeldFileReadsAsTheSystemReadsIt) {
    for (const char* value : {"",
                              "1",
                              "  5  ",
                              "\" 5 \"",
                              "'5'",
                              "\"\"5\"\"",
                              "\"5",
                              "5\"",
                              "\"5'",
                              "\"\"",
                              "\"",
                              "'",
                              "a=b",
                              "=",
                              "[S]",
                              "a;b",
                              ";b",
                              "a\\b\\c",
                              "5 / five",
                              "/",
                              "\"  5  / x\"",
                              "Not Found",
                              "not found",
                              "\"Not Found\"",
                              "\xE9 \x80 \xB0",
                              "\t5\t",
                              "a\tb"})
        SameValue(value);
    for (const std::size_t length : {4094u, 4095u, 4096u, 5000u, 40000u})
        SameValue(std::string(length, 'x'));
    SameValue(std::string(4200, 'x') + " / comment");
}

TEST_F(ParameterSourceTest, FirstOfSeveralSectionsAndKeysCountsForBoth) {
    for (const char* text :
         {"[S]\r\nValue=1\r\nVALUE=2\r\n[S]\r\nName=late\r\n", "Value=0\r\n[S]\r\nMark=1\r\n",
          "[s]\nvalue = 1 \n\n\n ; x = y\n;Value=3\n[CP_0]\nName=a", " [S] \r\n Value=1",
          "[S]\r\n[S]\r\nValue=2\r\n", ""})
        EXPECT_TRUE(SameAsTheSystems(text).IsHeld()) << text;
}

TEST_F(ParameterSourceTest, UnusualFileIsLeftToTheSystem) {
    for (const char* text :
         {"[S]\r\nValue\r\nName=1\r\n", "[S\r\nValue=1\r\n", "[ S ]\r\nValue=1\r\n",
          "[S] x\r\nValue=1\r\n", "[S]\rValue=1\r", "[S]\r\nValue=1\r\n\x1A", "[S]]\r\nValue=1\r\n",
          "\xEF\xBB\xBF[GEN_INFO]\r\nProgramId=1\r\n[S]\r\nValue=1\r\n"})
        EXPECT_FALSE(SameAsTheSystems(text).IsHeld()) << text;
}

TEST_F(ParameterSourceTest, DamagedFileReadsAsTheSystemReadsIt) {
    const std::string good =
        "[GEN_INFO]\r\nProgramId=9FFFFF0512040410\r\n[NCIs]\r\nTotalNumber=2\r\n"
        "[NCI_0]\r\nIndex=12\r\nValue=\" 100.0 1 \"\r\nName='nci'\r\nMark=1\r\n"
        "[CP_0]\r\nAddress=0\r\nValue=2\\6 / x\r\nName=cp\r\n; end\r\n";
    const std::string pieces = "[]=;\"' /\\\r\n\t0_SN\xE9";
    std::mt19937 random(20);
    for (int round = 0; round < 300; ++round) {
        std::string bytes = good;
        for (int change = 0; change < 3; ++change) {
            const std::size_t place = random() % bytes.size();
            if (random() % 3 == 0)
                bytes.erase(place, random() % 4);
            else
                bytes[place] = pieces[random() % pieces.size()];
        }
        SameAsTheSystems(bytes);
        if (HasFailure()) return;
    }
}

TEST_F(ParameterSourceTest, HeldFileAnswersAsItWasWhenItWasOpened) {
    const std::wstring path = folder.Write(L"a.cps", "[S]\r\nValue=1\r\n");
    const ParameterSource source(path);
    test::WriteBytes(path, "[S]\r\nValue=2\r\n");
    EXPECT_EQ(source.Value(L"S", L"Value"), L"1");
}

TEST_F(ParameterSourceTest, FileThatCannotBeReadHasNothingInIt) {
    for (const std::wstring& path :
         {folder / L"none.cps", folder / L"no\\none.cps", std::wstring(), folder.Path()}) {
        const ParameterSource source(path);
        EXPECT_EQ(source.Value(L"S", L"Value"), L"");
        EXPECT_EQ(source.Sections(), Names());
    }
}

TEST_F(ParameterSourceTest, SystemListsSectionsOfAnyNumber) {
    std::string text;
    Names names;
    for (int n = 0; n < 3000; ++n) {
        text += "[NCI_" + std::to_string(n) + "]\r\nValue=1\r\n";
        names.push_back(L"NCI_" + std::to_wstring(n));
    }
    EXPECT_EQ(ReadIniSections(folder.Write(L"many.cps", text)), names);
    EXPECT_EQ(ReadIniSections(folder / L"none.cps"), Names());
    EXPECT_EQ(ReadIniSections(L""), Names());
}

class SubsetFileTest : public ParameterSourceTest {
protected:
    // What the system's writer makes of the subset key by key.
    std::string ByKeys(const Names& values) const {
        const std::wstring path = folder / L"keys.cps";
        DeleteFileW(path.c_str());
        const auto write = [&](const std::wstring& section, const wchar_t* key,
                               const std::wstring& value) {
            WriteIniValue(path, section, key, value);
        };
        write(L"GEN_INFO", L"ProgramId", L"9FFFFF0512040410");
        for (std::size_t n = 0; n < values.size(); ++n) {
            const std::wstring number = std::to_wstring(n);
            write(L"NCI_" + number, L"Index", number);
            write(L"NCI_" + number, L"Value", values[n]);
            write(L"CP_" + number, L"Address", number);
            write(L"CP_" + number, L"Value", values[n]);
        }
        write(L"NCIs", L"TotalNumber", std::to_wstring(values.size()));
        write(L"CPs", L"TotalNumber", std::to_wstring(values.size()));
        return test::ReadBytes(path);
    }
    std::string AtOnce(const Names& values) const {
        ParameterSubset subset(L"9FFFFF0512040410");
        for (std::size_t n = 0; n < values.size(); ++n) {
            const std::wstring number = std::to_wstring(n);
            subset.Add(L"NC\\" + number + L"\\" + values[n]);
            subset.Add(L"CP\\" + number + L"\\" + values[n]);
        }
        const std::wstring path = folder / L"once.cps";
        EXPECT_TRUE(WriteWholeFile(path, Narrow(subset.Text())));
        return test::ReadBytes(path);
    }
};

TEST_F(SubsetFileTest, BytesAreThoseOfWritingKeyByKey) {
    const Names values{L"1",
                       L"",
                       L"100.0 1",
                       L"\"quoted\"",
                       L"'a' \"b\" ",
                       L" blank in front",
                       L"a=b;c",
                       L"[NCI_0]",
                       L"\x20AC\x00E9\x00B0",
                       L"\x65E5 outside",
                       std::wstring(4095, L'x')};
    EXPECT_EQ(AtOnce(values), ByKeys(values));
    EXPECT_EQ(AtOnce({}), ByKeys({}));
}

using WholeFileTest = ParameterSourceTest;

TEST_F(WholeFileTest, IsReplacedReadAndDeleted) {
    const std::wstring path = folder / L"f";
    EXPECT_TRUE(WriteWholeFile(path, "a longer text"));
    EXPECT_TRUE(WriteWholeFile(path, "short"));
    EXPECT_EQ(ReadWholeFile(path, 5), "short");
    EXPECT_EQ(ReadWholeFile(path, 4), std::nullopt) << "larger than asked for";
    EXPECT_TRUE(DeleteWholeFile(path));
    EXPECT_TRUE(DeleteWholeFile(path)) << "what is not there need not be deleted";
    EXPECT_TRUE(DeleteWholeFile(folder / L"no\\f"));
    EXPECT_EQ(ReadWholeFile(path, 5), std::nullopt);
}

TEST_F(WholeFileTest, FailureIsTold) {
    EXPECT_FALSE(WriteWholeFile(folder / L"no\\f", "x"));
    EXPECT_FALSE(WriteWholeFile(folder.Path(), "x"));
    EXPECT_FALSE(DeleteWholeFile(folder.Path()));
}

}  // namespace
}  // namespace quillon
