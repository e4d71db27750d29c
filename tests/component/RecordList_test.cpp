#include "model/RecordList.h"

#include "com/late.h"
#include "component/probe.h"
#include "component/record_support.h"
#include "model/CCPs.h"
#include "model/CNVs.h"
#include "support/xml_elements.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Ptr;
using test::Element;

struct NetworkVariables {
    using List = CNVs;
    using ListInterface = _CNVs;
    using RecordInterface = _CNV;
};
struct ConfigurationProperties {
    using List = CCPs;
    using ListInterface = _CCPs;
    using RecordInterface = _CCP;
};

template <class Kind>
class RecordListTest : public test::ProbeTest {
protected:
    using RecordInterface = typename Kind::RecordInterface;

    Ptr<RecordInterface> Add(const wchar_t* name, IDispatch* element,
                             IDispatch* catalogue = nullptr) {
        Ptr<RecordInterface> record;
        EXPECT_EQ(list->Add(Bstr(name).Get(), element, catalogue, record.Out()), S_OK);
        return record;
    }
    void AddThree() {
        for (const wchar_t* name : {L"a", L"b", L"c"})
            Add(name, Element(L"<x><ConnectionIndex>4</ConnectionIndex></x>").Get());
    }
    std::wstring NameOf(const Ptr<RecordInterface>& record) {
        return record ? test::TextOf(record, &RecordInterface::get_Name) : L"none";
    }
    // The name of the record that a key finds.
    std::wstring Item(BSTR key) {
        Ptr<RecordInterface> record;
        EXPECT_EQ(list->get_Item(key, record.Out()), S_OK);
        return NameOf(record);
    }
    std::wstring Item(const wchar_t* key) { return Item(Bstr(key).Get()); }
    long Count() { return test::NumberOf(list, &Kind::ListInterface::get_Count); }

    Ptr<typename Kind::ListInterface> list = com::Make<typename Kind::List>();
};

using Kinds = ::testing::Types<NetworkVariables, ConfigurationProperties>;
TYPED_TEST_SUITE(RecordListTest, Kinds);

TYPED_TEST(RecordListTest, NewListIsEmpty) {
    EXPECT_EQ(this->Count(), 0);
    EXPECT_EQ(this->Item(L"1"), L"none");
}

TYPED_TEST(RecordListTest, AddGivesTheFilledRecordAndAppendsIt) {
    const auto record = this->Add(L"name", Element(L"<x><RawValue>0A</RawValue></x>").Get());
    EXPECT_EQ(this->NameOf(record), L"name");
    EXPECT_EQ(test::TextOf(record, &TypeParam::RecordInterface::get_RawValue), L"0A");
    EXPECT_EQ(this->Count(), 1);
    EXPECT_EQ(this->Item(L"1"), L"name");
}

TYPED_TEST(RecordListTest, DuplicateNamesAndConnectionIndexesStandSideBySide) {
    this->AddThree();
    this->AddThree();
    EXPECT_EQ(this->Count(), 6);
    EXPECT_EQ(this->Item(L"1"), L"a");
    EXPECT_EQ(this->Item(L"4"), L"a");
    EXPECT_TRUE(this->boxes().Seen().empty());
}

TYPED_TEST(RecordListTest, ItemCountsFromOne) {
    this->AddThree();
    EXPECT_EQ(this->Item(L"2"), L"b");
    EXPECT_EQ(this->Item(L"3"), L"c");
    for (const wchar_t* key :
         {L"0", L"4", L"", L"abc", L"-1", L"2147483648", L"1e1x", L"99999999999"})
        EXPECT_EQ(this->Item(key), std::wstring(key) == L"1e1x" ? L"a" : L"none")
            << testing::PrintToString(key);
    EXPECT_EQ(this->Item(static_cast<BSTR>(nullptr)), L"none");
}

TYPED_TEST(RecordListTest, KeyIsRoundedHalvesToEven) {
    this->AddThree();
    EXPECT_EQ(this->Item(L"0.5"), L"none");
    EXPECT_EQ(this->Item(L"1.5"), L"b");
    EXPECT_EQ(this->Item(L"2.5"), L"b");
    EXPECT_EQ(this->Item(L"0.51"), L"a");
    EXPECT_EQ(this->Item(L"3.5"), L"none");
    EXPECT_EQ(this->Item(L"&H2"), L"b");
    EXPECT_EQ(this->Item(L" 2 of three"), L"b");
}

