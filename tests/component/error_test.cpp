#include "com/error.h"

#include <new>
#include <stdexcept>

#include "com/gate.h"
#include "com/module.h"
#include "com/text.h"
#include "support/component_fixture.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Error;
using com::Ptr;

using ErrorTest = test::ComponentTest;
using GateTest = test::ComponentTest;
using QuietlyTest = test::ComponentTest;

struct Record {
    bool exists = false;
    std::wstring source;
    std::wstring description;
};

// Takes the thread's record.
Record TakeRecord() {
    Ptr<IErrorInfo> info;
    if (GetErrorInfo(0, info.Out()) != S_OK || !info) return {};
    Bstr source;
    Bstr description;
    info->GetSource(source.Out());
    info->GetDescription(description.Out());
    return {true, source.Text(), description.Text()};
}

void LeaveRecord(const wchar_t* text) {
    SetErrorInfo(0, com::MakeErrorRecord(L"elsewhere", text).Get());
}

template <class Thrown>
HRESULT ResultOf(Thrown thrown) {
    try {
        throw thrown;
    } catch (...) {
        return com::ResultOfCurrentException();
    }
}

TEST_F(ErrorTest, CheckPassesSuccessCodes) {
    EXPECT_NO_THROW(com::Check(S_OK));
    EXPECT_NO_THROW(com::Check(S_FALSE));
}

TEST_F(ErrorTest, RecordTravelsWithTheFailureAndComesOutAgain) {
    LeaveRecord(L"why it failed");
    EXPECT_EQ(com::Gate([] { com::Check(static_cast<HRESULT>(0x80040123)); }),
              static_cast<HRESULT>(0x80040123));
    const Record record = TakeRecord();
    EXPECT_FALSE(record.exists) << "the gate forgets what was there before";

    EXPECT_EQ(com::Gate([] {
                  LeaveRecord(L"why it failed");
                  com::Check(static_cast<HRESULT>(0x80040123));
              }),
              static_cast<HRESULT>(0x80040123));
    const Record own = TakeRecord();
    EXPECT_EQ(own.source, L"elsewhere");
    EXPECT_EQ(own.description, L"why it failed");
}

TEST_F(ErrorTest, CheckTakesTheRecordFromTheThread) {
    LeaveRecord(L"why it failed");
    try {
        com::Check(E_ACCESSDENIED);
        FAIL() << "a failure must throw";
    } catch (const Error& error) {
        EXPECT_EQ(error.Result(), E_ACCESSDENIED);
        EXPECT_TRUE(error.Record());
        EXPECT_FALSE(TakeRecord().exists);
    }
}

TEST_F(ErrorTest, FailureWithoutARecordHasNone) {
    EXPECT_EQ(ResultOf(Error(E_ACCESSDENIED)), E_ACCESSDENIED);
    EXPECT_FALSE(TakeRecord().exists);
}

TEST_F(ErrorTest, MemoryShortageAndImpossibleLengthsAreOutOfMemory) {
    LeaveRecord(L"stale");
    EXPECT_EQ(ResultOf(std::bad_alloc()), E_OUTOFMEMORY);
    EXPECT_FALSE(TakeRecord().exists);
    EXPECT_EQ(ResultOf(std::length_error("long")), E_OUTOFMEMORY);
    EXPECT_FALSE(TakeRecord().exists);
}

TEST_F(ErrorTest, ShortageIsCountedWhereItIsOurOwn) {
    const unsigned before = com::Shortages();
    com::Quietly([] { throw Error(E_OUTOFMEMORY); });
    EXPECT_EQ(com::Shortages(), before) << "the host's own answer";
    com::Quietly([] { throw std::bad_alloc(); });
    EXPECT_EQ(com::Shortages(), before + 1);
    ResultOf(std::length_error("long"));
    EXPECT_EQ(com::Shortages(), before + 2) << "handed on";
}

TEST_F(ErrorTest, NoShortageHandsBackAllElse) {
    EXPECT_EQ(com::NoShortage(S_FALSE), S_FALSE);
    EXPECT_EQ(com::NoShortage(E_ACCESSDENIED), E_ACCESSDENIED);
    EXPECT_THROW(com::NoShortage(E_OUTOFMEMORY), std::bad_alloc);
}

