#include "host_fixture.h"

namespace {

using Points = Host;
using testing::ElementsAre;

TEST_F(Points, ItemTakesTheIndexAsTextOrAsAnyWholeNumber) {
    const auto device = Bound(kFirst);
    Ptr<IDispatch> points;
    ASSERT_EQ(device->get_NetworkVariables(points.Out()), S_OK);
    EXPECT_EQ(com::Get(points.Get(), host::points::kCount).AsNumber(), 5);
    const auto find = [&](const Variant& key) -> std::wstring {
        const auto point = com::Get(points.Get(), host::points::kItem, {key}).AsObject();
        return point ? Late(point, host::point::kName) : L"none";
    };
    EXPECT_EQ(find(Variant(L"12")), L"nciSwitch");
    EXPECT_EQ(find(Variant(std::int32_t{12})), L"nciSwitch");
    Variant number;
    number.vt = VT_R8;
    number.dblVal = 3.0;
    EXPECT_EQ(find(number), L"nvoSpaceTemp");
    number.dblVal = 3.5;
    EXPECT_EQ(find(number), L"none");
    number.vt = VT_UI1;
    number.bVal = 0;
    EXPECT_EQ(find(number), L"nviSetpoint");
    for (const wchar_t* key : {L"1", L"012", L"", L"abc", L"-1", L" 3", L"99999999999"})
        EXPECT_EQ(find(Variant(key)), L"none") << key;
}

TEST_F(Points, EnumeratorWalksSkipsAndClones) {
    const auto device = Bound(kFirst);
    Ptr<IDispatch> points;
    ASSERT_EQ(device->get_NetworkVariables(points.Out()), S_OK);
    const auto enumerator = com::Enumerate(points.Get());
    const auto rest = [](const Ptr<IEnumVARIANT>& from) {
        std::vector<std::wstring> keys;
        Variant item;
        while (from->Next(1, item.Out(), nullptr) == S_OK)
            keys.push_back(Late(item.AsObject(), host::point::kKey));
        return keys;
    };
    EXPECT_THAT(rest(enumerator), ElementsAre(L"0", L"3", L"12", L"13", L"14"));
    ASSERT_EQ(enumerator->Reset(), S_OK);
    ASSERT_EQ(enumerator->Skip(3), S_OK);
    Ptr<IEnumVARIANT> copy;
    ASSERT_EQ(enumerator->Clone(copy.Out()), S_OK);
    EXPECT_THAT(rest(enumerator), ElementsAre(L"13", L"14"));
    EXPECT_THAT(rest(copy), ElementsAre(L"13", L"14"));
    ASSERT_EQ(enumerator->Reset(), S_OK);
    EXPECT_EQ(enumerator->Skip(6), S_FALSE);
    ULONG fetched = 9;
    Variant none;
    EXPECT_EQ(enumerator->Next(1, none.Out(), &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0u);
}

TEST_F(Points, PointTellsWhatTheNetworkFileSays) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"3");
    EXPECT_EQ(Late(point, host::point::kKey), L"3");
    EXPECT_EQ(com::Get(point.Get(), host::point::kIndex).AsNumber(), 3);
    EXPECT_EQ(com::Get(point.Get(), host::point::kDirection).AsNumber(), host::point::kOutput);
    EXPECT_FALSE(com::Get(point.Get(), host::point::kIsConfiguration).AsBool());
    EXPECT_EQ(Late(point, host::point::kSelfDocumentation), L"@0|2");
    EXPECT_TRUE(com::Get(Variable(device, L"12").Get(), host::point::kIsConfiguration).AsBool());
    const auto setpoint = Variable(device, L"0");
    EXPECT_EQ(com::Get(setpoint.Get(), host::point::kDirection).AsNumber(), 0);
    EXPECT_EQ(Late(setpoint, host::point::kMinOverride), L"10.00");
    EXPECT_EQ(Late(setpoint, host::point::kMaxOverride), L"30.00");
    EXPECT_EQ(Late(setpoint, L"selfdoc"), L"@0|1");
    const auto type = com::Get(setpoint.Get(), host::point::kType).AsObject();
    EXPECT_EQ(Late(type, host::type::kName), L"SNVT_temp_p");
    EXPECT_EQ(Late(type, host::type::kGenType), L"SignedNumeric");
    EXPECT_EQ(com::Get(type.Get(), host::type::kBCoef).AsNumber(), -2);
    EXPECT_EQ(Late(type, host::type::kInvalidValue), L"327.67");
    EXPECT_EQ(Late(type, host::type::kEnumDesc), L"");
}

