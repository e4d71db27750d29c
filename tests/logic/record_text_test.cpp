#include "model/record_text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quillon {
namespace {

RecordText NetworkVariable(bool isNC, std::int32_t length, const wchar_t* rawValue = L"") {
    RecordText record;
    record.isNC = isNC;
    record.length = length;
    record.rawValue = rawValue;
    CompleteNetworkVariable(record);
    return record;
}

RecordText ConfigurationProperty(std::int32_t length, const wchar_t* rawValue = L"") {
    RecordText record;
    record.length = length;
    record.rawValue = rawValue;
    CompleteConfigurationProperty(record);
    return record;
}

bool IsNCOf(const wchar_t* value) {
    RecordText record;
    TakeAttribute(record, L"IsNC", value);
    return record.isNC;
}

std::int32_t DirectionOf(const wchar_t* text) {
    RecordText record;
    record.direction = -1;
    TakeNetworkVariableChild(record, L"Direction", text);
    return record.direction;
}

TEST(RecordText, IsEmptyWhenCreated) {
    const RecordText record;
    EXPECT_EQ(record.name + record.snvtType + record.rawValue, L"");
    EXPECT_EQ(record.connectionIndex, 0);
    EXPECT_EQ(record.length, 0);
    EXPECT_EQ(record.direction, 0);
    EXPECT_EQ(record.address, 0);
    EXPECT_FALSE(record.isNC);
}

TEST(TakeAttribute, IsNCIsTrueExactlyWhenTheRoundedValueIsOne) {
    for (const wchar_t* value : {L"1", L"1.0", L" 01", L"1.4", L"0.6", L"1x", L"&H1", L"+1"}) {
        EXPECT_TRUE(IsNCOf(value)) << value;
    }
    for (const wchar_t* value : {L"0", L"0.5", L"1.5", L"2", L"-1", L"true", L""}) {
        EXPECT_FALSE(IsNCOf(value)) << value;
    }
}

TEST(TakeAttribute, AnyLetterCaseOfTheNameCounts) {
    RecordText record;
    TakeAttribute(record, L"isnc", L"1");
    EXPECT_TRUE(record.isNC);
    TakeAttribute(record, L"ISNC", L"0");
    EXPECT_FALSE(record.isNC);
}

TEST(TakeAttribute, OtherAttributesAreIgnored) {
    RecordText record;
    TakeAttribute(record, L"IsN", L"1");
    TakeAttribute(record, L"Length", L"1");
    EXPECT_FALSE(record.isNC);
    EXPECT_EQ(record.length, 0);
}

TEST(TakeAttribute, NumberOutOfRangeLeavesTheField) {
    RecordText record;
    TakeAttribute(record, L"IsNC", L"1");
    TakeAttribute(record, L"IsNC", L"99999999999");
    EXPECT_TRUE(record.isNC);
    EXPECT_FALSE(IsNCOf(L"99999999999"));
}

TEST(TakeNetworkVariableChild, FillsItsFields) {
    RecordText record;
    TakeNetworkVariableChild(record, L"Direction", L"Output");
    TakeNetworkVariableChild(record, L"SNVTType", L" SNVT_temp_p ");
    TakeNetworkVariableChild(record, L"Length", L"2");
    TakeNetworkVariableChild(record, L"ConnectionIndex", L"5");
    TakeNetworkVariableChild(record, L"RawValue", L"0a28");
    EXPECT_EQ(record.direction, kDirectionOutput);
    EXPECT_EQ(record.snvtType, L" SNVT_temp_p ");
    EXPECT_EQ(record.length, 2);
    EXPECT_EQ(record.connectionIndex, 5);
    EXPECT_EQ(record.rawValue, L"0a28");
}

TEST(TakeNetworkVariableChild, AnyLetterCaseOfTheNameCounts) {
    RecordText record;
    TakeNetworkVariableChild(record, L"rawvalue", L"01");
    EXPECT_EQ(record.rawValue, L"01");
    TakeNetworkVariableChild(record, L"RAWVALUE", L"02");
    EXPECT_EQ(record.rawValue, L"02");
    TakeNetworkVariableChild(record, L"connectionINDEX", L"3");
    EXPECT_EQ(record.connectionIndex, 3);
}

TEST(TakeNetworkVariableChild, LaterChildOfTheSameNameOverwrites) {
    RecordText record;
    TakeNetworkVariableChild(record, L"RawValue", L"01");
    TakeNetworkVariableChild(record, L"RawValue", L"");
    EXPECT_EQ(record.rawValue, L"");
}

TEST(TakeNetworkVariableChild, TextsThatBeginWithInAreInputs) {
    for (const wchar_t* text : {L"INPUT", L"Input", L"in", L"iN", L"inverse"}) {
        EXPECT_EQ(DirectionOf(text), kDirectionInput) << text;
    }
}

TEST(TakeNetworkVariableChild, EveryOtherDirectionIsAnOutput) {
    for (const wchar_t* text : {L"Output", L"", L"X", L"i", L" in", L"0"}) {
        EXPECT_EQ(DirectionOf(text), kDirectionOutput) << text;
    }
}

TEST(TakeNetworkVariableChild, NumbersAreLenientAndRoundedToEven) {
    RecordText record;
    TakeNetworkVariableChild(record, L"Length", L"2.5 bytes");
    TakeNetworkVariableChild(record, L"ConnectionIndex", L"3.5");
    EXPECT_EQ(record.length, 2);
    EXPECT_EQ(record.connectionIndex, 4);
    TakeNetworkVariableChild(record, L"ConnectionIndex", L"&HFF");
    EXPECT_EQ(record.connectionIndex, 255);
    TakeNetworkVariableChild(record, L"ConnectionIndex", L"none");
    EXPECT_EQ(record.connectionIndex, 0);
}

TEST(TakeNetworkVariableChild, NumberOutOfRangeLeavesTheField) {
    RecordText record;
    record.length = 7;
    record.connectionIndex = 8;
    TakeNetworkVariableChild(record, L"Length", L"2147483648");
    TakeNetworkVariableChild(record, L"ConnectionIndex", L"&H123456789");
    EXPECT_EQ(record.length, 7);
    EXPECT_EQ(record.connectionIndex, 8);
}

TEST(TakeNetworkVariableChild, OtherChildrenAreIgnored) {
    RecordText record;
    for (const wchar_t* name : {L"SISD", L"Value", L"Name", L"Address", L"IsNC", L""}) {
        TakeNetworkVariableChild(record, name, L"1");
    }
    EXPECT_EQ(record.name + record.snvtType + record.rawValue, L"");
    EXPECT_EQ(record.address, 0);
    EXPECT_FALSE(record.isNC);
}

TEST(TakeConfigurationPropertyChild, FillsLengthRawValueAndConnectionIndexOnly) {
    RecordText record;
    TakeConfigurationPropertyChild(record, L"length", L"2");
    TakeConfigurationPropertyChild(record, L"rawVALUE", L"0A28");
    TakeConfigurationPropertyChild(record, L"ConnectionIndex", L"12");
    TakeConfigurationPropertyChild(record, L"SNVTType", L"SNVT_temp");
    TakeConfigurationPropertyChild(record, L"Direction", L"Output");
    EXPECT_EQ(record.length, 2);
    EXPECT_EQ(record.rawValue, L"0A28");
    EXPECT_EQ(record.connectionIndex, 12);
    EXPECT_EQ(record.snvtType, L"");
    EXPECT_EQ(record.direction, kDirectionInput);
}

TEST(CompleteNetworkVariable, ConfigurationVariableWithoutRawValueIsAllOnes) {
    EXPECT_EQ(NetworkVariable(true, 3).rawValue, L"FFFFFF");
    EXPECT_EQ(NetworkVariable(true, 100'000).rawValue, std::wstring(200'000, L'F'));
}

TEST(CompleteNetworkVariable, InputsAndOutputsKeepAnEmptyRawValue) {
    EXPECT_EQ(NetworkVariable(false, 3).rawValue, L"");
}

TEST(CompleteNetworkVariable, RawValueThatIsThereStays) {
    EXPECT_EQ(NetworkVariable(true, 3, L"01").rawValue, L"01");
}

TEST(CompleteNetworkVariable, LengthOfZeroOrLessLeavesItEmpty) {
    EXPECT_EQ(NetworkVariable(true, 0).rawValue, L"");
    EXPECT_EQ(NetworkVariable(true, -1).rawValue, L"");
    EXPECT_EQ(NetworkVariable(true, std::numeric_limits<std::int32_t>::min()).rawValue, L"");
}

TEST(CompleteConfigurationProperty, WithoutRawValueIsAllOnes) {
    EXPECT_EQ(ConfigurationProperty(2).rawValue, L"FFFF");
    EXPECT_EQ(ConfigurationProperty(1).rawValue, L"FF");
    EXPECT_EQ(ConfigurationProperty(2, L"0203").rawValue, L"0203");
    EXPECT_EQ(ConfigurationProperty(0).rawValue, L"");
    EXPECT_EQ(ConfigurationProperty(-5).rawValue, L"");
}

TEST(CompleteConfigurationProperty, LengthThatNoDeviceHasLeavesItEmpty) {
    EXPECT_EQ(ConfigurationProperty(kMostDefaultBytes).rawValue.size(), 2u << 20);
    EXPECT_EQ(ConfigurationProperty(kMostDefaultBytes + 1).rawValue, L"");
    EXPECT_EQ(ConfigurationProperty(std::numeric_limits<std::int32_t>::max()).rawValue, L"");
    EXPECT_EQ(NetworkVariable(true, std::numeric_limits<std::int32_t>::max()).rawValue, L"");
}

}  // namespace
}  // namespace quillon
