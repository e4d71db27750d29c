#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "decimal.h"
#include "tables.h"

namespace quorvex {

namespace tables {

Type MakeNumber(std::wstring_view name, int index, const Number& number) {
    const Scale scale{number.multiplier, number.exponent, number.offset};
    Type type;
    type.name = name;
    type.index = index;
    type.kind = number.isSigned ? Kind::Signed : Kind::Unsigned;
    type.length = number.length;
    type.units = number.units;
    type.bCoef = number.exponent;
    type.multiplier = number.multiplier;
    type.offset = number.offset;
    type.rawMinimum = number.minimum;
    type.rawMaximum = number.maximum;
    type.rawInvalid = number.invalid;
    type.minimum = ScaledText(number.minimum, scale);
    type.maximum = ScaledText(number.maximum, scale);
    if (number.invalid) type.invalidValue = ScaledText(*number.invalid, scale);
    return type;
}

Type MakeEnum(std::wstring_view name, int index, std::wstring_view members) {
    constexpr Number kSignedCode{.length = 1, .isSigned = true, .minimum = -128, .maximum = 127};
    const auto lists = [&](std::wstring_view code) {
        return members.starts_with(code) ||
               members.find(L';' + std::wstring(code)) != std::wstring_view::npos;
    };
    const bool isSigned = !lists(L"255,");
    Type type = MakeNumber(name, index, isSigned ? kSignedCode : kByte);
    type.kind = Kind::Enum;
    type.enumDesc = members;
    if (!isSigned || lists(L"-1,")) {
        type.rawInvalid = isSigned ? -1 : 255;
        type.invalidValue = isSigned ? L"-1" : L"255";
    }
    return type;
}

}  // namespace tables

namespace {

constexpr std::size_t kLongestVariable = 31;

Type MakeUserData(std::wstring_view name, std::size_t length) {
    Type type;
    type.name = name;
    type.kind = Kind::User;
    type.length = length;
    return type;
}

std::vector<Type> MakeCatalogue() {
    std::vector<Type> types;
    tables::AppendScalars(types);
    tables::AppendEnumerations(types);
    tables::AppendStructures(types);
    std::sort(types.begin(), types.end(),
              [](const Type& one, const Type& other) { return one.index < other.index; });
    types.push_back(MakeUserData(L"UNVT_fan_curve", 8));
    types.push_back(MakeUserData(L"UNVT_room_data", 16));
    // Bytes of any length that a variable can have, for types that nothing is known of.
    static const auto s_names = [] {
        std::array<std::wstring, kLongestVariable> names;
        for (std::size_t i = 0; i < names.size(); ++i)
            names[i] = L"UNVT_bytes_" + std::to_wstring(i + 1);
        return names;
    }();
    for (std::size_t i = 0; i < s_names.size(); ++i)
        types.push_back(MakeUserData(s_names[i], i + 1));
    return types;
}

}  // namespace

std::wstring_view Type::GenType() const noexcept {
    switch (kind) {
        case Kind::Signed:
            return L"SignedNumeric";
        case Kind::Unsigned:
            return L"UnsignedNumeric";
        case Kind::Float:
            return L"Float";
        case Kind::Enum:
            return L"Enum";
        case Kind::Text:
            return L"Textual";
        case Kind::User:
            return L"User";
        case Kind::Struct:
            return L"Struct";
    }
    return {};
}

std::span<const Type> AllTypes() {
    static const std::vector<Type> types = MakeCatalogue();
    return types;
}

const Type* FindType(std::wstring_view name) {
    const auto types = AllTypes();
    const auto found = std::find_if(types.begin(), types.end(),
                                    [&](const Type& type) { return type.name == name; });
    return found == types.end() ? nullptr : &*found;
}

}  // namespace quorvex
