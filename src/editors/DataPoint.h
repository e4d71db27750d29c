// A data point of the host (network variable, configuration property, structure field) as the
// editors see it: its members by name, texts whatever kind of value the host gives for them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/platform.h"
#include "com/ptr.h"

namespace quillon {

// The type description of a point. Each member asks the host, except GenType, which asks it once.
// All throw com::Error when the host fails or has no such member.
class PointType {
public:
    explicit PointType(com::Ptr<IDispatch> object) : m_object(std::move(object)) {}

    const std::wstring& GenType() const;
    std::wstring Units() const;
    std::wstring InvalidValue() const;  // blank: the type has none
    std::int32_t BCoef() const;         // power-of-ten exponent
    std::wstring EnumDesc() const;      // "0,Auto;1,Off;"

private:
    com::Ptr<IDispatch> m_object;
    mutable std::optional<std::wstring> m_genType;
};

// Each member asks the host, except SNVType, which asks it once. All throw com::Error, and so does
// every member of a point made of no object.
class DataPoint {
public:
    DataPoint() = default;
    explicit DataPoint(com::Ptr<IDispatch> object) : m_object(std::move(object)) {}

    explicit operator bool() const { return static_cast<bool>(m_object); }
    const com::Ptr<IDispatch>& Object() const { return m_object; }

    std::wstring Value() const;
    // Writes the device.
    void SetValue(std::wstring_view text) const;
    std::wstring FormattedValue() const;
    std::wstring Name() const;
    std::wstring Key() const;
    std::int32_t NVDirection() const;
    std::wstring MinOverride() const;  // empty: no limit
    std::wstring MaxOverride() const;
    const PointType& SNVType() const;
    // The collection of a structure's fields, and its points in its order.
    com::Ptr<IDispatch> Fields() const;
    static std::vector<DataPoint> PointsOf(IDispatch* collection);

private:
    com::Ptr<IDispatch> m_object;
    mutable std::optional<PointType> m_type;
};

}  // namespace quillon