TEST_F(Points, ValueIsReadAndWrittenInEachText) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"0");
    EXPECT_EQ(Late(point, host::point::kRawValue), L"0834");
    EXPECT_EQ(Late(point, host::point::kValue), L"21.00");
    const std::wstring shown = Late(point, host::point::kFormattedValue);
    EXPECT_TRUE(shown.starts_with(L"21.00 ")) << shown.size();
    ASSERT_EQ(LatePut(point, host::point::kValue, L"26.00"), S_OK);
    EXPECT_EQ(Late(point, host::point::kRawValue), L"0A28");
    ASSERT_EQ(LatePut(point, host::point::kFormattedValue, shown.c_str()), S_OK);
    EXPECT_EQ(Late(point, host::point::kRawValue), L"0834");
    ASSERT_EQ(LatePut(point, host::point::kRawValue, L"0a28"), S_OK);
    const auto other = Bound(kFirst);
    EXPECT_EQ(Late(Variable(other, L"0"), host::point::kValue), L"26.00");
}

TEST_F(Points, BadValuesAreRefusedAndChangeNothing) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"0");
    EXPECT_EQ(LatePut(point, host::point::kValue, L"warm"), E_INVALIDARG);
    EXPECT_EQ(LatePut(point, host::point::kFormattedValue, L"warm"), E_INVALIDARG);
    EXPECT_EQ(Misuse(), L"");
    EXPECT_EQ(LatePut(point, host::point::kRawValue, L"0A"), kMisuse);
    EXPECT_EQ(LatePut(point, host::point::kRawValue, L"0A2"), kMisuse);
    EXPECT_EQ(Misuse(),
              L"Raw value \"0A\" put to nviSetpoint, which has 2 bytes\n"
              L"Raw value \"0A2\" put to nviSetpoint, which has 2 bytes\n");
    EXPECT_EQ(Late(point, host::point::kRawValue), L"0834");
    EXPECT_EQ(LatePut(point, host::point::kName, L"x"), DISP_E_MEMBERNOTFOUND);
}

TEST_F(Points, OutputIsNotPut) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(LatePut(Variable(device, L"3"), host::point::kValue, L"20.00"), kMisuse);
    EXPECT_EQ(Misuse(), L"Value put to the output nvoSpaceTemp\n");
    EXPECT_EQ(Late(Variable(device, L"3"), host::point::kValue), L"26.00");
}

TEST_F(Points, FieldsAreKeyedByNameAndWriteTheStructure) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"12");
    const auto fields = com::Get(point.Get(), host::point::kFields).AsObject();
    ASSERT_TRUE(fields);
    EXPECT_EQ(com::Get(fields.Get(), host::points::kCount).AsNumber(), 2);
    const auto value = com::Get(fields.Get(), host::points::kItem, {Variant(L"value")}).AsObject();
    const auto state = com::Get(fields.Get(), host::points::kItem, {Variant(L"state")}).AsObject();
    ASSERT_TRUE(value && state);
    EXPECT_FALSE(com::Get(fields.Get(), host::points::kItem, {Variant(L"none")}).AsObject());
    const auto numbered = [&](std::int32_t number) {
        return com::Get(fields.Get(), host::points::kItem, {Variant(number)}).AsObject();
    };
    EXPECT_EQ(Late(numbered(1), host::point::kName), L"value");
    EXPECT_EQ(Late(numbered(2), host::point::kName), L"state");
    EXPECT_FALSE(numbered(0));
    EXPECT_FALSE(numbered(3));
    EXPECT_EQ(Late(value, host::point::kValue), L"100.0");
    EXPECT_EQ(Late(value, host::point::kName), L"value");
    EXPECT_EQ(com::Get(state.Get(), host::point::kIndex).AsNumber(), 1);
    ASSERT_EQ(LatePut(value, host::point::kValue, L"50.0"), S_OK);
    ASSERT_EQ(LatePut(state, host::point::kRawValue, L"00"), S_OK);
    EXPECT_EQ(Late(point, host::point::kRawValue), L"6400");
    EXPECT_EQ(Late(point, host::point::kValue), L"50.0 0");
    EXPECT_EQ(LatePut(state, host::point::kRawValue, L"0000"), kMisuse);
}