TYPED_TEST(RecordListTest, NamesAreNoKeys) {
    this->AddThree();
    EXPECT_EQ(this->Item(L"a"), L"none");
}

TYPED_TEST(RecordListTest, ScriptsIndexWithANumber) {
    this->AddThree();
    const Ptr<IDispatch> object = this->list.template As<IDispatch>();
    const com::Variant record = com::Get(object.Get(), L"Item", {com::Variant(3)});
    EXPECT_EQ(com::Get(record.AsObject().Get(), L"Name").AsText(), L"c");
    EXPECT_FALSE(com::Get(object.Get(), L"Item", {com::Variant(4)}).AsObject());
    EXPECT_EQ(com::Get(object.Get(), L"Count").AsNumber(), 3);
}

TYPED_TEST(RecordListTest, EnumerationGivesTheRecordsInTheOrderOfAdding) {
    this->AddThree();
    const Ptr<IEnumVARIANT> records = com::Enumerate(this->list.template As<IDispatch>().Get());
    this->Add(L"later", nullptr);
    std::wstring names;
    com::Variant record;
    while (records->Next(1, record.Out(), nullptr) == S_OK)
        names += com::Get(record.AsObject().Get(), L"Name").AsText();
    EXPECT_EQ(names, L"abc");
}

TYPED_TEST(RecordListTest, EnumerationOutlivesTheList) {
    this->AddThree();
    Ptr<IUnknown> enumerator;
    ASSERT_EQ(this->list->get_NewEnum(enumerator.Out()), S_OK);
    this->list.Reset();
    com::Variant record;
    EXPECT_EQ(enumerator.As<IEnumVARIANT>()->Next(1, &record, nullptr), S_OK);
    EXPECT_EQ(com::Get(record.AsObject().Get(), L"Name").AsText(), L"a");
}

TYPED_TEST(RecordListTest, ObjectThatIsNoElementIsReportedAndAddsNoRecord) {
    this->boxes().Answer(IDOK);
    EXPECT_FALSE(this->Add(L"bad", test::NewProbeDispatch().Get()));
    EXPECT_EQ(this->Count(), 0);
    ASSERT_EQ(this->boxes().Seen().size(), 1u);
    const test::Box& box = this->boxes().Seen().front();
    EXPECT_EQ(box.text, L"Error: multiple connection index!");
    EXPECT_EQ(box.title, L"Quillon");
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
    EXPECT_EQ(box.icon, test::Icon::kNone);
    Ptr<IErrorInfo> record;
    EXPECT_EQ(GetErrorInfo(0, record.Out()), S_FALSE);
}

TYPED_TEST(RecordListTest, NoElementAddsAnEmptyRecord) {
    EXPECT_EQ(this->NameOf(this->Add(L"empty", nullptr)), L"empty");
    EXPECT_EQ(this->Count(), 1);
}

TYPED_TEST(RecordListTest, CatalogueIsKeptAsLongAsTheRecord) {
    {
        const Ptr<IDispatch> catalogue = test::NewProbeDispatch();
        this->Add(L"a", Element(L"<x/>").Get(), catalogue.Get());
    }
    EXPECT_EQ(test::g_probes, 1);
    this->list.Reset();
    EXPECT_EQ(test::g_probes, 0);
}

TYPED_TEST(RecordListTest, RecordOutlivesTheList) {
    const auto record = this->Add(L"a", Element(L"<x/>").Get());
    this->list.Reset();
    EXPECT_EQ(this->NameOf(record), L"a");
}

TYPED_TEST(RecordListTest, ChangeOfARecordIsSeenThroughTheList) {
    this->AddThree();
    typename TypeParam::RecordInterface* raw = nullptr;
    EXPECT_EQ(this->list->get_Item(Bstr(L"2").Get(), &raw), S_OK);
    const auto record = Ptr<typename TypeParam::RecordInterface>::Adopt(raw);
    record->put_Name(Bstr(L"renamed").Get());
    EXPECT_EQ(this->Item(L"2"), L"renamed");
}

TYPED_TEST(RecordListTest, NullTargetsAreRefused) {
    EXPECT_EQ(this->list->get_Count(nullptr), E_POINTER);
    EXPECT_EQ(this->list->get_Item(Bstr(L"1").Get(), nullptr), E_POINTER);
    EXPECT_EQ(this->list->get_NewEnum(nullptr), E_POINTER);
    EXPECT_EQ(this->list->Add(Bstr(L"1").Get(), nullptr, nullptr, nullptr), E_POINTER);
}

}  // namespace
}  // namespace quillon
