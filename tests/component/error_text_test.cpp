#include "com/error_text.h"

#include <stdexcept>

#include "support/component_fixture.h"

namespace quillon::test {
namespace {

using ErrorText = ComponentTest;

template <class Exception>
std::wstring Described(const Exception& exception) {
    try {
        throw exception;
    } catch (...) {
        return com::DescribeCurrentException();
    }
}

TEST_F(ErrorText, OfAnErrorIsThatOfItsRecord) {
    EXPECT_EQ(
        Described(com::Error(E_FAIL, com::MakeErrorRecord(L"host", L"The device is asleep."))),
        L"The device is asleep.");
}

TEST_F(ErrorText, WithoutARecordOrDescriptionIsTheSystems) {
    const std::wstring system = com::SystemText(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_FALSE(system.empty());
    EXPECT_GT(system.back(), L' ');
    EXPECT_EQ(Described(com::Error(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND))), system);
    EXPECT_EQ(Described(com::Error(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND),
                                   com::MakeErrorRecord(L"host", L""))),
              system);
}

TEST_F(ErrorText, OfAResultThatTheSystemDoesNotKnowIsItsNumber) {
    EXPECT_EQ(com::SystemText(static_cast<HRESULT>(0x8004FEDC)), L"");
    EXPECT_EQ(Described(com::Error(static_cast<HRESULT>(0x8004FEDC))), L"Error 0x8004FEDC");
}

TEST_F(ErrorText, OfAnotherExceptionIsItsOwn) {
    EXPECT_EQ(Described(std::runtime_error("The label is too long.")), L"The label is too long.");
    EXPECT_FALSE(Described(std::runtime_error("")).empty());
    EXPECT_FALSE(Described(17).empty());
}

TEST_F(ErrorText, OfAShortageOfMemoryIsTheSystems) {
    EXPECT_EQ(Described(std::bad_alloc()), com::SystemText(E_OUTOFMEMORY));
}

TEST_F(ErrorText, SystemErrorIsThrownAsTheResultThatBelongsToIt) {
    try {
        com::ThrowSystemError(ERROR_ACCESS_DENIED);
    } catch (const com::Error& error) {
        EXPECT_EQ(error.Result(), E_ACCESSDENIED);
        return;
    }
    ADD_FAILURE();
}

}  // namespace
}  // namespace quillon::test
