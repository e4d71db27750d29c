#include "com/dual.h"

#include "component/probe.h"
#include "model/CProfile.h"
#include "support/temp_folder.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Ptr;
using com::Variant;
using test::Probe;

// Calls a probe the way a script does.
class DualTest : public test::ProbeTest {
protected:
    static DISPID IdOf(IDispatch* object, const wchar_t* name) {
        auto* text = const_cast<wchar_t*>(name);
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id), S_OK);
        return id;
    }

    // Arguments in the member's order.
    HRESULT Call(const wchar_t* member, std::vector<VARIANT> arguments,
                 WORD flags = DISPATCH_METHOD) {
        std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
        DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        exception = {};
        badArgument = 99;
        return dispatch->Invoke(IdOf(dispatch.Get(), member), IID_NULL, LOCALE_USER_DEFAULT, flags,
                                &params, result.Out(), &exception, &badArgument);
    }

    // A script's variable.
    static VARIANT Variable(Variant& variable) {
        VARIANT reference;
        reference.vt = VT_BYREF | VT_VARIANT;
        reference.pvarVal = &variable;
        return reference;
    }
    template <class T>
    static VARIANT Typed(VARTYPE type, T* place) {
        VARIANT reference;
        reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
        reference.byref = place;
        return reference;
    }

    Ptr<Probe> probe = com::Make<Probe>();
    Ptr<IDispatch> dispatch = probe.As<IDispatch>();
    Variant result;
    EXCEPINFO exception{};
    UINT badArgument = 0;
};

TEST_F(DualTest, NamesOfMembersAreFoundInAnyLetterCase) {
    EXPECT_EQ(IdOf(dispatch.Get(), L"Twice"), 2);
    EXPECT_EQ(IdOf(dispatch.Get(), L"tWICE"), 2);
    EXPECT_EQ(IdOf(dispatch.Get(), L"Level"), 8);
}