TEST_F(ErrorTest, OtherStandardExceptionsFailWithTheirTextAsTheRecord) {
    EXPECT_EQ(ResultOf(std::runtime_error("no number")), E_FAIL);
    const Record record = TakeRecord();
    EXPECT_EQ(record.description, L"no number");
    EXPECT_EQ(record.source, com::ModuleName());
}

TEST_F(ErrorTest, AnythingElseIsUnexpected) {
    LeaveRecord(L"stale");
    EXPECT_EQ(ResultOf(42), E_UNEXPECTED);
    EXPECT_FALSE(TakeRecord().exists);
}

TEST_F(ErrorTest, RecordHoldsSourceAndDescription) {
    SetErrorInfo(0, com::MakeErrorRecord(L"source", L"excerpt\rreason").Get());
    const Record record = TakeRecord();
    EXPECT_EQ(record.source, L"source");
    EXPECT_EQ(record.description, L"excerpt\rreason");
}

TEST_F(GateTest, ResultIsClearedBeforeTheMemberRuns) {
    BSTR text = reinterpret_cast<BSTR>(1);
    EXPECT_EQ(com::Gate(&text,
                        [&]() -> std::wstring {
                            EXPECT_EQ(text, nullptr);
                            throw Error(E_FAIL);
                        }),
              E_FAIL);
    EXPECT_EQ(text, nullptr);
    long number = 5;
    EXPECT_EQ(com::Gate(&number, []() -> std::int32_t { throw Error(E_FAIL); }), E_FAIL);
    EXPECT_EQ(number, 0);
}

TEST_F(GateTest, NullResultPointerIsRefusedWithoutRunningTheMember) {
    bool ran = false;
    const auto member = [&]() -> std::wstring {
        ran = true;
        return L"";
    };
    EXPECT_EQ(com::Gate(static_cast<BSTR*>(nullptr), member), E_POINTER);
    EXPECT_FALSE(ran);
}

TEST_F(GateTest, EveryKindOfResultArrives) {
    BSTR text = nullptr;
    EXPECT_EQ(com::Gate(&text, [] { return std::wstring(L"x"); }), S_OK);
    EXPECT_EQ(Bstr::Adopt(text).View(), L"x");
    VARIANT_BOOL truth = VARIANT_FALSE;
    EXPECT_EQ(com::Gate(&truth, [] { return true; }), S_OK);
    EXPECT_EQ(truth, VARIANT_TRUE);
    unsigned char byte = 0;
    EXPECT_EQ(com::Gate(&byte, [] { return std::uint8_t{200}; }), S_OK);
    EXPECT_EQ(byte, 200);
    short word = 0;
    EXPECT_EQ(com::Gate(&word, [] { return std::int16_t{-2}; }), S_OK);
    EXPECT_EQ(word, -2);
    long number = 0;
    EXPECT_EQ(com::Gate(&number, [] { return std::int32_t{-70000}; }), S_OK);
    EXPECT_EQ(number, -70000);
    VARIANT value;
    EXPECT_EQ(com::Gate(&value, [] { return com::Variant(9); }), S_OK);
    EXPECT_EQ(value.lVal, 9);
}

TEST_F(GateTest, SuccessLeavesNoStaleRecord) {
    LeaveRecord(L"stale");
    EXPECT_EQ(com::Gate([] {}), S_OK);
    EXPECT_FALSE(TakeRecord().exists);
}

TEST_F(QuietlyTest, FailureYieldsAnEmptyResultAndNoRecord) {
    LeaveRecord(L"stale");
    EXPECT_EQ(com::Quietly([]() -> std::wstring { throw Error(E_FAIL); }), L"");
    EXPECT_FALSE(TakeRecord().exists);
    EXPECT_EQ(com::Quietly([]() -> int { throw 3; }), 0);
    EXPECT_EQ(com::Quietly([] { return 5; }), 5);
    com::Quietly([] { throw std::bad_alloc(); });
}

}  // namespace
}  // namespace quillon
