#include "editors/DataPoint.h"

#include "com/error.h"
#include "com/late.h"
#include "host_members.h"

namespace quillon {

const std::wstring& PointType::GenType() const {
    if (!m_genType) m_genType = com::GetText(m_object.Get(), host::type::kGenType);
    return *m_genType;
}

std::wstring PointType::Units() const {
    return com::GetText(m_object.Get(), host::type::kUnits);
}

std::wstring PointType::InvalidValue() const {
    return com::GetText(m_object.Get(), host::type::kInvalidValue);
}

std::int32_t PointType::BCoef() const {
    return com::Get(m_object.Get(), host::type::kBCoef).AsNumber();
}

std::wstring PointType::EnumDesc() const {
    return com::GetText(m_object.Get(), host::type::kEnumDesc);
}

std::wstring DataPoint::Value() const {
    return com::GetText(m_object.Get(), host::point::kValue);
}

void DataPoint::SetValue(std::wstring_view text) const {
    com::Put(m_object.Get(), host::point::kValue, com::Variant(text));
}

std::wstring DataPoint::FormattedValue() const {
    return com::GetText(m_object.Get(), host::point::kFormattedValue);
}

std::wstring DataPoint::Name() const {
    return com::GetText(m_object.Get(), host::point::kName);
}

std::wstring DataPoint::Key() const {
    return com::GetText(m_object.Get(), host::point::kKey);
}

std::int32_t DataPoint::NVDirection() const {
    return com::Get(m_object.Get(), host::point::kDirection).AsNumber();
}

std::wstring DataPoint::MinOverride() const {
    return com::GetText(m_object.Get(), host::point::kMinOverride);
}

std::wstring DataPoint::MaxOverride() const {
    return com::GetText(m_object.Get(), host::point::kMaxOverride);
}

const PointType& DataPoint::SNVType() const {
    if (!m_type) m_type.emplace(com::Get(m_object.Get(), host::point::kType).AsObject());
    return *m_type;
}

com::Ptr<IDispatch> DataPoint::Fields() const {
    return com::Get(m_object.Get(), host::point::kFields).AsObject();
}

std::vector<DataPoint> DataPoint::PointsOf(IDispatch* collection) {
    const com::Ptr<IEnumVARIANT> enumerator = com::Enumerate(collection);
    std::vector<DataPoint> points;
    for (;;) {
        com::Variant item;
        ULONG fetched = 0;
        const HRESULT next = enumerator->Next(1, item.Out(), &fetched);
        com::Check(next);
        if (next != S_OK || fetched == 0) return points;
        points.emplace_back(item.AsObject());
    }
}

}  // namespace quillon