TEST_F(DualTest, UnknownNamesAndForeignInterfacesAreRefused) {
    wchar_t name[] = L"NoSuchMember";
    wchar_t* names = name;
    DISPID id = 0;
    EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(id, DISPID_UNKNOWN);
    EXPECT_EQ(dispatch->GetIDsOfNames(IID_IUnknown, &names, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
    DISPPARAMS none{};
    EXPECT_EQ(
        dispatch->Invoke(2, IID_IUnknown, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
        DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(dispatch->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_POINTER);
}

TEST_F(DualTest, DescriptionIsTheInterfacesOwn) {
    UINT count = 0;
    EXPECT_EQ(dispatch->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(dispatch->GetTypeInfoCount(nullptr), E_POINTER);
    Ptr<ITypeInfo> info;
    EXPECT_EQ(dispatch->GetTypeInfo(1, 0, info.Out()), DISP_E_BADINDEX);
    EXPECT_EQ(dispatch->GetTypeInfo(0, 0, nullptr), E_POINTER);
    ASSERT_EQ(dispatch->GetTypeInfo(0, 0, info.Out()), S_OK);
    Bstr name;
    EXPECT_EQ(info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(name.View(), L"IProbe");
}

TEST_F(DualTest, EachFaceHasItsOwnMembers) {
    wchar_t name[] = L"Twice";
    wchar_t* names = name;
    DISPID id = 0;
    const Ptr<_CNV> other = probe.As<_CNV>();
    EXPECT_EQ(other->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(IdOf(other.Get(), L"RawValue"), 1);
}

TEST_F(DualTest, PlainArgumentsAndResultsArriveInOrder) {
    EXPECT_EQ(Call(L"Difference", {Variant(10), Variant(L"3")}), S_OK);
    EXPECT_EQ(result.AsNumber(), 7);
}

TEST_F(DualTest, PropertyIsPutAndGot) {
    VARIANT value = Variant(12);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params{&value, &put, 1, 1};
    EXPECT_EQ(
        dispatch->Invoke(8, IID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr),
        S_OK);
    EXPECT_EQ(Call(L"Level", {}, DISPATCH_PROPERTYGET | DISPATCH_METHOD), S_OK);
    EXPECT_EQ(result.AsNumber(), 12);
}

TEST_F(DualTest, ScriptVariableForATextIsWrittenBack) {
    Variant text(L"abc");
    EXPECT_EQ(Call(L"Lengthen", {Variable(text)}), S_OK);
    EXPECT_EQ(text.vt, VT_BSTR);
    EXPECT_EQ(text.AsText(), L"abc!");
    EXPECT_EQ(result.AsNumber(), 4);
}

TEST_F(DualTest, ScriptVariableOfAnotherTypeIsConvertedAndWrittenBack) {
    Variant number(L"21");
    EXPECT_EQ(Call(L"Twice", {Variable(number)}), S_OK);
    EXPECT_EQ(number.AsNumber(), 42);
    Variant word(7);
    EXPECT_EQ(Call(L"TwiceShort", {Variable(word)}), S_OK);
    EXPECT_EQ(word.AsNumber(), 14);
    Variant truth(false);
    EXPECT_EQ(Call(L"Flip", {Variable(truth)}), S_OK);
    EXPECT_TRUE(truth.AsBool());
}

TEST_F(DualTest, EmptyScriptVariableStandsForZeroEmptyTextAndNoObject) {
    Variant number;
    EXPECT_EQ(Call(L"Twice", {Variable(number)}), S_OK);
    EXPECT_EQ(number.vt, VT_I4);
    Variant text;
    EXPECT_EQ(Call(L"Lengthen", {Variable(text)}), S_OK);
    EXPECT_EQ(text.AsText(), L"!");
    Variant object;
    EXPECT_EQ(Call(L"Swap", {Variable(object)}), S_OK);
    EXPECT_FALSE(object.AsObject());
}

TEST_F(DualTest, PlainValueForAnInOutArgumentIsTaken) {
    EXPECT_EQ(Call(L"Twice", {Variant(21)}), S_OK);
    const Variant text(L"abc");
    EXPECT_EQ(Call(L"Lengthen", {text}), S_OK);
    EXPECT_EQ(result.AsNumber(), 4);
    EXPECT_EQ(text.AsText(), L"abc");
}

TEST_F(DualTest, TypedReferencePassesThrough) {
    long number = 21;
    EXPECT_EQ(Call(L"Twice", {Typed(VT_I4, &number)}), S_OK);
    EXPECT_EQ(number, 42);
    Bstr text(L"abc");
    EXPECT_EQ(Call(L"Lengthen", {Typed(VT_BSTR, text.InOut())}), S_OK);
    EXPECT_EQ(text.View(), L"abc!");
    short word = -4;
    EXPECT_EQ(Call(L"TwiceShort", {Typed(VT_I2, &word)}), S_OK);
    EXPECT_EQ(word, -8);
}

TEST_F(DualTest, ReferenceOfAnotherTypeIsWrittenBackOrRefusedButNeverLost) {
    short word = 21;
    const HRESULT called = Call(L"Twice", {Typed(VT_I2, &word)});
    EXPECT_TRUE(FAILED(called) ? word == 21 : word == 42) << std::hex << called << ' ' << word;
}

TEST_F(DualTest, VariantArgumentPassesThrough) {
    Variant any(5);
    EXPECT_EQ(Call(L"Fill", {Variable(any)}), S_OK);
    EXPECT_EQ(any.AsText(), L"filled");
}

TEST_F(DualTest, ObjectInAScriptVariableIsExchanged) {
    probe->kept = test::NewProbeDispatch();
    const Ptr<IDispatch> mine = test::NewProbeDispatch();
    const Ptr<IDispatch> theirs = probe->kept;
    Variant object(mine.Get());
    EXPECT_EQ(Call(L"Swap", {Variable(object)}), S_OK);
    EXPECT_EQ(object.AsObject().Get(), theirs.Get());
    EXPECT_EQ(probe->kept.Get(), mine.Get());
    probe->kept.Reset();
}

TEST_F(DualTest, ObjectAsAPlainValueIsHandedInAndTheOtherDropped) {
    probe->kept = test::NewProbeDispatch();
    const Ptr<IDispatch> mine = test::NewProbeDispatch();
    EXPECT_EQ(Call(L"Swap", {Variant(mine.Get())}), S_OK);
    EXPECT_EQ(probe->kept.Get(), mine.Get());
    EXPECT_EQ(test::g_probes, 2);
    probe->kept.Reset();
}

TEST_F(DualTest, WrongTypeIsRefusedWithTheArgumentsIndex) {
    Variant text(L"abc");
    EXPECT_EQ(Call(L"Twice", {Variable(text)}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(badArgument, 0u);
    EXPECT_EQ(text.AsText(), L"abc");
    Variant number(5);
    EXPECT_EQ(Call(L"Swap", {Variable(number)}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(badArgument, 0u);
    EXPECT_EQ(Call(L"Difference", {Variant(L"abc"), Variant(3)}), DISP_E_TYPEMISMATCH);
}

TEST_F(DualTest, MissingArgumentIsRefused) {
    EXPECT_EQ(Call(L"Twice", {}), DISP_E_BADPARAMCOUNT);
}

TEST_F(DualTest, UnknownMemberIsRefused) {
    DISPPARAMS none{};
    EXPECT_EQ(dispatch->Invoke(77, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
}

TEST_F(DualTest, FailureComesOutAsAnExceptionWithItsRecord) {
    EXPECT_EQ(Call(L"Refuse", {Variant(static_cast<std::int32_t>(0x80040321)), Variant(L"no")}),
              DISP_E_EXCEPTION);
    EXPECT_EQ(exception.scode, static_cast<SCODE>(0x80040321));
    EXPECT_EQ(Bstr::Adopt(exception.bstrSource).View(), L"Probe");
    EXPECT_EQ(Bstr::Adopt(exception.bstrDescription).View(), L"no");
}

TEST_F(DualTest, FailingMemberWritesNothingBackIntoAScriptVariable) {
    Variant number(5);
    EXPECT_EQ(Call(L"RefuseAfterWriting", {Variable(number)}), DISP_E_EXCEPTION);
    EXPECT_EQ(number.AsNumber(), 5);
}

// A profile expects a device; a probe is a dispatch object, but no device.
class WrongObjectTest : public DualTest {
protected:
    WrongObjectTest() {
        file = folder.Write(L"x.app",
                            "<Configuration><Profile><NVs><a/></NVs></Profile>"
                            "</Configuration>");
        dispatch = com::Make<CProfile>().As<IDispatch>();
    }

    test::TempFolder folder;
    std::wstring file;
    Ptr<IDispatch> object = test::NewProbeDispatch();
};

TEST_F(WrongObjectTest, InAScriptVariableIsRefused) {
    Variant variable(object.Get());
    EXPECT_EQ(Call(L"FriendSet", {Variant(file), Variable(variable)}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(badArgument, 0u);
}

TEST_F(WrongObjectTest, AsAPlainValueIsRefused) {
    EXPECT_EQ(Call(L"FriendSet", {Variant(file), Variant(object.Get())}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(badArgument, 0u);
}

TEST_F(WrongObjectTest, AsATypedReferenceIsRefused) {
    IDispatch* place = object.Get();
    EXPECT_EQ(Call(L"FriendSet", {Variant(file), Typed(VT_DISPATCH, &place)}), DISP_E_TYPEMISMATCH);
}

}  // namespace
}  // namespace quillon
