#include "com/class_table.h"

#include "component/probe.h"
#include "quorvex_h.h"

namespace quillon {
namespace {

using com::ClassEntry;
using com::Ptr;
using test::Probe;

Ptr<IUnknown> Refuse() {
    throw com::Error(REGDB_E_CLASSNOTREG);
}

constexpr CLSID kRefused = {0x11111111, 0x2222, 0x3333, {1, 2, 3, 4, 5, 6, 7, 8}};

class ClassTableTest : public test::ProbeTest {
protected:
    static HRESULT Get(REFCLSID clsid, REFIID iid, void** factory) {
        static const ClassEntry classes[] = {
            {CLSID_ProbeObject, L"ProbeObject", L"QuillonTest.ProbeObject", com::Create<Probe>},
            {kRefused, L"Refused", L"QuillonTest.Refused", Refuse},
        };
        return com::GetClassObject(classes, clsid, iid, factory);
    }
    static Ptr<IClassFactory> Factory(REFCLSID clsid) {
        Ptr<IClassFactory> factory;
        EXPECT_EQ(Get(clsid, IID_IClassFactory, factory.OutVoid()), S_OK);
        return factory;
    }
};

TEST_F(ClassTableTest, FactoryMakesObjectsOfItsClass) {
    Ptr<IProbe> made;
    EXPECT_EQ(Factory(CLSID_ProbeObject)->CreateInstance(nullptr, __uuidof(IProbe), made.OutVoid()),
              S_OK);
    EXPECT_EQ(test::g_probes, 1);
    made.Reset();
    EXPECT_EQ(test::g_probes, 0);
}

TEST_F(ClassTableTest, ObjectWithoutTheWantedInterfaceEndsAtOnce) {
    void* made = this;
    EXPECT_EQ(Factory(CLSID_ProbeObject)->CreateInstance(nullptr, __uuidof(_CCP), &made),
              E_NOINTERFACE);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(test::g_probes, 0);
}

TEST_F(ClassTableTest, AggregationIsRefused) {
    const Ptr<Probe> outer = com::Make<Probe>();
    void* made = this;
    EXPECT_EQ(
        Factory(CLSID_ProbeObject)->CreateInstance(outer.As<IUnknown>().Get(), IID_IUnknown, &made),
        CLASS_E_NOAGGREGATION);
    EXPECT_EQ(made, nullptr);
}

TEST_F(ClassTableTest, FailingCreationGivesItsOwnResult) {
    void* made = this;
    EXPECT_EQ(Factory(kRefused)->CreateInstance(nullptr, IID_IUnknown, &made), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(made, nullptr);
}

TEST_F(ClassTableTest, UnknownClassAndUnknownInterfaceAreRefused) {
    void* factory = this;
    EXPECT_EQ(Get(CLSID_CRegistry, IID_IClassFactory, &factory), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(factory, nullptr);
    factory = this;
    EXPECT_EQ(Get(CLSID_ProbeObject, IID_IDispatch, &factory), E_NOINTERFACE);
    EXPECT_EQ(factory, nullptr);
}

TEST_F(ClassTableTest, NullTargetsAreRefused) {
    EXPECT_EQ(Get(CLSID_ProbeObject, IID_IClassFactory, nullptr), E_POINTER);
    EXPECT_EQ(Factory(CLSID_ProbeObject)->CreateInstance(nullptr, IID_IUnknown, nullptr),
              E_POINTER);
}

TEST_F(ClassTableTest, LockedServerKeepsTheModuleWhenTheFactoryIsGone) {
    EXPECT_EQ(Factory(CLSID_ProbeObject)->LockServer(TRUE), S_OK);
    EXPECT_EQ(com::ModuleLocks(), 1);
    EXPECT_EQ(Factory(CLSID_ProbeObject)->LockServer(FALSE), S_OK);
    EXPECT_EQ(com::ModuleLocks(), 0);
}

TEST_F(ClassTableTest, FactoryItselfKeepsTheModule) {
    const Ptr<IClassFactory> factory = Factory(CLSID_ProbeObject);
    EXPECT_EQ(com::ModuleLocks(), 1);
}

using ModuleTest = ClassTableTest;

TEST_F(ModuleTest, NameAndFolderArePartsOfThePath) {
    EXPECT_EQ(com::ModuleFolder() + L"\\" + com::ModuleName() + L".exe", com::ModulePath());
    EXPECT_EQ(com::ModuleName(), L"component_tests");
}

TEST_F(ModuleTest, TypesAreFoundInEachOfTheModulesLibraries) {
    const com::ModuleLock lock;
    EXPECT_TRUE(com::TypeInfoOf(__uuidof(_CNV)));
    EXPECT_TRUE(com::TypeInfoOf(__uuidof(IDeviceEx)));
    EXPECT_TRUE(com::TypeInfoOf(__uuidof(IProbe)));
    EXPECT_EQ(com::TypeInfoOf(__uuidof(IProbe)).Get(), com::TypeInfoOf(__uuidof(IProbe)).Get());
}

TEST_F(ModuleTest, UnknownTypeIsAnError) {
    try {
        (void)com::TypeInfoOf(kRefused);
        FAIL() << "an unknown type must throw";
    } catch (const com::Error& error) {
        EXPECT_EQ(error.Result(), TYPE_E_ELEMENTNOTFOUND);
    }
}

}  // namespace
}  // namespace quillon
