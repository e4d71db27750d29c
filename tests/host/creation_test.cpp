// Making the plug-in's objects and what they say of themselves.
#include "support/host_test.h"

namespace quillon::test {
namespace {

class Creation : public HostTest {};

TEST_F(Creation, DeviceCreatesTheHostsOwnDevice) {
    OpenSmall();
    Room& room = AddRoom(kLeft);
    EXPECT_EQ(TextOf(room.device, &IDevice::get_Name), L"Left");
    EXPECT_EQ(Host().LiveObjects(), 2) << "a network and the inner device";
    DropRooms();
    EXPECT_EQ(Host().LiveObjects(), 1) << "the inner device goes with the device";
}

TEST_F(Creation, DeviceAsksItsInnerDeviceForNothing) {
    const auto device = Plugin().Make<IDevice>(CLSID_CDevice);
    EXPECT_EQ(Host().Log(), Lines());
}

// A host class whose factory fails.
class RefusingFactory final : public com::Object<IClassFactory> {
public:
    STDMETHODIMP CreateInstance(IUnknown*, REFIID, void** object) override {
        *object = nullptr;
        return kFault;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

TEST_F(Creation, HostsFailureToMakeItsDeviceIsTheResult) {
    const auto factory = com::Make<RefusingFactory>();
    const HostClassReplaced replaced(factory.Get());
    void* object = &object;
    EXPECT_EQ(Plugin().Factory(CLSID_CDevice)->CreateInstance(nullptr, IID_IUnknown, &object),
              kFault);
    EXPECT_EQ(object, nullptr);
}

TEST_F(Creation, MissingHostClassIsTheResult) {
    const HostClassReplaced replaced(nullptr);
    com::Ptr<IUnknown> host;
    const HRESULT missing =
        CoCreateInstance(CLSID_Device, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, host.OutVoid());
    if (SUCCEEDED(missing)) GTEST_SKIP() << "the host's class is registered on this machine";
    com::Ptr<IUnknown> object;
    EXPECT_EQ(
        Plugin().Factory(CLSID_CDevice)->CreateInstance(nullptr, IID_IUnknown, object.OutVoid()),
        missing);
}

const CLSID* const kClasses[] = {&CLSID_CDevice, &CLSID_CProfile, &CLSID_CNV,      &CLSID_CNVs,
                                 &CLSID_CCP,     &CLSID_CCPs,     &CLSID_CRegistry};

TEST_F(Creation, AllSevenClassesAreMadeByTheirFactories) {
    for (const CLSID* clsid : kClasses) {
        const auto object = Plugin().Make<IUnknown>(*clsid);
        EXPECT_TRUE(object.As<IDispatch>());
        EXPECT_FALSE(Plugin().CanUnload());
    }
    EXPECT_TRUE(Plugin().CanUnload());
}

TEST_F(Creation, AggregationIsRefused) {
    for (const CLSID* clsid : kClasses) {
        const auto outer = MakeHandler([] {});
        com::Ptr<IUnknown> object;
        EXPECT_EQ(
            Plugin().Factory(*clsid)->CreateInstance(outer.Get(), IID_IUnknown, object.OutVoid()),
            CLASS_E_NOAGGREGATION);
    }
}

TEST_F(Creation, UnknownClassAndInterfaceAreRefused) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto get = Plugin().Entry<GetClassObject>("DllGetClassObject");
    com::Ptr<IUnknown> factory;
    EXPECT_EQ(get(CLSID_Device, IID_IClassFactory, factory.OutVoid()), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(get(CLSID_CDevice, IID_IStream, factory.OutVoid()), E_NOINTERFACE);
    EXPECT_EQ(
        Plugin().Factory(CLSID_CDevice)->CreateInstance(nullptr, IID_IStream, factory.OutVoid()),
        E_NOINTERFACE);
    EXPECT_EQ(Host().LiveObjects(), 0);
}

TEST_F(Creation, LockedServerStaysLoaded) {
    const auto factory = Plugin().Factory(CLSID_CNV);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_FALSE(Plugin().CanUnload());
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
}

TEST_F(Creation, DeviceIsOneObjectFromEveryFace) {
    const auto device = Plugin().Make<IDevice>(CLSID_CDevice);
    const auto identity = device.As<IUnknown>();
    for (const IID& iid : {__uuidof(IDevice), __uuidof(IDeviceEx), __uuidof(_CDevice),
                           IID_IDispatch, IID_IProvideClassInfo, IID_IProvideClassInfo2,
                           IID_ISupportErrorInfo, IID_IConnectionPointContainer}) {
        com::Ptr<IUnknown> face;
        ASSERT_EQ(device->QueryInterface(iid, face.OutVoid()), S_OK);
        EXPECT_EQ(face.As<IUnknown>().Get(), identity.Get());
    }
}

TEST_F(Creation, DispatchOfTheDeviceIsItsDefaultInterface) {
    const auto dispatch = Plugin().Make<IDispatch>(CLSID_CDevice);
    DISPID id = DISPID_UNKNOWN;
    wchar_t name[] = L"ProductionYear";
    wchar_t* names = name;
    EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
    EXPECT_EQ(id, 5);
}

TEST_F(Creation, EveryObjectNamesItsClassAndItsEvents) {
    for (const CLSID* clsid : kClasses) {
        const auto info = Plugin().Make<IProvideClassInfo2>(*clsid);
        com::Ptr<ITypeInfo> type;
        ASSERT_EQ(info->GetClassInfo(type.Out()), S_OK);
        TYPEATTR* attributes = nullptr;
        com::Check(type->GetTypeAttr(&attributes));
        EXPECT_EQ(attributes->guid, *clsid);
        type->ReleaseTypeAttr(attributes);
        GUID events{};
        const HRESULT named = info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events);
        EXPECT_EQ(named, *clsid == CLSID_CDevice ? S_OK : E_INVALIDARG);
        EXPECT_EQ(events, *clsid == CLSID_CDevice ? DIID___CDevice : GUID{});
    }
}

TEST_F(Creation, DeviceTellsItsFailuresByErrorInfoOnEveryDualInterface) {
    const auto support = Plugin().Make<ISupportErrorInfo>(CLSID_CDevice);
    for (const IID& iid : {__uuidof(IDevice), __uuidof(IDeviceEx), __uuidof(_CDevice)})
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(iid), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IStream), S_FALSE);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_CProfile)), S_FALSE);
}

