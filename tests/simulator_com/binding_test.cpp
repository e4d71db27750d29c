#include "host_fixture.h"

namespace {

using Binding = Host;

TEST_F(Binding, NetworkThenNeuronIdBinds) {
    EXPECT_EQ(TextOf(Bound(kFirst), &IDevice::get_Name), L"First");
}

TEST_F(Binding, NeuronIdThenNetworkBinds) {
    const auto device = Create<IDevice>(__uuidof(Device));
    ASSERT_EQ(device->put_NeuronID(Bstr(kSecond).Get()), S_OK);
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"");
    ASSERT_EQ(device->putref_Network(network.Get()), S_OK);
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"Second");
}

TEST_F(Binding, NeuronIdInLowerCaseBindsAndReadsInUpperCase) {
    const auto device = Bound(L"0123456789ab");
    EXPECT_EQ(TextOf(device, &IDevice::get_NeuronID), kFirst);
}

TEST_F(Binding, UnboundDeviceReadsAsNothing) {
    const auto device = Bound(L"FFFFFFFFFFFF");
    EXPECT_EQ(TextOf(device, &IDevice::get_NeuronID), L"FFFFFFFFFFFF");
    EXPECT_EQ(TextOf(device, &IDevice::get_ProgramId), L"");
    EXPECT_EQ(TextOf(device, &IDevice::get_State), L"");
    EXPECT_EQ(ValueOf<long>(device, &IDevice::get_EngineeringUnits), 0);
    EXPECT_EQ(ValueOf<VARIANT_BOOL>(device, &IDevice::GoOnLine), VARIANT_FALSE);
    Ptr<IDispatch> object;
    EXPECT_EQ(device->get_NetworkVariables(object.Out()), S_OK);
    EXPECT_FALSE(object);
    EXPECT_EQ(device->get_XMLSNVTs(object.Out()), S_OK);
    EXPECT_FALSE(object);
    Ptr<IFiles> files;
    EXPECT_EQ(device->get_Files(files.Out()), S_OK);
    EXPECT_FALSE(files);
    EXPECT_EQ(device->put_Name(Bstr(L"X").Get()), kNotBound);
}

TEST_F(Binding, TakingTheNetworkAwayUnbinds) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(device->putref_Network(nullptr), S_OK);
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"");
}

TEST_F(Binding, TwoDeviceObjectsShareOneController) {
    const auto one = Bound(kFirst);
    const auto other = Bound(kFirst);
    ASSERT_EQ(one->put_Name(Bstr(L"Renamed").Get()), S_OK);
    EXPECT_EQ(TextOf(other, &IDevice::get_Name), L"Renamed");
    EXPECT_EQ(TextOf(other, &IDevice::get_PollingName), L"Renamed");
}

TEST_F(Binding, TextsComeFromTheController) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(TextOf(device, &IDevice::get_DisplayName), L"First room");
    EXPECT_EQ(TextOf(device, &IDevice::get_ProgramId), L"9FFFFF0512040410");
    EXPECT_EQ(TextOf(device, &IDevice::get_PollingPID), L"9FFFFF0512040410");
    EXPECT_EQ(TextOf(device, &IDevice::get_SISD), L"ABC;0102030405060708");
    EXPECT_EQ(TextOf(device, &IDevice::get_UserCPFile), L"first.cp");
    EXPECT_EQ(TextOf(device, &IDevice::get_DeviceManufacturer), L"Nimbra");
    EXPECT_EQ(TextOf(device, &IDevice::get_DeviceClass), L"Fan coil");
    EXPECT_EQ(ValueOf<unsigned char>(device, &IDevice::get_NeuronChipModelNO), 7);
}

TEST_F(Binding, WhatIsPutIsGivenBack) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(device->put_EngineeringUnits(2), S_OK);
    ASSERT_EQ(device->put_IsExplored(VARIANT_TRUE), S_OK);
    ASSERT_EQ(device->put_PollingState(Bstr(L"06").Get()), S_OK);
    ASSERT_EQ(device->put_PrgIdINIFilePath(Bstr(L"C:\\a.ini").Get()), S_OK);
    ASSERT_EQ(device->put_UserCPFile(Bstr(L"other.cp").Get()), S_OK);
    const auto again = Bound(kFirst);
    EXPECT_EQ(ValueOf<long>(again, &IDevice::get_EngineeringUnits), 2);
    EXPECT_EQ(ValueOf<VARIANT_BOOL>(again, &IDevice::get_IsExplored), VARIANT_TRUE);
    EXPECT_EQ(TextOf(again, &IDevice::get_PollingState), L"06");
    EXPECT_EQ(TextOf(again, &IDevice::get_PrgIdINIFilePath), L"C:\\a.ini");
    EXPECT_EQ(TextOf(again, &IDevice::get_UserCPFile), L"other.cp");
}

