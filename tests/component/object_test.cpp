#include "com/object.h"

#include "component/probe.h"

namespace quillon {
namespace {

using com::Ptr;
using test::Probe;

class ObjectTest : public test::ProbeTest {
protected:
    Ptr<Probe> probe = com::Make<Probe>();
};

TEST_F(ObjectTest, EveryFaceAnswersWithTheSameIdentity) {
    const Ptr<IUnknown> identity = probe.As<IUnknown>();
    EXPECT_EQ(probe.As<IProbe>().As<IUnknown>().Get(), identity.Get());
    EXPECT_EQ(probe.As<_CNV>().As<IUnknown>().Get(), identity.Get());
    EXPECT_EQ(probe.As<IProvideClassInfo>().As<IUnknown>().Get(), identity.Get());
    EXPECT_EQ(probe.As<IProvideClassInfo2>().As<IUnknown>().Get(), identity.Get());
    EXPECT_EQ(probe.As<ISupportErrorInfo>().As<IUnknown>().Get(), identity.Get());
}

TEST_F(ObjectTest, EachFaceLeadsToEachOther) {
    const Ptr<IProvideClassInfo2> info = probe.As<IProvideClassInfo2>();
    ASSERT_TRUE(info);
    EXPECT_EQ(info.As<IProbe>().Get(), probe.As<IProbe>().Get());
    EXPECT_EQ(info.As<_CNV>().Get(), probe.As<_CNV>().Get());
}

TEST_F(ObjectTest, DispatchIsTheFirstFaceThatHasIt) {
    EXPECT_EQ(probe.As<IDispatch>().Get(), static_cast<IDispatch*>(probe.As<IProbe>().Get()));
    EXPECT_NE(static_cast<IDispatch*>(probe.As<_CNV>().Get()), probe.As<IDispatch>().Get());
}

TEST_F(ObjectTest, UnknownInterfaceIsRefusedAndTheTargetCleared) {
    void* face = probe.Get();
    EXPECT_EQ(probe->QueryInterface(IID_IClassFactory, &face), E_NOINTERFACE);
    EXPECT_EQ(face, nullptr);
    EXPECT_EQ(probe->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ObjectTest, FacesShareOneCount) {
    const Ptr<IProbe> first = probe.As<IProbe>();
    const Ptr<_CNV> second = probe.As<_CNV>();
    EXPECT_EQ(first->AddRef(), 4u);
    EXPECT_EQ(second->Release(), 3u);
}

TEST_F(ObjectTest, LastReleaseOnAnyFaceEndsTheObject) {
    Ptr<_CNV> other = probe.As<_CNV>();
    probe.Reset();
    EXPECT_EQ(test::g_probes, 1);
    EXPECT_EQ(other.Detach()->Release(), 0u);
    EXPECT_EQ(test::g_probes, 0);
}

TEST_F(ObjectTest, EachObjectHoldsTheModule) {
    const long before = com::ModuleLocks();
    {
        const Ptr<Probe> second = com::Make<Probe>();
        EXPECT_EQ(com::ModuleLocks(), before + 1);
    }
    EXPECT_EQ(com::ModuleLocks(), before);
}

// An object that is handed out once more while it ends.
class Farewell final : public com::Object<IPersist> {
public:
    explicit Farewell(int& ends) : m_ends(ends) {}
    STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }

private:
    ~Farewell() override {
        const Ptr<IPersist> again(this);
        ++m_ends;
    }
    int& m_ends;
};

TEST_F(ObjectTest, ReferenceTakenAndDroppedDuringTheEndDoesNotEndItTwice) {
    int ends = 0;
    com::Make<Farewell>(ends).Reset();
    EXPECT_EQ(ends, 1);
}

class FailsToBeMade final : public com::Object<IPersist> {
public:
    FailsToBeMade() { throw com::Error(E_ACCESSDENIED); }
    STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }
};

TEST_F(ObjectTest, ObjectWhoseConstructorFailsHoldsNothing) {
    const long before = com::ModuleLocks();
    EXPECT_THROW(com::Make<FailsToBeMade>(), com::Error);
    EXPECT_EQ(com::ModuleLocks(), before);
}

using ClassInfoTest = ObjectTest;

TEST_F(ClassInfoTest, ClassIsDescribedAndEventsNamedWhereThereAreAny) {
    const Ptr<IProvideClassInfo2> source = com::Make<test::Source>().As<IProvideClassInfo2>();
    GUID events{};
    EXPECT_EQ(source->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
    EXPECT_TRUE(IsEqualGUID(events, DIID___CDevice));
    Ptr<ITypeInfo> info;
    ASSERT_EQ(source->GetClassInfo(info.Out()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(IsEqualGUID(attributes->guid, CLSID_CDevice));
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    info->ReleaseTypeAttr(attributes);
}

TEST_F(ClassInfoTest, ClassWithoutEventsAndOtherKindsAreRefused) {
    const Ptr<IProvideClassInfo2> info = probe.As<IProvideClassInfo2>();
    GUID events = DIID___CDevice;
    EXPECT_EQ(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), E_INVALIDARG);
    EXPECT_TRUE(IsEqualGUID(events, GUID{}));
    EXPECT_EQ(info->GetGUID(99, &events), E_INVALIDARG);
    EXPECT_EQ(info->GetGUID(1, nullptr), E_POINTER);
    EXPECT_EQ(info->GetClassInfo(nullptr), E_POINTER);
}

TEST_F(ClassInfoTest, FailureRecordsArePromisedForDualInterfacesOnly) {
    const Ptr<ISupportErrorInfo> support = probe.As<ISupportErrorInfo>();
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IProbe)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_CNV)), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(_CCP)), S_FALSE);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IProvideClassInfo2), S_FALSE);
}

}  // namespace
}  // namespace quillon