TEST_F(Points, FieldOfAnOutputIsNotPut) {
    const auto device = Bound(kFirst);
    const auto fields = com::Get(Variable(device, L"14").Get(), host::point::kFields).AsObject();
    const auto mode = com::Get(fields.Get(), host::points::kItem, {Variant(L"mode")}).AsObject();
    EXPECT_EQ(Late(mode, host::point::kValue), L"1");
    EXPECT_EQ(LatePut(mode, host::point::kValue, L"3"), kMisuse);
}

TEST_F(Points, PlainPointHasNoFields) {
    const auto device = Bound(kFirst);
    const auto fields = com::Get(Variable(device, L"0").Get(), host::point::kFields).AsObject();
    ASSERT_TRUE(fields);
    EXPECT_EQ(com::Get(fields.Get(), host::points::kCount).AsNumber(), 0);
}

TEST_F(Points, SilentOrAbsentDeviceReadsAsAQuestionMark) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"0");
    ASSERT_EQ(control->Silence(Bstr(kFirst).Get(), VARIANT_TRUE), S_OK);
    for (const wchar_t* text :
         {host::point::kRawValue, host::point::kValue, host::point::kFormattedValue})
        EXPECT_EQ(Late(point, text), L"?");
    EXPECT_EQ(LatePut(point, host::point::kValue, L"20.00"), kNoAnswer);
    EXPECT_EQ(Late(point, host::point::kName), L"nviSetpoint");
    ASSERT_EQ(control->Restore(), S_OK);
    EXPECT_EQ(Late(point, host::point::kValue), L"21.00");
    const auto absent = Bound(kAbsent);
    EXPECT_EQ(Late(Variable(absent, L"0"), host::point::kValue), L"?");
}

TEST_F(Points, PointUsedAfterItsDeviceObjectIsMisuse) {
    auto device = Bound(kFirst);
    const auto other = Bound(kFirst);
    const auto point = Variable(device, L"0");
    device.Reset();
    EXPECT_EQ(LatePut(point, host::point::kValue, L"20.00"), kMisuse);
    EXPECT_EQ(Misuse(), L"nviSetpoint was used after its device object 0123456789AB went away\n");
    EXPECT_EQ(Late(Variable(other, L"0"), host::point::kValue), L"21.00");
}

TEST_F(Points, DispatchRefusesWhatItDoesNotKnow) {
    const auto device = Bound(kFirst);
    const auto point = Variable(device, L"0");
    EXPECT_EQ(LateResult(point, L"Colour"), DISP_E_UNKNOWNNAME);
    DISPPARAMS none{};
    EXPECT_EQ(
        point->Invoke(999, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr),
        DISP_E_MEMBERNOTFOUND);
    Variant argument(L"x");
    DISPPARAMS one{&argument, nullptr, 1, 0};
    EXPECT_EQ(point->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET, &one, nullptr, nullptr,
                            nullptr),
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(point->Invoke(DISPID_VALUE, IID_IUnknown, 0, DISPATCH_PROPERTYGET, &none, nullptr,
                            nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(Points, KeyByReferenceAsScriptsPassIt) {
    const auto device = Bound(kFirst);
    Ptr<IDispatch> points;
    ASSERT_EQ(device->get_NetworkVariables(points.Out()), S_OK);
    Variant key(L"12");
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &key;
    DISPPARAMS one{&reference, nullptr, 1, 0};
    Variant found;
    ASSERT_EQ(points->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                             &one, found.Out(), nullptr, nullptr),
              S_OK);
    EXPECT_EQ(Late(found.AsObject(), host::point::kName), L"nciSwitch");
}

}  // namespace