TEST_F(Binding, TablesAreKeptForReading) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(device->WriteSNVTTable(Bstr(L"types").Get()), S_OK);
    ASSERT_EQ(device->WriteNVConfigStruct(Bstr(L"configuration").Get()), S_OK);
    ASSERT_EQ(device->WriteNVFixedStruct(Bstr(L"fixed").Get()), S_OK);
    Bstr text;
    ASSERT_EQ(device->get_ReadSNVTTable(3, text.Out()), S_OK);
    EXPECT_EQ(text.View(), L"types");
    ASSERT_EQ(device->get_ReadNVConfigTable(12, text.Out()), S_OK);
    EXPECT_EQ(text.View(), L"configuration");
    ASSERT_EQ(device->get_ReadNVConfigTable(99, text.Out()), S_OK);
    EXPECT_EQ(text.View(), L"");
    EXPECT_EQ(TextOf(device, &IDevice::get_ReadOnlyFix15), L"fixed");
    long address = 0;
    ASSERT_EQ(device->get_NVAddress(3, &address), S_OK);
    EXPECT_EQ(address, 0x1002);
    EXPECT_EQ(device->get_NVAddress(4, &address), DISP_E_BADINDEX);
    EXPECT_EQ(ValueOf<long>(device, &IDevice::get_FileSystemAddress), 16384);
}

TEST_F(Binding, LogicalAddressIsKeptForEachDomain) {
    const auto device = Bound(kFirst);
    VARIANT_BOOL done = VARIANT_FALSE;
    ASSERT_EQ(device->SetLogicalAddress(1, Bstr(L"A1B2").Get(), 3, 4, Bstr(L"FF").Get(), &done),
              S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    Bstr domain(L"before"), key;
    short length = 0, subnet = 0, node = 0;
    ASSERT_EQ(
        device->GetLogicalAddress(1, domain.InOut(), &length, &subnet, &node, key.InOut(), &done),
        S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(domain.View(), L"A1B2");
    EXPECT_EQ(length, 2);
    EXPECT_EQ(subnet, 3);
    EXPECT_EQ(node, 4);
    EXPECT_EQ(key.View(), L"FF");
    ASSERT_EQ(
        device->GetLogicalAddress(0, domain.InOut(), &length, &subnet, &node, key.InOut(), &done),
        S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(domain.View(), L"A1B2");
}

TEST_F(Binding, OwnPageAndFilesAreNotTheGenericDevices) {
    const auto extended = Bound(kFirst).As<IDeviceEx>();
    ASSERT_TRUE(extended);
    EXPECT_EQ(TextOf(extended, &IDeviceEx::get_ApplicationCode), L"");
    EXPECT_EQ(TextOf(extended, &IDeviceEx::get_VantorFirmwareType), L"");
    long result = 5;
    EXPECT_EQ(extended->AppDownload(Bstr(L"a.app").Get(), &result), E_NOTIMPL);
    EXPECT_EQ(result, 0);
    short analog = 1;
    unsigned char digital = 2;
    EXPECT_EQ(extended->ReadInputs(&analog, &analog, &analog, &analog, &digital, &digital, &result),
              E_NOTIMPL);
}

TEST_F(Binding, DispatchReachesTheSameMembers) {
    const auto device = Bound(kFirst);
    const auto dispatch = device.As<IDispatch>();
    EXPECT_EQ(Late(dispatch, L"Name"), L"First");
    com::Put(dispatch.Get(), L"Name", Variant(L"By name"));
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"By name");
    EXPECT_EQ(Count(L"IDevice.Name.get"), 2);
    EXPECT_EQ(Count(L"IDevice.Name.put"), 1);
}

TEST_F(Binding, CatalogueAnswersTypesByName) {
    const auto device = Bound(kFirst);
    Ptr<IDispatch> catalogue;
    ASSERT_EQ(device->get_XMLSNVTs(catalogue.Out()), S_OK);
    EXPECT_GE(com::Get(catalogue.Get(), L"Count").AsNumber(), 25);
    const auto type = com::Get(catalogue.Get(), L"Item", {Variant(L"SNVT_temp_p")}).AsObject();
    ASSERT_TRUE(type);
    EXPECT_EQ(Late(type, host::type::kName), L"SNVT_temp_p");
    EXPECT_EQ(com::Get(type.Get(), host::type::kLength).AsNumber(), 2);
    EXPECT_FALSE(com::Get(catalogue.Get(), L"Item", {Variant(L"SNVT_none")}).AsObject());
}

}  // namespace
