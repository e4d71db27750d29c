#include "editors/fake_point.h"

#include <algorithm>
#include <iterator>

#include "com/enumerator.h"
#include "com/error.h"
#include "com/object.h"

namespace quillon::test {

namespace {

constexpr HRESULT kRefused = static_cast<HRESULT>(0x80041234);

const wchar_t* const kNames[] = {L"Value",       L"Name",        L"Key",          L"FormattedValue",
                                 L"MinOverride", L"MaxOverride", L"NVDirection",  L"SNVType",
                                 L"Fields",      L"GenType",     L"InvalidValue", L"Units",
                                 L"BCoef",       L"EnumDesc",    L"Count",        L"Item"};
const wchar_t* const kEnumerator = L"_NewEnum";

// An object reached by name alone.
class ByName final : public com::Object<IDispatch> {
public:
    using Getter =
        std::function<com::Variant(const std::wstring& name, const com::Variant* argument)>;
    using Putter = std::function<void(const std::wstring& name, const com::Variant& value)>;

    ByName(Getter get, Putter put) : m_get(std::move(get)), m_put(std::move(put)) {}

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto* found =
            std::find_if(std::begin(kNames), std::end(kNames),
                         [&](const wchar_t* one) { return std::wstring_view(one) == names[0]; });
        if (found == std::end(kNames)) return DISP_E_UNKNOWNNAME;
        ids[0] = static_cast<DISPID>(found - std::begin(kNames)) + 1;
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO*, UINT*) override {
        const com::Ptr<IDispatch> hold(this);
        try {
            const std::wstring name = id == DISPID_NEWENUM ? kEnumerator : kNames[id - 1];
            if (flags & DISPATCH_PROPERTYPUT) {
                m_put(name, com::Variant(arguments->rgvarg[0]));
                return S_OK;
            }
            const com::Variant argument =
                arguments->cArgs ? com::Variant(arguments->rgvarg[0]) : com::Variant();
            m_get(name, arguments->cArgs ? &argument : nullptr).DetachTo(result);
            return S_OK;
        } catch (...) {
            return com::ResultOfCurrentException();
        }
    }

private:
    Getter m_get;
    Putter m_put;
};

com::Variant ObjectOf(ByName::Getter get, ByName::Putter put = {}) {
    const auto object = com::Make<ByName>(std::move(get), std::move(put));
    return com::Variant(static_cast<IDispatch*>(object.Get()));
}

}  // namespace

FakePoint::FakePoint(std::wstring genType, std::wstring value) {
    Set(L"GenType", com::Variant(std::wstring_view(genType)));
    Set(L"Value", com::Variant(std::wstring_view(value)));
    for (const wchar_t* empty : {L"MinOverride", L"MaxOverride", L"InvalidValue", L"EnumDesc"})
        Set(empty, L"");
    Set(L"Name", L"point").Set(L"Key", L"0").Set(L"Units", L"units");
    Set(L"BCoef", com::Variant(-2)).Set(L"NVDirection", com::Variant(0));
}

FakePoint& FakePoint::AddField(const std::wstring& name, std::wstring genType, std::wstring value) {
    FakePoint& field = m_fields.emplace_back(std::move(genType), std::move(value));
    field.Set(L"Name", com::Variant(std::wstring_view(name)));
    field.Set(L"Key", com::Variant(std::wstring_view(L"k" + name)));
    return field;
}

std::vector<std::wstring> FakePoint::Written() const {
    std::vector<std::wstring> written;
    const std::wstring put = L"Value.put ";
    for (const std::wstring& line : m_log)
        if (line.starts_with(put)) written.push_back(line.substr(put.size()));
    return written;
}

void FakePoint::Called(const std::wstring& call, const std::wstring& detail) {
    m_log.push_back(detail.empty() ? call : call + detail);
    if (const auto during = m_during.find(call); during != m_during.end()) {
        const auto function = std::move(during->second);
        m_during.erase(during);
        function();
    }
    if (m_failing.contains(call) || (m_failIn > 0 && --m_failIn == 0)) throw com::Error(kRefused);
}

com::Variant FakePoint::Get(const std::wstring& member) {
    Called(member + L".get");
    if (member == L"SNVType")
        return ObjectOf(
            [this](const std::wstring& name, const com::Variant*) { return Get(name); });
    if (member == L"Fields")
        return ObjectOf([this](const std::wstring& name, const com::Variant* key) {
            return GetField(name, key);
        });
    auto found = m_members.find(member);
    if (found == m_members.end() && member == L"FormattedValue") found = m_members.find(L"Value");
    if (found == m_members.end()) throw com::Error(DISP_E_MEMBERNOTFOUND);
    return found->second;
}

com::Variant FakePoint::GetField(const std::wstring& member, const com::Variant* key) {
    Called(L"Fields." + member, key ? L" " + key->AsText() : L"");
    if (member == L"Item") {
        for (FakePoint& field : m_fields)
            if (!m_gone && field.m_members.at(L"Key").AsText() == key->AsText())
                return com::Variant(field.Point().Object().Get());
        return com::Variant();
    }
    std::vector<com::Variant> all;
    for (FakePoint& field : m_fields) all.emplace_back(field.Point().Object().Get());
    const auto enumerator = com::Make<com::VariantEnumerator>(std::move(all));
    com::Variant result;
    result.vt = VT_UNKNOWN;
    result.punkVal = com::Ptr<IUnknown>(enumerator.Get()).Detach();
    return result;
}

void FakePoint::Put(const std::wstring& member, const com::Variant& value) {
    Called(member + L".put", L" " + value.AsText());
    m_members[member] = value;
}

DataPoint FakePoint::Point() {
    const com::Variant object =
        ObjectOf([this](const std::wstring& name, const com::Variant*) { return Get(name); },
                 [this](const std::wstring& name, const com::Variant& value) { Put(name, value); });
    return DataPoint(object.AsObject());
}

}  // namespace quillon::test
