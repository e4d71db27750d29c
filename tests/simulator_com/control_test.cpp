#include <chrono>

#include "host_fixture.h"

namespace {

class Control : public Host {
public:
    void SetUp() override {
        Host::SetUp();
        ASSERT_EQ(control->Clear(), S_OK);
    }
    HRESULT Fail(const wchar_t* member, long nth, bool always, HRESULT result) const {
        return control->Fail(Bstr(member).Get(), nth, always ? VARIANT_TRUE : VARIANT_FALSE,
                             result);
    }
    HRESULT Answer(const wchar_t* member, const Variant& value) const {
        return control->Answer(Bstr(member).Get(), value);
    }
    static HRESULT Name(const Ptr<IDevice>& device) {
        Bstr name;
        return device->get_Name(name.Out());
    }
};

TEST_F(Control, CountsCallsByMember) {
    const auto device = Bound(kFirst);
    TextOf(device, &IDevice::get_Name);
    TextOf(device, &IDevice::get_Name);
    EXPECT_EQ(Count(L"IDevice.Name.get"), 2);
    EXPECT_EQ(Count(L"IDevice.Name"), 2);
    EXPECT_EQ(Count(L"IDevice.Name.put"), 0);
    EXPECT_EQ(Count(L"IDevice.Network.put"), 1);
    ASSERT_EQ(control->Clear(), S_OK);
    EXPECT_EQ(Count(L"IDevice.Name.get"), 0);
    long calls = 0;
    EXPECT_EQ(control->Count(Bstr(L"IDevice.Nam").Get(), &calls), E_INVALIDARG);
    EXPECT_EQ(ErrorText(), L"Quorvex: No member is named \"IDevice.Nam\"");
}

TEST_F(Control, LogHoldsCallsWithTheirArguments) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"12");
    LatePut(point, host::point::kRawValue, L"0100");
    VARIANT_BOOL granted;
    device->Focus(nullptr, &granted);
    device->put_IsExplored(VARIANT_TRUE);
    device->put_Name(Bstr(L"a \"b\"\n").Get());
    EXPECT_EQ(Log(),
              L"IDevice.Network.put(object)\n"
              L"IDevice.NeuronID.put(\"0123456789AB\")\n"
              L"IDevice.NetworkVariables.get()\n"
              L"Points.Item(\"12\")\n"
              L"Point.RawValue.put(\"0100\")\n"
              L"IDevice.Focus(nothing)\n"
              L"IDevice.IsExplored.put(True)\n"
              L"IDevice.Name.put(\"a \\\"b\\\"\\n\")\n");
}

TEST_F(Control, RecordingCanBeSwitchedOff) {
    EXPECT_EQ(ValueOf<VARIANT_BOOL>(control, &ISimulator::get_Recording), VARIANT_TRUE);
    ASSERT_EQ(control->put_Recording(VARIANT_FALSE), S_OK);
    const auto device = Bound(kFirst);
    EXPECT_EQ(Log(), L"");
    EXPECT_EQ(Count(L"IDevice.NeuronID.put"), 1);
}

TEST_F(Control, NthCallFailsOnceWithResultAndRecord) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(Fail(L"IDevice.Name.get", 2, false, E_ACCESSDENIED), S_OK);
    EXPECT_EQ(Name(device), S_OK);
    EXPECT_EQ(Name(device), E_ACCESSDENIED);
    EXPECT_EQ(ErrorText(), L"Quorvex: IDevice.Name.get fails because it was told to");
    EXPECT_EQ(Name(device), S_OK);
}

TEST_F(Control, NthAndAllLaterCallsFail) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(Fail(L"IDevice.Name.get", 2, true, E_FAIL), S_OK);
    EXPECT_EQ(Name(device), S_OK);
    EXPECT_EQ(Name(device), E_FAIL);
    EXPECT_EQ(Name(device), E_FAIL);
    ASSERT_EQ(control->Restore(), S_OK);
    EXPECT_EQ(Name(device), S_OK);
}

TEST_F(Control, FailingMemberDoesNothing) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(Fail(L"IFile.ValueText.put", 1, false, E_FAIL), S_OK);
    EXPECT_EQ(Entry(device, 1)->put_ValueText(Bstr(L"00").Get()), E_FAIL);
    EXPECT_EQ(EntryText(device, 1), L"0001002A0000");
}

