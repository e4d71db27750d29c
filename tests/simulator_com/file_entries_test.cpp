#include "host_fixture.h"

namespace {

class FileEntries : public Host {
public:
    static std::wstring Memory(const Ptr<IDevice>& device, long address, long length) {
        Bstr bytes;
        com::Check(device->ReadMemoryString(address, length, bytes.Out()));
        return bytes.Text();
    }
};

TEST_F(FileEntries, StandInFileOrderCountedFromOne) {
    const auto device = Bound(kFirst);
    Ptr<IFiles> entries;
    ASSERT_EQ(device->get_Files(entries.Out()), S_OK);
    EXPECT_EQ(ValueOf<long>(entries, &IFiles::get_Count), 3);
    EXPECT_EQ(ValueOf<long>(Entry(device, 1), &IFile::get_Identifier), -6);
    EXPECT_EQ(ValueOf<long>(Entry(device, 2), &IFile::get_Identifier), -3);
    EXPECT_EQ(ValueOf<long>(Entry(device, 3), &IFile::get_Identifier), 1);
    EXPECT_EQ(ValueOf<long>(Entry(device, 2), &IFile::get_Address), 16640);
    Ptr<IFile> none;
    EXPECT_EQ(entries->get_Item(0, none.Out()), DISP_E_BADINDEX);
    EXPECT_EQ(entries->get_Item(4, none.Out()), DISP_E_BADINDEX);
    EXPECT_EQ(entries->get_Item(-1, none.Out()), DISP_E_BADINDEX);
    EXPECT_FALSE(none);
}

TEST_F(FileEntries, Enumerate) {
    Ptr<IFiles> entries;
    ASSERT_EQ(Bound(kFirst)->get_Files(entries.Out()), S_OK);
    const auto enumerator = com::Enumerate(entries.As<IDispatch>().Get());
    std::vector<std::wstring> texts;
    Variant item;
    while (enumerator->Next(1, item.Out(), nullptr) == S_OK)
        texts.push_back(Late(item.AsObject(), L"ValueText"));
    EXPECT_THAT(texts, testing::ElementsAre(L"0001002A0000", L"05AA", L"0A280102"));
    EXPECT_EQ(Count(L"Enumerator.Next"), 4);
}

TEST_F(FileEntries, WriteIsReadBackInUpperCaseAndMayHaveAnotherLength) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(Entry(device, 1)->put_ValueText(Bstr(L"00ff10").Get()), S_OK);
    EXPECT_EQ(EntryText(Bound(kFirst), 1), L"00FF10");
    ASSERT_EQ(Entry(device, 1)->put_ValueText(nullptr), S_OK);
    EXPECT_EQ(EntryText(device, 1), L"");
}

TEST_F(FileEntries, TextThatIsNotHexadecimalIsRefusedAsMisuse) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(Entry(device, 1)->put_ValueText(Bstr(L"000").Get()), kMisuse);
    EXPECT_EQ(ErrorText(), L"Quorvex: Entry FFFA was given \"000\", which is not hexadecimal");
    EXPECT_EQ(Entry(device, 1)->put_ValueText(Bstr(L"0G").Get()), kMisuse);
    EXPECT_EQ(EntryText(device, 1), L"0001002A0000");
    EXPECT_EQ(Misuse(),
              L"Entry FFFA was given \"000\", which is not hexadecimal\n"
              L"Entry FFFA was given \"0G\", which is not hexadecimal\n");
}

TEST_F(FileEntries, SilentDeviceIsNeitherReadNorWritten) {
    const auto device = Bound(kFirst);
    const auto entry = Entry(device, 1);
    ASSERT_EQ(control->Silence(Bstr(kFirst).Get(), VARIANT_TRUE), S_OK);
    Bstr text(L"before");
    EXPECT_EQ(entry->get_ValueText(text.Out()), kNoAnswer);
    EXPECT_EQ(entry->put_ValueText(Bstr(L"00").Get()), kNoAnswer);
    EXPECT_EQ(device->ReadMemoryString(0, 1, text.Out()), kNoAnswer);
    VARIANT_BOOL done;
    EXPECT_EQ(device->WriteMemory(16384, 1, Bstr(L"77").Get(), &done), kNoAnswer);
    EXPECT_EQ(ValueOf<long>(entry, &IFile::get_Identifier), -6);
    EXPECT_EQ(Misuse(), L"");
    ASSERT_EQ(control->Restore(), S_OK);
    EXPECT_EQ(EntryText(device, 1), L"0001002A0000");
}

