#include "model/CCP.h"

#include "component/record_support.h"
#include "support/component_fixture.h"
#include "support/xml_elements.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Ptr;
using test::Element;
using test::NumberOf;
using test::TextOf;

class CCPTest : public test::ComponentTest {
protected:
    static Ptr<_CCP> Filled(const std::wstring& children) {
        Ptr<_CCP> record = com::Make<CCP>();
        EXPECT_EQ(record->putref_XMLDomNode(Element(L"<p>" + children + L"</p>").Get()), S_OK);
        return record;
    }
    static std::wstring RawValue(const Ptr<_CCP>& record) {
        return TextOf(record, &_CCP::get_RawValue);
    }
};

TEST_F(CCPTest, NewRecordIsEmpty) {
    const Ptr<_CCP> record = com::Make<CCP>();
    EXPECT_EQ(TextOf(record, &_CCP::get_Name), L"");
    EXPECT_EQ(RawValue(record), L"");
    EXPECT_EQ(NumberOf(record, &_CCP::get_ConnectionIndex), 0);
}

TEST_F(CCPTest, ElementAsWrittenFillsIndexAndRawValue) {
    const Ptr<_CCP> record = Filled(
        L"<SISD/><SNVTType>SNVT_temp</SNVTType><Length>2</Length>"
        L"<ConnectionIndex>12</ConnectionIndex><RawValue>0A28</RawValue><Value>26</Value>");
    EXPECT_EQ(NumberOf(record, &_CCP::get_ConnectionIndex), 12);
    EXPECT_EQ(RawValue(record), L"0A28");
    EXPECT_EQ(TextOf(record, &_CCP::get_Name), L"");
}

TEST_F(CCPTest, EmptyOrMissingRawValueIsAllOnesUnconditionally) {
    EXPECT_EQ(RawValue(Filled(L"<Length>2</Length>")), L"FFFF");
    EXPECT_EQ(RawValue(Filled(L"<Length>2</Length><RawValue></RawValue>")), L"FFFF");
    EXPECT_EQ(RawValue(Filled(L"<RawValue/><length>1</length>")), L"FF");
    EXPECT_EQ(RawValue(Filled(L"")), L"");
    EXPECT_EQ(RawValue(Filled(L"<Length>-2</Length>")), L"");
    EXPECT_EQ(RawValue(Filled(L"<Length>2147483647</Length>")), L"");
}

TEST_F(CCPTest, LaterChildlessDuplicateLeavesTheValue) {
    EXPECT_EQ(RawValue(Filled(L"<RawValue>01</RawValue><RawValue/>")), L"01");
}

TEST_F(CCPTest, FieldsOfTheCallerArePutAndGot) {
    const Ptr<_CCP> record = com::Make<CCP>();
    EXPECT_EQ(record->put_Name(Bstr(L"cpOffset").Get()), S_OK);
    EXPECT_EQ(record->put_ConnectionIndex(-1), S_OK);
    EXPECT_EQ(TextOf(record, &_CCP::get_Name), L"cpOffset");
    EXPECT_EQ(NumberOf(record, &_CCP::get_ConnectionIndex), -1);
}

TEST_F(CCPTest, NoElementFillsNothingAndAForeignObjectIsRefused) {
    const Ptr<_CCP> record = com::Make<CCP>();
    EXPECT_EQ(record->putref_XMLDomNode(nullptr), S_OK);
    EXPECT_EQ(record->putref_XMLDomNode(record.Get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(RawValue(record), L"");
}

TEST_F(CCPTest, NullTargetsAreRefused) {
    const Ptr<_CCP> record = com::Make<CCP>();
    EXPECT_EQ(record->get_ConnectionIndex(nullptr), E_POINTER);
    EXPECT_EQ(record->get_Name(nullptr), E_POINTER);
    EXPECT_EQ(record->get_RawValue(nullptr), E_POINTER);
}

}  // namespace
}  // namespace quillon
