#include "com/ptr.h"

#include "component/probe.h"

namespace quillon {
namespace {

using com::Ptr;
using test::Probe;

class PtrTest : public test::ProbeTest {
protected:
    // References held, the asking one not counted.
    static ULONG Count(IUnknown* object) {
        object->AddRef();
        return object->Release();
    }

    Ptr<Probe> probe = com::Make<Probe>();
};

TEST_F(PtrTest, MakeGivesTheFirstReference) {
    EXPECT_EQ(Count(probe.As<IUnknown>().Get()), 2u);
}

TEST_F(PtrTest, SharingAddsAReferenceAndTheEndDropsIt) {
    const Ptr<IProbe> first(probe);
    EXPECT_EQ(Count(first.Get()), 2u);
    {
        const Ptr<IProbe> second = first;
        const Ptr<IProbe> third(first.Get());
        EXPECT_EQ(Count(first.Get()), 4u);
    }
    EXPECT_EQ(Count(first.Get()), 2u);
}

TEST_F(PtrTest, AdoptTakesOverWithoutAddingAndDetachLetsGoWithoutDropping) {
    Ptr<IProbe> first(probe);
    Ptr<IProbe> second = Ptr<IProbe>::Adopt(first.Detach());
    EXPECT_FALSE(first);
    EXPECT_EQ(Count(second.Get()), 2u);
}

TEST_F(PtrTest, MovingLeavesTheCountAndEmptiesTheSource) {
    Ptr<IProbe> first(probe);
    Ptr<IProbe> second(std::move(first));
    EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(Count(second.Get()), 2u);
}

TEST_F(PtrTest, AssigningItselfKeepsTheObject) {
    Ptr<IProbe> first(probe);
    const Ptr<IProbe>& same = first;
    first = same;
    EXPECT_EQ(Count(first.Get()), 2u);
}

TEST_F(PtrTest, OutEmptiesFirstAndInOutDoesNot) {
    Ptr<IProbe> first(probe);
    EXPECT_EQ(*first.InOut(), first.Get());
    EXPECT_EQ(*first.Out(), nullptr);
    EXPECT_EQ(Count(probe.As<IUnknown>().Get()), 2u);
}

TEST_F(PtrTest, AsGivesAnotherInterfaceOrNothing) {
    EXPECT_TRUE(probe.As<_CNV>());
    EXPECT_FALSE(probe.As<_CCP>());
    EXPECT_FALSE(Ptr<IUnknown>().As<IDispatch>());
}

TEST_F(PtrTest, NullIsFalseAndSafeToDrop) {
    Ptr<IProbe> none = nullptr;
    none.Reset();
    EXPECT_FALSE(none);
    EXPECT_EQ(none.Detach(), nullptr);
}

}  // namespace
}  // namespace quillon