TEST_F(Control, LateMemberFailsThroughTheExceptionRecord) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"0");
    ASSERT_EQ(Fail(L"Point.Value.get", 1, false, E_ACCESSDENIED), S_OK);
    DISPPARAMS none{};
    EXCEPINFO exception{};
    EXPECT_EQ(point->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr,
                            &exception, nullptr),
              DISP_E_EXCEPTION);
    EXPECT_EQ(exception.scode, E_ACCESSDENIED);
    const Bstr source = Bstr::Adopt(exception.bstrSource);
    const Bstr description = Bstr::Adopt(exception.bstrDescription);
    EXPECT_EQ(source.View(), L"Quorvex");
    EXPECT_EQ(description.View(), L"Point.Value.get fails because it was told to");
    ASSERT_EQ(Fail(L"Point.Value.get", 1, false, DISP_E_MEMBERNOTFOUND), S_OK);
    EXPECT_EQ(LateResult(point, host::point::kValue), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(LateResult(point, host::point::kValue), S_OK);
}

TEST_F(Control, AnswerStandsForTheMembersOwn) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(Answer(L"IDevice.Name.get", Variant(L"told")), S_OK);
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"told");
    ASSERT_EQ(Answer(L"IDevice.GoSoftOffLine", Variant(false)), S_OK);
    EXPECT_EQ(ValueOf<VARIANT_BOOL>(device, &IDevice::GoSoftOffLine), VARIANT_FALSE);
    EXPECT_EQ(TextOf(device, &IDevice::get_State), L"04");
    ASSERT_EQ(Answer(L"IDevice.Focus", Variant(true)), S_OK);
    VARIANT_BOOL granted = VARIANT_FALSE;
    ASSERT_EQ(device->Focus(nullptr, &granted), S_OK);
    EXPECT_EQ(granted, VARIANT_TRUE);
    ASSERT_EQ(Answer(L"IDevice.Files.get", Variant()), S_OK);
    Ptr<IFiles> files;
    EXPECT_EQ(device->get_Files(files.Out()), S_OK);
    EXPECT_FALSE(files);
    ASSERT_EQ(Answer(L"IDevice.ProgramId.get", Variant()), S_OK);
    BSTR text = nullptr;
    EXPECT_EQ(device->get_ProgramId(&text), S_OK);
    EXPECT_EQ(text, nullptr);
    ASSERT_EQ(Answer(L"IDevice.ReadMemoryUnicode", Variant()), S_OK);
    SAFEARRAY* bytes = nullptr;
    EXPECT_EQ(device->ReadMemoryUnicode(16640, 1, &bytes), S_OK);
    EXPECT_EQ(bytes, nullptr);
}

TEST_F(Control, LateAnswerKeepsItsType) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"0");
    ASSERT_EQ(Answer(L"Point.Value.get", Variant(std::int32_t{5})), S_OK);
    EXPECT_EQ(com::Get(point.Get(), host::point::kValue).vt, VT_I4);
    ASSERT_EQ(Answer(L"Points.Item", Variant()), S_OK);
    Ptr<IDispatch> points;
    ASSERT_EQ(device->get_NetworkVariables(points.Out()), S_OK);
    EXPECT_EQ(com::Get(points.Get(), host::points::kItem, {Variant(L"0")}).vt, VT_EMPTY);
}

TEST_F(Control, AnsweredPutDoesNothing) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(Answer(L"IFile.ValueText.put", Variant()), S_OK);
    EXPECT_EQ(Entry(device, 1)->put_ValueText(Bstr(L"odd").Get()), S_OK);
    EXPECT_EQ(EntryText(device, 1), L"0001002A0000");
    EXPECT_EQ(Misuse(), L"");
}

TEST_F(Control, DelaySleepsFirst) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(control->Delay(Bstr(L"IDevice.Wink").Get(), 60), S_OK);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(device->Wink(), S_OK);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
    EXPECT_EQ(control->Delay(Bstr(L"IDevice.Wink").Get(), -1), E_INVALIDARG);
}

