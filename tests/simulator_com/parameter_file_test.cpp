#include "host_fixture.h"

namespace {

class ParameterFile : public Host {
public:
    long Export(const wchar_t* neuron, const std::wstring& path) const {
        long result = -1;
        com::Check(Bound(neuron)->ParameterExport(Bstr(path).Get(), &result));
        return result;
    }
    long Download(const wchar_t* neuron, const std::wstring& path) const {
        long result = -1;
        com::Check(Bound(neuron)->ParameterDownload(Bstr(path).Get(), &result));
        return result;
    }
    long DownloadText(const std::string& text) const {
        WriteFileText(folder.File(L"in.cps"), text);
        return Download(kFirst, folder.File(L"in.cps"));
    }
    std::wstring Limit() const {
        const auto device = Bound(kFirst);
        return Late(Property(device, L"0"), host::point::kValue);
    }
};

constexpr const char* kHead = "[GEN_INFO]\r\nProgramId=9FFFFF0512040410\r\n";

TEST_F(ParameterFile, ExportHasConfigurationVariablesAndProperties) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(LatePut(Variable(device, L"13"), host::point::kValue, L" Hall 1 "), S_OK);
    ASSERT_EQ(Export(kFirst, folder.File(L"out.cps")), 0);
    EXPECT_EQ(ReadFileText(folder.File(L"out.cps")),
              std::string(kHead) +
                  "\r\n[NCIs]\r\nTotalNumber=2\r\n"
                  "\r\n[NCI_0]\r\nIndex=12\r\nValue=100.0 1\r\nName=nciSwitch\r\nMark=1\r\n"
                  "\r\n[NCI_1]\r\nIndex=13\r\nValue=\" Hall 1 \"\r\nName=nciLocation\r\nMark=1\r\n"
                  "\r\n[CPs]\r\nTotalNumber=2\r\n"
                  "\r\n[CP_0]\r\nAddress=0\r\nValue=26.00\r\nName=cpLimit\r\nMark=1\r\n"
                  "\r\n[CP_1]\r\nAddress=1\r\nValue=258\r\nName=cpMode\r\nMark=1\r\n");
}

TEST_F(ParameterFile, DownloadOfAnExportRestoresTheValues) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(LatePut(Variable(device, L"13"), host::point::kValue, L" Hall 1 "), S_OK);
    ASSERT_EQ(Export(kFirst, folder.File(L"out.cps")), 0);
    LatePut(Variable(device, L"13"), host::point::kValue, L"");
    LatePut(Property(device, L"0"), host::point::kValue, L"1.00");
    ASSERT_EQ(Download(kFirst, folder.File(L"out.cps")), 0);
    EXPECT_EQ(Late(Variable(device, L"13"), host::point::kValue), L" Hall 1 ");
    EXPECT_EQ(Limit(), L"26.00");
}

TEST_F(ParameterFile, SubsetIsTakenWithoutNamesAndMarks) {
    EXPECT_EQ(
        DownloadText(std::string(kHead) + "[NCIs]\r\nTotalNumber=0\r\n[CPs]\r\nTotalNumber=1\r\n"
                                          "[CP_0]\r\nAddress=0\r\nValue=19.5\r\n"),
        0);
    EXPECT_EQ(Limit(), L"19.50");
}

TEST_F(ParameterFile, BadFilesChangeNothingAndSayWhy) {
    EXPECT_EQ(Download(kFirst, folder.File(L"none.cps")), 1);
    EXPECT_EQ(DownloadText("[GEN_INFO]\r\nProgramId=9FFFFF0512040499\r\n"), 2);
    const std::string good = "[CP_0]\r\nAddress=0\r\nValue=19.5\r\n";
    const std::string two = std::string(kHead) + "[CPs]\r\nTotalNumber=2\r\n" + good;
    EXPECT_EQ(DownloadText(two), 3);
    EXPECT_EQ(DownloadText(two + "[CP_1]\r\nAddress=9\r\nValue=1\r\n"), 3);
    EXPECT_EQ(DownloadText(two + "[CP_1]\r\nAddress=1\r\nValue=many\r\n"), 3);
    EXPECT_EQ(DownloadText(std::string(kHead) + "[CPs]\r\nTotalNumber=two\r\n" + good), 3);
    EXPECT_EQ(Limit(), L"26.00");
}

TEST_F(ParameterFile, SilentDeviceIsLeftAlone) {
    ASSERT_EQ(Export(kFirst, folder.File(L"out.cps")), 0);
    ASSERT_EQ(control->Silence(Bstr(kFirst).Get(), VARIANT_TRUE), S_OK);
    EXPECT_EQ(Download(kFirst, folder.File(L"out.cps")), 4);
    EXPECT_EQ(Export(kFirst, folder.File(L"other.cps")), 4);
    EXPECT_EQ(GetFileAttributesW(folder.File(L"other.cps").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(ParameterFile, UnwritablePlaceIsToldByTheResult) {
    EXPECT_EQ(Export(kFirst, folder.File(L"no\\such\\out.cps")), 1);
}

}  // namespace
