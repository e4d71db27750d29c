// A value in a JSON document together with the way to it, for errors that name the place.
#pragma once

#include <functional>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace quorvex {

using Json = nlohmann::ordered_json;

class JsonPlace {
public:
    explicit JsonPlace(const Json& value) : m_value(&value) {}

    // Refuses (kBadNetworkFile) with "place: problem".
    [[noreturn]] void Bad(std::string_view problem) const;

    // Refuses a value that is no object, and one with other keys than these.
    void RequireKeys(std::initializer_list<std::string_view> allowed) const;
    bool Has(const char* key) const { return m_value->contains(key); }
    JsonPlace At(const char* key) const;
    // Visits the elements of the array behind the key, in order; a missing one is empty.
    void ForEach(const char* key, const std::function<void(const JsonPlace&)>& visit) const;

    std::wstring Text() const;
    long Number(long least, long most) const;
    bool Truth() const;

    // The same for a key that may be missing.
    std::wstring TextOr(const char* key, std::wstring_view otherwise) const;
    long NumberOr(const char* key, long otherwise, long least, long most) const;
    bool TruthOr(const char* key, bool otherwise) const;

private:
    JsonPlace(const Json& value, std::string path) : m_value(&value), m_path(std::move(path)) {}

    const Json* m_value;
    std::string m_path;
};

// Parses a document. Refuses what is no JSON, and an object in which a key stands twice.
Json ParseJson(const std::string& text);

}  // namespace quorvex