TEST_F(FileEntries, WritingToAnAbsentDeviceIsMisuse) {
    const auto device = Bound(kAbsent);
    Bstr text;
    EXPECT_EQ(Entry(device, 1)->get_ValueText(text.Out()), kNoAnswer);
    EXPECT_EQ(Misuse(), L"");
    EXPECT_EQ(Entry(device, 1)->put_ValueText(Bstr(L"0000").Get()), kNoAnswer);
    EXPECT_EQ(Misuse(), L"Entry FFFA was written while device 0123456789AD is absent\n");
}

TEST_F(FileEntries, MemoryShowsTheEntriesAndZeroElsewhere) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(Memory(device, 16382, 9), L"00000001002A000000");
    EXPECT_EQ(Memory(device, 0, 2), L"0000");
    SAFEARRAY* bytes = nullptr;
    ASSERT_EQ(device->ReadMemoryUnicode(16640, 1, &bytes), S_OK);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(bytes->rgsabound[0].cElements, 1u);
    EXPECT_EQ(*static_cast<unsigned char*>(bytes->pvData), 5);
    SafeArrayDestroy(bytes);
}

TEST_F(FileEntries, MemoryWritesReachTheEntriesAndTheRestIsKept) {
    const auto device = Bound(kFirst);
    VARIANT_BOOL done = VARIANT_FALSE;
    ASSERT_EQ(device->WriteMemory(16641, 2, Bstr(L"BBCC").Get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(EntryText(device, 2), L"05BB");
    EXPECT_EQ(Memory(device, 16640, 4), L"05BBCC00");
}

TEST_F(FileEntries, MemoryOutsideItsRangeOrOfAnotherLengthIsRefused) {
    const auto device = Bound(kFirst);
    Bstr text;
    EXPECT_EQ(device->ReadMemoryString(-1, 1, text.Out()), E_INVALIDARG);
    EXPECT_EQ(device->ReadMemoryString(65535, 2, text.Out()), E_INVALIDARG);
    EXPECT_EQ(device->ReadMemoryString(0, 0x7FFFFFFF, text.Out()), E_INVALIDARG);
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(device->WriteMemory(0, 2, Bstr(L"00").Get(), &done), kMisuse);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(device->WriteMemory(65536, 1, Bstr(L"00").Get(), &done), E_INVALIDARG);
    EXPECT_EQ(device->WriteMemory(-1, 1, Bstr(L"00").Get(), &done), E_INVALIDARG);
}

TEST_F(FileEntries, PropertyBlockAndPropertiesAreTheSameBytes) {
    const auto device = Bound(kFirst);
    const auto limit = Property(device, L"0");
    const auto mode = Property(device, L"1");
    ASSERT_EQ(Entry(device, 3)->put_ValueText(Bstr(L"0834FFFE").Get()), S_OK);
    EXPECT_EQ(Late(limit, host::point::kRawValue), L"0834");
    EXPECT_EQ(Late(mode, host::point::kRawValue), L"FFFE");
    ASSERT_EQ(LatePut(mode, host::point::kRawValue, L"0003"), S_OK);
    EXPECT_EQ(EntryText(device, 3), L"08340003");
    ASSERT_EQ(Entry(device, 3)->put_ValueText(Bstr(L"0A2899").Get()), S_OK);
    EXPECT_EQ(Late(limit, host::point::kRawValue), L"0A28");
    EXPECT_EQ(Late(mode, host::point::kRawValue), L"0003");
}

TEST_F(FileEntries, NewApplicationClearsTheIdentity) {
    const auto device = Bound(kFirst);
    WriteFileText(folder.File(L"new.apb"), "application");
    long result = 1;
    ASSERT_EQ(
        device->ApplicationDownload(Bstr(folder.File(L"new.apb")).Get(), VARIANT_TRUE, 2, &result),
        S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(EntryText(device, 1), L"000000000000");
    ASSERT_EQ(
        device->ApplicationDownload(Bstr(folder.File(L"no.apb")).Get(), VARIANT_TRUE, 2, &result),
        S_OK);
    EXPECT_EQ(result, 1);
}

}  // namespace
