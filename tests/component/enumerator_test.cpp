#include "com/enumerator.h"

#include "component/probe.h"

namespace quillon {
namespace {

using com::Ptr;
using com::Variant;
using com::VariantEnumerator;

class EnumeratorTest : public test::ProbeTest {
protected:
    // What the next call gives, asking for `count`.
    std::vector<std::int32_t> Next(IEnumVARIANT* from, ULONG count, HRESULT expected) {
        std::vector<Variant> items(count + 1);
        ULONG fetched = 99;
        EXPECT_EQ(from->Next(count, items.data(), &fetched), expected);
        std::vector<std::int32_t> given;
        for (ULONG i = 0; i < fetched; ++i) given.push_back(items[i].AsNumber());
        return given;
    }

    Ptr<VariantEnumerator> numbers =
        com::Make<VariantEnumerator>(VariantEnumerator::Values{Variant(1), Variant(2), Variant(3)});
    using Numbers = std::vector<std::int32_t>;
};

TEST_F(EnumeratorTest, NextGivesItemsInOrderAndThenFewer) {
    EXPECT_EQ(Next(numbers.Get(), 2, S_OK), (Numbers{1, 2}));
    EXPECT_EQ(Next(numbers.Get(), 2, S_FALSE), (Numbers{3}));
    EXPECT_EQ(Next(numbers.Get(), 1, S_FALSE), Numbers{});
    EXPECT_EQ(Next(numbers.Get(), 0, S_OK), Numbers{});
}

TEST_F(EnumeratorTest, CountFetchedMayBeOmittedForOneItemOnly) {
    Variant one;
    EXPECT_EQ(numbers->Next(1, &one, nullptr), S_OK);
    EXPECT_EQ(one.AsNumber(), 1);
    Variant two[2];
    EXPECT_EQ(numbers->Next(2, two, nullptr), E_POINTER);
    EXPECT_EQ(numbers->Next(1, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Next(numbers.Get(), 1, S_OK), (Numbers{2})) << "a refused call moves nothing";
}

TEST_F(EnumeratorTest, SkipMovesOnAndSaysWhenThereWereTooFew) {
    EXPECT_EQ(numbers->Skip(2), S_OK);
    EXPECT_EQ(Next(numbers.Get(), 1, S_OK), (Numbers{3}));
    EXPECT_EQ(numbers->Reset(), S_OK);
    EXPECT_EQ(numbers->Skip(3), S_OK);
    EXPECT_EQ(numbers->Skip(1), S_FALSE);
    EXPECT_EQ(numbers->Reset(), S_OK);
    EXPECT_EQ(numbers->Skip(4), S_FALSE);
    EXPECT_EQ(Next(numbers.Get(), 1, S_FALSE), Numbers{});
    EXPECT_EQ(numbers->Skip(0xFFFFFFFF), S_FALSE);
}

TEST_F(EnumeratorTest, ResetStartsAgain) {
    Next(numbers.Get(), 3, S_OK);
    EXPECT_EQ(numbers->Reset(), S_OK);
    EXPECT_EQ(Next(numbers.Get(), 3, S_OK), (Numbers{1, 2, 3}));
}

TEST_F(EnumeratorTest, CloneStandsWhereTheOriginalStoodAndMovesAlone) {
    Next(numbers.Get(), 1, S_OK);
    Ptr<IEnumVARIANT> copy;
    ASSERT_EQ(numbers->Clone(copy.Out()), S_OK);
    EXPECT_EQ(Next(copy.Get(), 2, S_OK), (Numbers{2, 3}));
    EXPECT_EQ(Next(numbers.Get(), 1, S_OK), (Numbers{2}));
    numbers.Reset();
    EXPECT_EQ(copy->Reset(), S_OK);
    EXPECT_EQ(Next(copy.Get(), 3, S_OK), (Numbers{1, 2, 3}));
    EXPECT_EQ(copy->Clone(nullptr), E_POINTER);
}

TEST_F(EnumeratorTest, ObjectsAreSharedNotMoved) {
    const Ptr<IDispatch> object = test::NewProbeDispatch();
    Ptr<VariantEnumerator> objects =
        com::Make<VariantEnumerator>(VariantEnumerator::Values{Variant(object.Get())});
    Variant item;
    EXPECT_EQ(objects->Next(1, &item, nullptr), S_OK);
    EXPECT_EQ(objects->Reset(), S_OK);
    Variant again;
    EXPECT_EQ(objects->Next(1, &again, nullptr), S_OK);
    objects.Reset();
    EXPECT_EQ(item.AsObject().Get(), object.Get());
    EXPECT_EQ(again.AsObject().Get(), object.Get());
}

struct FailingTraits {
    using Value = int;
    using Item = VARIANT;
    static void Give(const int& value, VARIANT* item) {
        if (value == 3) throw std::bad_alloc();
        Variant(test::NewProbeDispatch().Get()).DetachTo(item);
    }
    static void Take(VARIANT* item) { VariantClear(item); }
};

TEST_F(EnumeratorTest, FailureInTheMiddleTakesBackWhatWasGivenAndStaysInPlace) {
    using Failing = com::Enumerator<IEnumVARIANT, FailingTraits>;
    const Ptr<Failing> failing = com::Make<Failing>(std::vector<int>{1, 2, 3});
    VARIANT items[3];
    ULONG fetched = 9;
    EXPECT_EQ(failing->Next(3, items, &fetched), E_OUTOFMEMORY);
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(test::g_probes, 0);
    EXPECT_EQ(failing->Next(2, items, &fetched), S_OK);
    EXPECT_EQ(test::g_probes, 2);
    for (int i = 0; i < 2; ++i) VariantClear(&items[i]);
}

}  // namespace
}  // namespace quillon
