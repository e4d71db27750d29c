#include "model/CNV.h"

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

class CNVTest : public test::ComponentTest {
protected:
    // A record filled from an element "v" with these attributes and children.
    static Ptr<_CNV> Filled(const std::wstring& attributes, const std::wstring& children) {
        Ptr<_CNV> record = com::Make<CNV>();
        Fill(record, L"<v " + attributes + L">" + children + L"</v>");
        return record;
    }
    static void Fill(const Ptr<_CNV>& record, const std::wstring& xml) {
        EXPECT_EQ(record->putref_XMLDomNode(Element(xml).Get()), S_OK);
    }
    static std::wstring RawValue(const Ptr<_CNV>& record) {
        return TextOf(record, &_CNV::get_RawValue);
    }
    static long Length(const Ptr<_CNV>& record) { return NumberOf(record, &_CNV::get_Length); }
    static long Index(const Ptr<_CNV>& record) {
        return NumberOf(record, &_CNV::get_ConnectionIndex);
    }
    static long Direction(const Ptr<_CNV>& record) {
        return NumberOf(record, &_CNV::get_Direction);
    }
    static bool IsNC(const Ptr<_CNV>& record) {
        VARIANT_BOOL isNC = 7;
        EXPECT_EQ(record->get_IsNC(&isNC), S_OK);
        return isNC != VARIANT_FALSE;
    }
};

TEST_F(CNVTest, NewRecordIsEmpty) {
    const Ptr<_CNV> record = com::Make<CNV>();
    EXPECT_EQ(TextOf(record, &_CNV::get_Name), L"");
    EXPECT_EQ(TextOf(record, &_CNV::get_SNVTType), L"");
    EXPECT_EQ(RawValue(record), L"");
    EXPECT_EQ(Length(record) + Index(record) + Direction(record), 0);
    EXPECT_EQ(NumberOf(record, &_CNV::get_Address), 0);
    EXPECT_FALSE(IsNC(record));
}

TEST_F(CNVTest, ElementAsWrittenFillsEveryField) {
    const Ptr<_CNV> record =
        Filled(L"IsNC='1'",
               L"<Direction>Output</Direction><SISD>&amp;1</SISD><SNVTType>SNVT_temp_p</SNVTType>"
               L"<Length>2</Length><ConnectionIndex>5</ConnectionIndex><RawValue>0a28</RawValue>"
               L"<Value>26.00</Value>");
    EXPECT_TRUE(IsNC(record));
    EXPECT_EQ(Direction(record), 1);
    EXPECT_EQ(TextOf(record, &_CNV::get_SNVTType), L"SNVT_temp_p");
    EXPECT_EQ(Length(record), 2);
    EXPECT_EQ(Index(record), 5);
    EXPECT_EQ(RawValue(record), L"0a28");
    EXPECT_EQ(NumberOf(record, &_CNV::get_Address), 0);
    EXPECT_EQ(TextOf(record, &_CNV::get_Name), L"");
}

TEST_F(CNVTest, ConfigurationVariableWithoutARawValueIsAllOnes) {
    EXPECT_EQ(RawValue(Filled(L"IsNC='1'", L"<Length>3</Length>")), L"FFFFFF");
    EXPECT_EQ(RawValue(Filled(L"IsNC='1'", L"<Length>3</Length><RawValue></RawValue>")), L"FFFFFF");
    EXPECT_EQ(RawValue(Filled(L"IsNC='0'", L"<Length>3</Length>")), L"");
    EXPECT_EQ(RawValue(Filled(L"", L"<Length>3</Length>")), L"");
}

TEST_F(CNVTest, ImpossibleLengthsLeaveTheRawValueEmpty) {
    const Ptr<_CNV> longest = Filled(L"IsNC='1'", L"<Length>2147483647</Length>");
    EXPECT_EQ(Length(longest), 2147483647);
    EXPECT_EQ(RawValue(longest), L"");
    const Ptr<_CNV> negative = Filled(L"IsNC='1'", L"<Length>-3</Length>");
    EXPECT_EQ(Length(negative), -3);
    EXPECT_EQ(RawValue(negative), L"");
    EXPECT_EQ(Length(Filled(L"", L"<Length>2147483648</Length>")), 0);
}

