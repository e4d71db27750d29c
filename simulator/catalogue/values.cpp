#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <stdexcept>

#include "catalogue.h"
#include "decimal.h"

namespace quorvex {
namespace {

constexpr std::size_t kLongestText = 30;
constexpr std::uint32_t kInvalidFloat = 0x7FFFFFFF;
constexpr std::wstring_view kHexDigits = L"0123456789ABCDEF";

using ConstBytes = std::span<const std::uint8_t>;

void RequireLength(std::size_t length, std::size_t expected) {
    if (length != expected) throw std::invalid_argument("number of bytes does not fit the type");
}

Scale ScaleOf(const Type& type) {
    return {type.multiplier, type.bCoef, type.offset};
}

RawRange RangeOf(const Type& type) {
    return {type.rawMinimum, type.rawMaximum, type.rawInvalid};
}

std::uint32_t BigEndian(ConstBytes bytes) {
    std::uint32_t raw = 0;
    for (const std::uint8_t byte : bytes) raw = (raw << 8) | byte;
    return raw;
}

Bytes BigEndianBytes(std::uint64_t raw, std::size_t length) {
    Bytes bytes(length);
    for (std::size_t i = length; i-- > 0; raw >>= 8) bytes[i] = static_cast<std::uint8_t>(raw);
    return bytes;
}

bool IsSigned(const Type& type) {
    return type.kind == Kind::Signed || (type.kind == Kind::Enum && type.rawMinimum < 0);
}

std::int64_t RawNumber(const Type& type, ConstBytes bytes) {
    std::int64_t raw = BigEndian(bytes);
    const std::int64_t range = std::int64_t{1} << (8 * bytes.size());
    if (IsSigned(type) && raw >= range / 2) raw -= range;
    return raw;
}

// Fixed notation where people would write it so, scientific beyond.
std::wstring FloatText(ConstBytes bytes) {
    const auto value = std::bit_cast<float>(BigEndian(bytes));
    if (std::isnan(value)) return L"NaN";
    const float size = std::fabs(value);
    const bool fixed = size == 0 || (size >= 1e-5F && size < 1e9F);
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, value == 0 ? 0.0F : value,
                      fixed ? std::chars_format::fixed : std::chars_format::scientific);
    return {text, end.ptr};
}

std::optional<float> FloatFromText(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t c : text) {
        const bool known = (c >= L'0' && c <= L'9') ||
                           std::wstring_view(L".,-+eE").find(c) != std::wstring_view::npos;
        if (!known) return std::nullopt;
        narrow += c == L',' ? '.' : static_cast<char>(c);
    }
    float value = 0;
    const char* const end = narrow.data() + narrow.size();
    const auto read = std::from_chars(narrow.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

std::optional<Bytes> FloatBytesFromText(const Type& type, std::wstring_view text) {
    if (text == type.invalidValue) return BigEndianBytes(kInvalidFloat, type.length);
    const auto value = FloatFromText(text);
    if (!value) return std::nullopt;
    if (!type.minimum.empty() && *value < FloatFromText(type.minimum)) return std::nullopt;
    if (!type.maximum.empty() && *value > FloatFromText(type.maximum)) return std::nullopt;
    return BigEndianBytes(std::bit_cast<std::uint32_t>(*value), type.length);
}

std::wstring TextUpToNul(ConstBytes bytes) {
    return {bytes.begin(), std::find(bytes.begin(), bytes.end(), std::uint8_t{0})};
}

std::optional<Bytes> TextBytes(const Type& type, std::wstring_view text) {
    if (text.size() > kLongestText) return std::nullopt;
    Bytes bytes(type.length);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<std::uint32_t>(text[i]);
        if (code == 0 || code > 0xFF) return std::nullopt;
        bytes[i] = static_cast<std::uint8_t>(code);
    }
    return bytes;
}

// The label of a code in "code,label;code,label;"; the code itself when it has none.
std::wstring EnumLabel(std::wstring_view list, const std::wstring& code) {
    while (!list.empty()) {
        const auto entry = list.substr(0, list.find(L';'));
        list.remove_prefix(std::min(entry.size() + 1, list.size()));
        const auto comma = entry.find(L',');
        if (entry.substr(0, comma) == code) return std::wstring(entry.substr(comma + 1));
    }
    return code;
}

template <class Show>
std::wstring JoinFields(const Type& type, ConstBytes bytes, Show show) {
    std::wstring text;
    for (const Field& field : type.fields) {
        if (!text.empty()) text += L' ';
        text += show(field.type, FieldBytes(field, bytes));
    }
    return text;
}

std::wstring ShownWithoutUnit(const Type& type, ConstBytes bytes) {
    if (type.kind == Kind::Struct) return JoinFields(type, bytes, ShownWithoutUnit);
    auto text = ValueText(type, bytes);
    return type.kind == Kind::Enum ? EnumLabel(type.enumDesc, text) : text;
}

// Cuts the next piece off a text of pieces separated by blanks; empty when there is none.
std::wstring_view NextPiece(std::wstring_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(L' '), text.size()));
    const auto piece = text.substr(0, text.find(L' '));
    text.remove_prefix(piece.size());
    return piece;
}