TEST_F(Control, HandlerIsCalledOnceBeforeTheNthCall) {
    const auto device = Bound(kFirst);
    int calls = 0;
    const auto handler = com::Make<Handler>([&] {
        ++calls;
        EXPECT_EQ(device->put_Name(Bstr(L"from the handler").Get()), S_OK);
    });
    ASSERT_EQ(control->Call(Bstr(L"IDevice.Name.get").Get(), 2, handler.Get()), S_OK);
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"First");
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"from the handler");
    EXPECT_EQ(Name(device), S_OK);
    EXPECT_EQ(calls, 1);
}

TEST_F(Control, HandlerMayDropTheLastReferenceToTheObjectCalled) {
    Ptr<IDevice> device = Bound(kFirst);
    const auto handler = com::Make<Handler>([&] { device.Reset(); });
    ASSERT_EQ(control->Call(Bstr(L"IDevice.DisplayName.get").Get(), 1, handler.Get()), S_OK);
    Bstr name;
    EXPECT_EQ(device.Get()->get_DisplayName(name.Out()), S_OK);
    EXPECT_EQ(name.View(), L"First room");
    EXPECT_FALSE(device);
}

TEST_F(Control, HandlerMayRestoreEverything) {
    const auto device = Bound(kFirst);
    const auto handler = com::Make<Handler>([&] { control->Restore(); });
    ASSERT_EQ(control->Call(Bstr(L"IDevice.Name.get").Get(), 1, handler.Get()), S_OK);
    ASSERT_EQ(Fail(L"IDevice.Name.get", 1, true, E_FAIL), S_OK);
    EXPECT_EQ(Name(device), S_OK);
}

TEST_F(Control, ArmedHandlerKeepsTheModule) {
    const auto handler = com::Make<Handler>([] {});
    ASSERT_EQ(control->Call(Bstr(L"IDevice.Name.get").Get(), 1, handler.Get()), S_OK);
    network.Reset();
    control.Reset();
    EXPECT_FALSE(CanUnload());
    control = Create<ISimulator>(__uuidof(Simulator));
    ASSERT_EQ(control->Restore(), S_OK);
    control.Reset();
    EXPECT_TRUE(CanUnload());
}

TEST_F(Control, BadOrdersAreRefused) {
    EXPECT_EQ(Fail(L"IDevice.Name.get", 0, false, E_FAIL), E_INVALIDARG);
    EXPECT_EQ(Fail(L"Nothing", 1, false, E_FAIL), E_INVALIDARG);
    EXPECT_EQ(control->Call(Bstr(L"IDevice.Name.get").Get(), 1, nullptr), E_INVALIDARG);
    EXPECT_EQ(control->Silence(Bstr(L"12").Get(), VARIANT_TRUE), E_INVALIDARG);
    Bstr lines;
    EXPECT_EQ(control->Neurons(nullptr, lines.Out()), E_INVALIDARG);
}

TEST_F(Control, LiveObjectsAreThoseHandedOut) {
    EXPECT_EQ(ValueOf<long>(control, &ISimulator::get_LiveObjects), 1);
    auto device = Bound(kFirst);
    auto point = Variable(device, L"0");
    EXPECT_EQ(ValueOf<long>(control, &ISimulator::get_LiveObjects), 3);
    point.Reset();
    device.Reset();
    EXPECT_EQ(ValueOf<long>(control, &ISimulator::get_LiveObjects), 1);
}

TEST_F(Control, EveryControlObjectSteersTheSameHost) {
    const auto other = Create<ISimulator>(__uuidof(Simulator));
    ASSERT_EQ(other->Fail(Bstr(L"IDevice.Name.get").Get(), 1, VARIANT_FALSE, E_FAIL), S_OK);
    const auto device = Bound(kFirst);
    EXPECT_EQ(Name(device), E_FAIL);
}

TEST_F(Control, LogKeepsTheNewestHundredThousandCalls) {
    const auto device = Bound(kFirst);
    for (int i = 0; i < 100'001; ++i) Name(device);
    device->Wink();
    const std::wstring log = Log();
    EXPECT_EQ(std::count(log.begin(), log.end(), L'\n'), 100'000);
    EXPECT_TRUE(log.starts_with(L"IDevice.Name.get()\n"));
    EXPECT_TRUE(log.ends_with(L"IDevice.Wink()\n"));
}

}  // namespace