TEST_F(CNVTest, IsNCIsTrueForOneOnlyInAnyLetterCaseOfItsName) {
    EXPECT_TRUE(IsNC(Filled(L"IsNC='1.0'", L"")));
    EXPECT_TRUE(IsNC(Filled(L"isnc='1'", L"")));
    EXPECT_TRUE(IsNC(Filled(L"ISNC=' 1x'", L"")));
    EXPECT_FALSE(IsNC(Filled(L"IsNC='true'", L"")));
    EXPECT_FALSE(IsNC(Filled(L"IsNC='2'", L"")));
    EXPECT_FALSE(IsNC(Filled(L"IsNC=''", L"")));
    EXPECT_FALSE(IsNC(Filled(L"Length='1' IsNCx='1'", L"")));
}

TEST_F(CNVTest, IsNCIsRecognisedWithAPrefix) {
    EXPECT_TRUE(IsNC(Filled(L"xmlns:p='urn:p' p:IsNC='1'", L"")));
}

TEST_F(CNVTest, ChildNamesCountInAnyLetterCaseAndWithAPrefix) {
    EXPECT_EQ(RawValue(Filled(L"", L"<rawvalue>01</rawvalue>")), L"01");
    EXPECT_EQ(RawValue(Filled(L"", L"<RAWVALUE>02</RAWVALUE>")), L"02");
    EXPECT_EQ(RawValue(Filled(L"xmlns:p='urn:p'", L"<p:RawValue>03</p:RawValue>")), L"03");
}

TEST_F(CNVTest, DirectionIsAnInputWhenItsTextBeginsWithIn) {
    for (const wchar_t* text : {L"INPUT", L"Input", L"in", L"iNk"})
        EXPECT_EQ(Direction(Filled(L"", L"<Direction>" + std::wstring(text) + L"</Direction>")), 0)
            << testing::PrintToString(text);
    for (const wchar_t* text : {L"Output", L"X", L"i"})
        EXPECT_EQ(Direction(Filled(L"", L"<Direction>" + std::wstring(text) + L"</Direction>")), 1)
            << testing::PrintToString(text);
}

TEST_F(CNVTest, DirectionWithoutATextNodeLeavesTheField) {
    EXPECT_EQ(Direction(Filled(L"", L"<Direction/>")), 0);
    EXPECT_EQ(Direction(Filled(L"", L"<Direction>Output</Direction><Direction/>")), 1);
}

TEST_F(CNVTest, ExistingEmptyDirectionTextIsAnOutput) {
    EXPECT_EQ(Direction(Filled(L"", L"<Direction><![CDATA[]]></Direction>")), 1);
    EXPECT_EQ(Direction(Filled(L"", L"<Direction><!----></Direction>")), 1);
}

TEST_F(CNVTest, LaterChildOverwritesAnEarlierOne) {
    const Ptr<_CNV> record =
        Filled(L"", L"<RawValue>01</RawValue><Length>1</Length><RawValue>0203</RawValue>");
    EXPECT_EQ(RawValue(record), L"0203");
}

TEST_F(CNVTest, LaterChildlessDuplicateLeavesTheValue) {
    EXPECT_EQ(RawValue(Filled(L"", L"<RawValue>01</RawValue><RawValue/>")), L"01");
    EXPECT_EQ(Length(Filled(L"", L"<Length>4</Length><Length></Length>")), 4);
}

TEST_F(CNVTest, FirstChildIsTheTextEvenWhenItIsACommentOrCData) {
    EXPECT_EQ(RawValue(Filled(L"", L"<RawValue><!--AA-->01</RawValue>")), L"AA");
    EXPECT_EQ(RawValue(Filled(L"", L"<RawValue><![CDATA[0B]]></RawValue>")), L"0B");
    EXPECT_EQ(RawValue(Filled(L"", L"<RawValue>01<!--AA-->02</RawValue>")), L"01");
    EXPECT_EQ(RawValue(Filled(L"", L"<RawValue><b>01</b>02</RawValue>")), L"");
}

TEST_F(CNVTest, CommentsAmongTheChildrenAreSkipped) {
    EXPECT_EQ(RawValue(Filled(L"", L"<!--RawValue--><RawValue>01</RawValue><!-- x -->")), L"01");
}

