// Reading the texts that members of records and profiles hand out.
#pragma once

#include <gtest/gtest.h>

#include "com/platform.h"
#include "com/text.h"

namespace quillon::test {

// What a property of text reads; its failure fails the running test.
template <class I, class Owner>
std::wstring TextOf(const I& object, HRESULT (STDMETHODCALLTYPE Owner::*get)(BSTR*)) {
    com::Bstr text;
    EXPECT_EQ(((*object).*get)(text.Out()), S_OK);
    return text.Text();
}

template <class I, class Owner>
long NumberOf(const I& object, HRESULT (STDMETHODCALLTYPE Owner::*get)(long*)) {
    long number = 0x7EADBEEF;
    EXPECT_EQ(((*object).*get)(&number), S_OK);
    return number;
}

}  // namespace quillon::test
