#include "com/variant.h"

#include "com/error.h"
#include "component/probe.h"

namespace quillon {
namespace {

using com::Variant;

class VariantTest : public test::ProbeTest {
protected:
    static Variant Of(double number) {
        Variant value;
        value.vt = VT_R8;
        value.dblVal = number;
        return value;
    }
    template <class F>
    static HRESULT FailureOf(F&& reading) {
        try {
            reading();
            return S_OK;
        } catch (const com::Error& error) {
            return error.Result();
        }
    }
};

// The machine's separator is set to a comma for a test, and put back after it.
class CommaLocale {
public:
    CommaLocale() {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_old, 8);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, L",");
    }
    ~CommaLocale() { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, m_old); }

private:
    wchar_t m_old[8] = {};
};

TEST_F(VariantTest, NumbersBecomeTextWithADotWhateverTheMachineWrites) {
    const CommaLocale comma;
    EXPECT_EQ(Of(0.5).AsText(), L"0.5");
    EXPECT_EQ(Variant(-7).AsText(), L"-7");
}

TEST_F(VariantTest, TextBecomesANumberWithADotWhateverTheMachineReads) {
    const CommaLocale comma;
    EXPECT_EQ(Variant(L"2.75").AsNumber(), 3);
    EXPECT_EQ(Variant(L"12").AsNumber(), 12);
}

TEST_F(VariantTest, EmptyReadsAsEmptyTextZeroAndFalse) {
    EXPECT_EQ(Variant().AsText(), L"");
    EXPECT_EQ(Variant().AsNumber(), 0);
    EXPECT_FALSE(Variant().AsBool());
    EXPECT_FALSE(Variant().AsObject());
}

TEST_F(VariantTest, TruthReadsFromNumbersAndTexts) {
    EXPECT_TRUE(Variant(true).AsBool());
    EXPECT_FALSE(Variant(false).AsBool());
    EXPECT_TRUE(Variant(5).AsBool());
    EXPECT_FALSE(Variant(0).AsBool());
    EXPECT_TRUE(Variant(L"True").AsBool());
    EXPECT_EQ(Variant(true).AsNumber(), -1);
}

TEST_F(VariantTest, WhatCannotBeConvertedIsAnErrorWithItsCode) {
    EXPECT_EQ(FailureOf([] { (void)Variant(L"abc").AsNumber(); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(FailureOf([] { (void)Variant(L"abc").AsBool(); }), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(FailureOf([] { (void)Of(1e10).AsNumber(); }), DISP_E_OVERFLOW);
    EXPECT_EQ(FailureOf([] { (void)Variant(1).AsObject(); }), DISP_E_TYPEMISMATCH);
}

TEST_F(VariantTest, NullObjectReadsAsNoObject) {
    EXPECT_FALSE(Variant(static_cast<IDispatch*>(nullptr)).AsObject());
    Variant unknown;
    unknown.vt = VT_UNKNOWN;
    unknown.punkVal = nullptr;
    EXPECT_FALSE(unknown.AsObject());
    Variant null;
    null.vt = VT_NULL;
    EXPECT_FALSE(null.AsObject());
}

TEST_F(VariantTest, UnknownObjectIsAskedForItsDispatchFace) {
    Variant unknown;
    unknown.vt = VT_UNKNOWN;
    unknown.punkVal = com::Make<test::Probe>().As<IUnknown>().Detach();
    EXPECT_TRUE(unknown.AsObject());
}

TEST_F(VariantTest, ObjectWithoutADispatchFaceIsAnError) {
    Variant unknown;
    unknown.vt = VT_UNKNOWN;
    unknown.punkVal = com::Make<test::Source>().As<IUnknown>().Detach();
    EXPECT_EQ(FailureOf([&] { (void)unknown.AsObject(); }), E_NOINTERFACE);
}

TEST_F(VariantTest, CopyTakesWhatAReferencePointsTo) {
    const com::Bstr text(L"there");
    VARIANT reference;
    reference.vt = VT_BYREF | VT_BSTR;
    BSTR place = text.Get();
    reference.pbstrVal = &place;
    const Variant copy(reference);
    EXPECT_EQ(copy.vt, VT_BSTR);
    EXPECT_EQ(copy.AsText(), L"there");
    EXPECT_NE(copy.bstrVal, text.Get());
}

TEST_F(VariantTest, EmbeddedNulSurvives) {
    const std::wstring text(L"a\0b", 3);
    EXPECT_EQ(Variant(text).AsText(), text);
}

TEST_F(VariantTest, CopyMoveOutAndDetachKeepOneOwner) {
    Variant object(com::Make<test::Probe>().As<IDispatch>().Get());
    Variant copy = object;
    Variant moved = std::move(object);
    EXPECT_EQ(object.vt, VT_EMPTY);  // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(test::g_probes, 1);
    copy.Out();
    moved = Variant(3);
    EXPECT_EQ(test::g_probes, 0);
    VARIANT target;
    moved.DetachTo(&target);
    EXPECT_EQ(target.lVal, 3);
    EXPECT_EQ(moved.vt, VT_EMPTY);
}

}  // namespace
}  // namespace quillon