TEST_F(CNVTest, OtherChildrenAndTextsAreIgnored) {
    const Ptr<_CNV> record = Filled(L"",
                                    L"text<SISD>1</SISD><Value>2</Value><Name>n</Name>"
                                    L"<Address>9</Address><IsNC>1</IsNC><?RawValue 01?>");
    EXPECT_EQ(TextOf(record, &_CNV::get_Name), L"");
    EXPECT_EQ(NumberOf(record, &_CNV::get_Address), 0);
    EXPECT_FALSE(IsNC(record));
}

TEST_F(CNVTest, NumbersAreLenientAndRoundedToEven) {
    EXPECT_EQ(Index(Filled(L"", L"<ConnectionIndex> 3.5 and more</ConnectionIndex>")), 4);
    EXPECT_EQ(Index(Filled(L"", L"<ConnectionIndex>2.5</ConnectionIndex>")), 2);
    EXPECT_EQ(Index(Filled(L"", L"<ConnectionIndex>&amp;HFF</ConnectionIndex>")), 255);
    EXPECT_EQ(Index(Filled(L"", L"<ConnectionIndex>none</ConnectionIndex>")), 0);
    EXPECT_EQ(Index(Filled(L"", L"<ConnectionIndex>-7</ConnectionIndex>")), -7);
}

TEST_F(CNVTest, FillingAgainKeepsWhatTheSecondElementDoesNotHave) {
    const Ptr<_CNV> record = Filled(L"IsNC='1'", L"<Length>2</Length>");
    Fill(record, L"<v><ConnectionIndex>3</ConnectionIndex></v>");
    EXPECT_TRUE(IsNC(record));
    EXPECT_EQ(RawValue(record), L"FFFF");
    EXPECT_EQ(Index(record), 3);
}

TEST_F(CNVTest, FieldsOfTheCallerArePutAndGot) {
    const Ptr<_CNV> record = com::Make<CNV>();
    EXPECT_EQ(record->put_Name(Bstr(L"nviSetpoint").Get()), S_OK);
    EXPECT_EQ(record->put_Address(-5), S_OK);
    EXPECT_EQ(record->put_ConnectionIndex(77), S_OK);
    EXPECT_EQ(TextOf(record, &_CNV::get_Name), L"nviSetpoint");
    EXPECT_EQ(NumberOf(record, &_CNV::get_Address), -5);
    EXPECT_EQ(Index(record), 77);
    EXPECT_EQ(record->put_Name(nullptr), S_OK);
    EXPECT_EQ(TextOf(record, &_CNV::get_Name), L"");
}

TEST_F(CNVTest, NoElementFillsNothingAndAForeignObjectIsRefused) {
    const Ptr<_CNV> record = Filled(L"", L"<RawValue>01</RawValue>");
    EXPECT_EQ(record->putref_XMLDomNode(nullptr), S_OK);
    EXPECT_EQ(record->putref_XMLDomNode(record.Get()), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(RawValue(record), L"01");
}

TEST_F(CNVTest, RecordDoesNotKeepItsElement) {
    const Ptr<IXMLDOMNode> element = Element(L"<v><RawValue>01</RawValue></v>");
    const ULONG before = (element->AddRef(), element->Release());
    const Ptr<_CNV> record = com::Make<CNV>();
    record->putref_XMLDomNode(element.Get());
    EXPECT_EQ((element->AddRef(), element->Release()), before);
}

TEST_F(CNVTest, NullTargetsAreRefused) {
    const Ptr<_CNV> record = com::Make<CNV>();
    EXPECT_EQ(record->get_RawValue(nullptr), E_POINTER);
    EXPECT_EQ(record->get_Length(nullptr), E_POINTER);
    EXPECT_EQ(record->get_ConnectionIndex(nullptr), E_POINTER);
    EXPECT_EQ(record->get_IsNC(nullptr), E_POINTER);
    EXPECT_EQ(record->get_Direction(nullptr), E_POINTER);
    EXPECT_EQ(record->get_Name(nullptr), E_POINTER);
    EXPECT_EQ(record->get_SNVTType(nullptr), E_POINTER);
    EXPECT_EQ(record->get_Address(nullptr), E_POINTER);
}

}  // namespace
}  // namespace quillon