TEST_F(Creation, DeviceHasOneConnectionPointThatOutlivesNothing) {
    const auto container = Plugin().Make<IConnectionPointContainer>(CLSID_CDevice);
    com::Ptr<IEnumConnectionPoints> points;
    ASSERT_EQ(container->EnumConnectionPoints(points.Out()), S_OK);
    com::Ptr<IConnectionPoint> point;
    ULONG fetched = 0;
    ASSERT_EQ(points->Next(1, point.Out(), &fetched), S_OK);
    IID events{};
    EXPECT_EQ(point->GetConnectionInterface(&events), S_OK);
    EXPECT_EQ(events, DIID___CDevice);
    com::Ptr<IConnectionPoint> none;
    EXPECT_EQ(points->Next(1, none.Out(), &fetched), S_FALSE);
    EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, none.Out()), CONNECT_E_NOCONNECTION);
}

TEST_F(Creation, PluginUnloadsAndLoadsAgain) {
    OpenSmall();
    AddRoom(kLeft);
    ReloadPlugin();
    Room& room = AddRoom(kLeft);
    EXPECT_EQ(TextOf(room.device, &IDevice::get_Name), L"Left");
}

TEST_F(Creation, TwoDevicesAreIndependent) {
    OpenSmall();
    Room& left = AddRoom(kLeft);
    Room& right = AddRoom(kRight);
    EXPECT_EQ(left.device->put_IsCPsLoaded(VARIANT_TRUE), S_OK);
    EXPECT_EQ(left.device->put_SetHardwareModel(com::Bstr(L"V2").Get()), S_OK);
    VARIANT_BOOL loaded = VARIANT_TRUE;
    EXPECT_EQ(right.device->get_IsCPsLoaded(&loaded), S_OK);
    EXPECT_EQ(loaded, VARIANT_FALSE);
    EXPECT_EQ(TextOf(right.device, &IDevice::get_GetHardwareModel), L"");
}

}  // namespace
}  // namespace quillon::test
