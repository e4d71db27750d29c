#include "com/late.h"

#include "component/probe.h"
#include "model/CNVs.h"

namespace quillon {
namespace {

using com::Ptr;
using com::Variant;
using test::Probe;

class LateTest : public test::ProbeTest {
protected:
    template <class F>
    static HRESULT FailureOf(F&& call) {
        try {
            call();
            return S_OK;
        } catch (const com::Error& error) {
            return error.Result();
        }
    }

    Ptr<Probe> probe = com::Make<Probe>();
    Ptr<IDispatch> object = probe.As<IDispatch>();
};

TEST_F(LateTest, PropertyIsWrittenAndReadByName) {
    com::Put(object.Get(), L"level", Variant(5));
    EXPECT_EQ(probe->level, 5);
    EXPECT_EQ(com::Get(object.Get(), L"Level").AsNumber(), 5);
}

TEST_F(LateTest, PropertyIsReadAsText) {
    com::Put(object.Get(), L"level", Variant(5));
    EXPECT_EQ(com::GetText(object.Get(), L"Level"), L"5");
    EXPECT_EQ(FailureOf([&] { com::GetText(object.Get(), L"Nothing"); }), DISP_E_UNKNOWNNAME);
}

TEST_F(LateTest, ArgumentsArriveInTheirOrder) {
    EXPECT_EQ(com::Get(object.Get(), L"Difference", {Variant(9), Variant(4)}).AsNumber(), 5);
}

TEST_F(LateTest, MissingMemberIsAnErrorWithItsCode) {
    EXPECT_EQ(FailureOf([&] { com::Get(object.Get(), L"Nothing"); }), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(FailureOf([&] { com::Put(object.Get(), L"Nothing", Variant(1)); }),
              DISP_E_UNKNOWNNAME);
}

TEST_F(LateTest, MissingObjectIsAnError) {
    EXPECT_EQ(FailureOf([&] { com::Get(nullptr, L"Level"); }), E_POINTER);
    EXPECT_EQ(FailureOf([&] { com::Put(nullptr, L"Level", Variant(1)); }), E_POINTER);
    EXPECT_EQ(FailureOf([&] { com::Enumerate(nullptr); }), E_POINTER);
}

TEST_F(LateTest, ExceptionBecomesItsCodeAndItsRecord) {
    try {
        com::Get(object.Get(), L"Refuse",
                 {Variant(static_cast<std::int32_t>(0x80040321)), Variant(L"no such point")});
        FAIL() << "a failure must throw";
    } catch (const com::Error& error) {
        EXPECT_EQ(error.Result(), static_cast<HRESULT>(0x80040321));
        ASSERT_TRUE(error.Record());
        com::Bstr source;
        com::Bstr description;
        error.Record()->GetSource(source.Out());
        error.Record()->GetDescription(description.Out());
        EXPECT_EQ(source.View(), L"Probe");
        EXPECT_EQ(description.View(), L"no such point");
    }
}

// Answers every call with an exception made by hand.
class Raiser final : public com::Object<IDispatch> {
public:
    explicit Raiser(EXCEPINFO exception) : m_exception(exception) {}
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override {
        *id = 1;
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO* exception,
                        UINT*) override {
        *exception = m_exception;
        return DISP_E_EXCEPTION;
    }

private:
    EXCEPINFO m_exception;
};

HRESULT STDAPICALLTYPE FillIn(EXCEPINFO* exception) {
    exception->scode = static_cast<SCODE>(0x80040777);
    exception->bstrDescription = com::NewBstr(L"late");
    return S_OK;
}

TEST_F(LateTest, ShortCodesDeferredTextsAndEmptyExceptionsAreFailuresToo) {
    const auto raise = [](EXCEPINFO exception) {
        const Ptr<Raiser> raiser = com::Make<Raiser>(exception);
        return FailureOf([&] { com::Get(raiser.Get(), L"Any"); });
    };
    EXCEPINFO shortCode{};
    shortCode.wCode = 513;
    EXPECT_EQ(raise(shortCode), static_cast<HRESULT>(0x800A0201));
    EXCEPINFO deferred{};
    deferred.pfnDeferredFillIn = FillIn;
    EXPECT_EQ(raise(deferred), static_cast<HRESULT>(0x80040777));
    EXPECT_EQ(raise(EXCEPINFO{}), E_FAIL);
}

TEST_F(LateTest, CollectionIsEnumeratedByItsStandardIdentifier) {
    const Ptr<CNVs> list = com::Make<CNVs>();
    list->Add(L"first", nullptr, nullptr);
    const Ptr<IEnumVARIANT> enumerator = com::Enumerate(list.As<IDispatch>().Get());
    Variant item;
    EXPECT_EQ(enumerator->Next(1, &item, nullptr), S_OK);
    EXPECT_EQ(com::Get(item.AsObject().Get(), L"Name").AsText(), L"first");
}

TEST_F(LateTest, ObjectThatIsNoCollectionCannotBeEnumerated) {
    EXPECT_EQ(FailureOf([&] { com::Enumerate(object.Get()); }), DISP_E_MEMBERNOTFOUND);
}

}  // namespace
}  // namespace quillon