std::optional<Bytes> StructureBytes(const Type& type, std::wstring_view text) {
    Bytes bytes(type.length);
    for (const Field& field : type.fields) {
        const auto piece = NextPiece(text);
        if (piece.empty()) return std::nullopt;
        const auto value = BytesFromValueText(field.type, piece);
        if (!value) return std::nullopt;
        PutFieldBytes(field, bytes, *value);
    }
    if (!NextPiece(text).empty()) return std::nullopt;
    return bytes;
}

int HexDigit(wchar_t c) {
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    const auto found = kHexDigits.find(c);
    return found == std::wstring_view::npos ? -1 : static_cast<int>(found);
}

unsigned FieldShift(const Field& field) {
    return 8 - field.bitOffset - field.bits;
}

std::uint8_t FieldMask(const Field& field) {
    return static_cast<std::uint8_t>(((1U << field.bits) - 1U) << FieldShift(field));
}

}  // namespace

std::wstring ValueText(const Type& type, ConstBytes bytes) {
    RequireLength(bytes.size(), type.length);
    switch (type.kind) {
        case Kind::Signed:
        case Kind::Unsigned:
        case Kind::Enum:
            return ScaledText(RawNumber(type, bytes), ScaleOf(type));
        case Kind::Float:
            return FloatText(bytes);
        case Kind::Text:
            return TextUpToNul(bytes);
        case Kind::User:
            return RawText(bytes);
        case Kind::Struct:
            return JoinFields(type, bytes, ValueText);
    }
    return {};
}

std::wstring FormattedText(const Type& type, ConstBytes bytes) {
    RequireLength(bytes.size(), type.length);
    auto text = ShownWithoutUnit(type, bytes);
    if (!type.units.empty()) text.append(L" ").append(type.units);
    return text;
}

std::optional<Bytes> BytesFromValueText(const Type& type, std::wstring_view text) {
    switch (type.kind) {
        case Kind::Signed:
        case Kind::Unsigned:
        case Kind::Enum: {
            const bool fraction = text.find_first_of(L".,") != std::wstring_view::npos;
            if (fraction && type.kind == Kind::Enum) return std::nullopt;
            const auto raw = RawFromText(text, ScaleOf(type), RangeOf(type));
            if (!raw) return std::nullopt;
            return BigEndianBytes(static_cast<std::uint64_t>(*raw), type.length);
        }
        case Kind::Float:
            return FloatBytesFromText(type, text);
        case Kind::Text:
            return TextBytes(type, text);
        case Kind::User: {
            auto bytes = BytesFromRawText(text);
            if (bytes && bytes->size() != type.length) return std::nullopt;
            return bytes;
        }
        case Kind::Struct:
            return StructureBytes(type, text);
    }
    return std::nullopt;
}

Bytes FieldBytes(const Field& field, ConstBytes structure) {
    if (structure.size() < field.offset + field.type.length) {
        throw std::invalid_argument("structure is shorter than its field");
    }
    const auto part = structure.subspan(field.offset, field.type.length);
    if (field.bits == 0) return {part.begin(), part.end()};
    return {static_cast<std::uint8_t>((part[0] & FieldMask(field)) >> FieldShift(field))};
}

void PutFieldBytes(const Field& field, std::span<std::uint8_t> structure, ConstBytes bytes) {
    RequireLength(bytes.size(), field.type.length);
    if (structure.size() < field.offset + field.type.length) {
        throw std::invalid_argument("structure is shorter than its field");
    }
    if (field.bits == 0) {
        std::copy(bytes.begin(), bytes.end(),
                  structure.begin() + static_cast<std::ptrdiff_t>(field.offset));
        return;
    }
    auto& byte = structure[field.offset];
    const auto mask = FieldMask(field);
    byte = static_cast<std::uint8_t>((byte & ~mask) | ((bytes[0] << FieldShift(field)) & mask));
}

std::wstring RawText(ConstBytes bytes) {
    std::wstring text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        text += kHexDigits[byte >> 4];
        text += kHexDigits[byte & 0xF];
    }
    return text;
}

std::optional<Bytes> BytesFromRawText(std::wstring_view text) {
    if (text.size() % 2 != 0) return std::nullopt;
    Bytes bytes(text.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const int high = HexDigit(text[2 * i]);
        const int low = HexDigit(text[2 * i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes[i] = static_cast<std::uint8_t>(high * 16 + low);
    }
    return bytes;
}

}  // namespace quorvex
