#include "json_place.h"

#include <algorithm>
#include <set>
#include <vector>

#include "refusal.h"
#include "text.h"

namespace quorvex {

void JsonPlace::Bad(std::string_view problem) const {
    const std::string place = m_path.empty() ? "document" : m_path;
    Refuse(kBadNetworkFile, WideFromUtf8(place + ": " + std::string(problem)));
}

void JsonPlace::RequireKeys(std::initializer_list<std::string_view> allowed) const {
    if (!m_value->is_object()) Bad("must be an object");
    for (const auto& [key, value] : m_value->items())
        if (std::find(allowed.begin(), allowed.end(), key) == allowed.end())
            Bad("unknown key \"" + key + "\"");
}

JsonPlace JsonPlace::At(const char* key) const {
    if (!m_value->is_object()) Bad("must be an object");
    const auto found = m_value->find(key);
    if (found == m_value->end()) Bad(std::string("key \"") + key + "\" is missing");
    return JsonPlace(*found, m_path.empty() ? key : m_path + "." + key);
}

void JsonPlace::ForEach(const char* key, const std::function<void(const JsonPlace&)>& visit) const {
    if (!Has(key)) return;
    const JsonPlace list = At(key);
    if (!list.m_value->is_array()) list.Bad("must be an array");
    std::size_t number = 0;
    for (const Json& element : *list.m_value)
        visit(JsonPlace(element, list.m_path + "[" + std::to_string(number++) + "]"));
}

std::wstring JsonPlace::Text() const {
    if (!m_value->is_string()) Bad("must be a text");
    return WideFromUtf8(m_value->get_ref<const std::string&>());
}

long JsonPlace::Number(long least, long most) const {
    if (!m_value->is_number_integer()) Bad("must be a whole number");
    const bool tooBig = m_value->is_number_unsigned() &&
                        m_value->get<std::uint64_t>() > static_cast<std::uint64_t>(most);
    const auto number = tooBig ? std::int64_t{0} : m_value->get<std::int64_t>();
    if (tooBig || number < least || number > most)
        Bad("must be " + std::to_string(least) + " to " + std::to_string(most));
    return static_cast<long>(number);
}

bool JsonPlace::Truth() const {
    if (!m_value->is_boolean()) Bad("must be true or false");
    return m_value->get<bool>();
}

std::wstring JsonPlace::TextOr(const char* key, std::wstring_view otherwise) const {
    return Has(key) ? At(key).Text() : std::wstring(otherwise);
}

long JsonPlace::NumberOr(const char* key, long otherwise, long least, long most) const {
    return Has(key) ? At(key).Number(least, most) : otherwise;
}

bool JsonPlace::TruthOr(const char* key, bool otherwise) const {
    return Has(key) ? At(key).Truth() : otherwise;
}

Json ParseJson(const std::string& text) {
    std::vector<std::set<std::string>> open;
    const auto watch = [&](int, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::object_start) open.emplace_back();
        if (event == Json::parse_event_t::object_end) open.pop_back();
        if (event == Json::parse_event_t::key) {
            const auto& key = parsed.get_ref<const std::string&>();
            if (!open.back().insert(key).second)
                Refuse(kBadNetworkFile, L"key \"" + WideFromUtf8(key) + L"\" stands twice");
        }
        return true;
    };
    try {
        return Json::parse(text, watch);
    } catch (const Json::parse_error& error) {
        Refuse(kBadNetworkFile, WideFromUtf8(error.what()));
    }
}

}  // namespace quorvex
