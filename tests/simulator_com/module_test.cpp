#include "host_fixture.h"

namespace {

using Module = Host;

TEST_F(Module, StaysWhileAnObjectLives) {
    auto device = Create<IDevice>(__uuidof(Device));
    control.Reset();
    network.Reset();
    EXPECT_FALSE(CanUnload());
    device.Reset();
    EXPECT_TRUE(CanUnload());
}

TEST_F(Module, LateObjectsKeepWhatTheyNeed) {
    auto device = Bound(kFirst);
    auto point = Variable(device, L"0");
    network.Reset();
    EXPECT_EQ(Late(point, host::point::kValue), L"21.00");
    device.Reset();
    EXPECT_FALSE(CanUnload());
    point.Reset();
    control.Reset();
    EXPECT_TRUE(CanUnload());
}

TEST_F(Module, RefusesAggregationAndUnknownClasses) {
    EXPECT_THROW(Create<IDevice>(CLSID_NULL), com::Error);
}

TEST_F(Module, DeviceHasItsInterfacesAndAnErrorRecordForEach) {
    const auto device = Create<IDevice>(__uuidof(Device));
    EXPECT_TRUE(device.As<IDeviceEx>());
    EXPECT_TRUE(device.As<IDispatch>());
    const auto support = device.As<ISupportErrorInfo>();
    ASSERT_TRUE(support);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IDevice)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IFile)), S_FALSE);
    EXPECT_EQ(device.As<IUnknown>().Get(), device.As<IDeviceEx>().As<IUnknown>().Get());
}

TEST_F(Module, NullResultPointersAreRefused) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(device->get_Name(nullptr), E_POINTER);
    EXPECT_EQ(device->get_Files(nullptr), E_POINTER);
    VARIANT_BOOL done;
    EXPECT_EQ(device->GetLogicalAddress(0, nullptr, nullptr, nullptr, nullptr, nullptr, &done),
              E_POINTER);
    EXPECT_EQ(device->ChangedName(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(device->Focus(nullptr, nullptr), E_POINTER);
}

}  // namespace
