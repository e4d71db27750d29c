#include "point_value.h"

#include <optional>
#include <vector>

#include "refusal.h"

namespace quorvex {

namespace {

std::vector<std::wstring_view> Words(std::wstring_view text) {
    std::vector<std::wstring_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L' '), text.size());
        if (end > 0) words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

// The code in front of a label of "0,Auto;1,Off;".
std::optional<std::wstring> CodeOfLabel(std::wstring_view list, std::wstring_view label) {
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(L';'), list.size());
        const std::wstring_view entry = list.substr(0, end);
        const std::size_t comma = entry.find(L',');
        if (comma != std::wstring_view::npos && entry.substr(comma + 1) == label)
            return std::wstring(entry.substr(0, comma));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return std::nullopt;
}

// What is shown to people, turned back into edit text: labels into codes, units off.
std::wstring EditTextFromShown(const Type& type, std::wstring_view shown) {
    if (type.kind == Kind::Enum)
        if (auto code = CodeOfLabel(type.enumDesc, shown)) return *code;
    if (type.kind == Kind::Struct) {
        const auto words = Words(shown);
        if (words.size() != type.fields.size()) return std::wstring(shown);
        std::wstring text;
        for (std::size_t i = 0; i < words.size(); ++i) {
            if (i > 0) text += L' ';
            text += EditTextFromShown(type.fields[i].type, words[i]);
        }
        return text;
    }
    const std::wstring unit = L" " + std::wstring(type.units);
    if (!type.units.empty() && shown.ends_with(unit)) shown.remove_suffix(unit.size());
    return std::wstring(shown);
}

}  // namespace

const DataPoint& PointValue::Point() const {
    return m_view.controller->Points(m_path.kind).At(m_path.position);
}

const Type& PointValue::ValueType() const {
    return m_path.fields.empty() ? *Point().type : m_path.fields.back()->type;
}

std::wstring PointValue::Place() const {
    std::wstring place = Point().name;
    for (const Field* field : m_path.fields) place += L"." + std::wstring(field->name);
    return place;
}

std::wstring PointValue::Read(ValueForm form) const {
    if (!m_view.controller->Answers()) return L"?";
    Bytes bytes = Point().raw;
    for (const Field* field : m_path.fields) bytes = FieldBytes(*field, bytes);
    switch (form) {
        case ValueForm::kRaw:
            return RawText(bytes);
        case ValueForm::kEdit:
            return ValueText(ValueType(), bytes);
        default:
            return FormattedText(ValueType(), bytes);
    }
}

Bytes PointValue::Parse(ValueForm form, std::wstring_view text) const {
    const Type& type = ValueType();
    if (form == ValueForm::kRaw) {
        auto bytes = BytesFromRawText(text);
        if (!bytes || bytes->size() != type.length)
            RefuseMisuse(L"Raw value \"" + std::wstring(text) + L"\" put to " + Place() +
                         L", which has " + std::to_wstring(type.length) + L" bytes");
        return *bytes;
    }
    auto bytes = form == ValueForm::kEdit ? BytesFromValueText(type, text)
                                          : BytesFromValueText(type, EditTextFromShown(type, text));
    if (!bytes) Refuse(E_INVALIDARG, L"\"" + std::wstring(text) + L"\" is no value for " + Place());
    return *bytes;
}

void PointValue::Write(ValueForm form, std::wstring_view text) const {
    RoomController& controller = *m_view.controller;
    if (Point().output) RefuseMisuse(L"Value put to the output " + Place());
    Bytes bytes = Parse(form, text);
    if (!controller.Answers())
        Refuse(kNoAnswer, L"Device " + controller.neuron + L" does not answer");

    // From the innermost field outwards, each set into the structure around it.
    std::vector<Bytes> around{Point().raw};
    for (const Field* field : m_path.fields) around.push_back(FieldBytes(*field, around.back()));
    for (std::size_t depth = m_path.fields.size(); depth > 0; --depth) {
        PutFieldBytes(*m_path.fields[depth - 1], around[depth - 1], bytes);
        bytes = around[depth - 1];
    }
    controller.WritePoint(m_path.kind, m_path.position, bytes);
}

}  // namespace quorvex
