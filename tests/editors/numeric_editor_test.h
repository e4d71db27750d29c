// The fixture of the numeric editor's tests.
#pragma once

#include <string_view>

#include "editors/editor_test.h"

namespace quillon::test {

class NumericEditor : public EditorTest {
protected:
    static FakePoint& Limit(FakePoint& point, const wchar_t* minimum, const wchar_t* maximum) {
        return point.Set(L"MinOverride", minimum).Set(L"MaxOverride", maximum);
    }
    // What typing and then Enter writes into a point with the value 1.
    Lines Typed(std::wstring_view keys, const wchar_t* type = L"SignedNumeric") {
        FakePoint point(type, L"1");
        Edit(point, [&](const Editor& editor) {
            editor.Type(keys);
            editor.Key(VK_RETURN);
            EXPECT_FALSE(editor.IsUp());
        });
        return point.Written();
    }
};

}  // namespace quillon::test
