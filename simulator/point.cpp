#include "../include/host_members.h"
#include "converted.h"
#include "point_value.h"
#include "points.h"
#include "refusal.h"

namespace quorvex {

namespace host = quillon::host;

namespace {

enum PointMember : DISPID {
    kValue = DISPID_VALUE,
    kName,
    kKey,
    kIndex,
    kDirection,
    kIsConfiguration,
    kSelfDocumentation,
    kPointType,
    kRawValue,
    kFormattedValue,
    kMinOverride,
    kMaxOverride,
    kFields
};

constexpr LateMember kPointMembers[] = {
    {host::point::kValue, kValue, Id("Point.Value.get"), Id("Point.Value.put")},
    {host::point::kName, kName, Id("Point.Name.get")},
    {host::point::kKey, kKey, Id("Point.Key.get")},
    {host::point::kIndex, kIndex, Id("Point.Index.get")},
    {host::point::kDirection, kDirection, Id("Point.NVDirection.get")},
    {host::point::kIsConfiguration, kIsConfiguration, Id("Point.NVIsConfig.get")},
    {host::point::kSelfDocumentation, kSelfDocumentation, Id("Point.SelfDoc.get")},
    {host::point::kType, kPointType, Id("Point.SNVType.get")},
    {host::point::kRawValue, kRawValue, Id("Point.RawValue.get"), Id("Point.RawValue.put")},
    {host::point::kFormattedValue, kFormattedValue, Id("Point.FormattedValue.get"),
     Id("Point.FormattedValue.put")},
    {host::point::kMinOverride, kMinOverride, Id("Point.MinOverride.get")},
    {host::point::kMaxOverride, kMaxOverride, Id("Point.MaxOverride.get")},
    {host::point::kFields, kFields, Id("Point.Fields.get")},
};

ValueForm FormOf(DISPID member) {
    switch (member) {
        case kRawValue:
            return ValueForm::kRaw;
        case kValue:
            return ValueForm::kEdit;
        default:
            return ValueForm::kShown;
    }
}

std::wstring TextOf(const VARIANT& value) {
    const auto text = Converted(value, VT_BSTR);
    if (!text) throw com::Error(DISP_E_TYPEMISMATCH);
    return com::Text(text->bstrVal);
}

class Point final : public Hosted<LateBound> {
public:
    Point(DeviceView view, PointPath path) : m_view(std::move(view)), m_path(std::move(path)) {}

private:
    std::span<const LateMember> Members() const override { return kPointMembers; }

    HRESULT GetMember(const LateMember& member, const VARIANT*, VARIANT* result) noexcept override {
        return Answer(member.get, result, [&] {
            Require();
            return m_path.fields.empty() ? ReadPoint(member.id) : ReadField(member.id);
        });
    }

    HRESULT PutMember(const LateMember& member, const VARIANT& value) noexcept override {
        return Do(
            member.put,
            [&] {
                Require();
                Value().Write(FormOf(member.id), TextOf(value));
            },
            value);
    }

    PointValue Value() const { return PointValue(m_view, m_path); }

    void Require() const { m_view.RequireDevice(Value().Point().name); }

    // What a whole point has of its own.
    com::Variant ReadPoint(DISPID id) const {
        const DataPoint& point = Value().Point();
        switch (id) {
            case kName:
                return com::Variant(std::wstring_view(point.name));
            case kKey:
                return com::Variant(std::wstring_view(std::to_wstring(point.index)));
            case kIndex:
                return com::Variant(static_cast<std::int32_t>(point.index));
            case kSelfDocumentation:
                return com::Variant(std::wstring_view(point.selfDocumentation));
            case kMinOverride:
                return com::Variant(std::wstring_view(point.minimum));
            case kMaxOverride:
                return com::Variant(std::wstring_view(point.maximum));
            default:
                return ReadEither(id);
        }
    }

    com::Variant ReadField(DISPID id) const {
        const Field& field = *m_path.fields.back();
        switch (id) {
            case kName:
            case kKey:
                return com::Variant(field.name);
            case kIndex:
                return com::Variant(FieldIndex());
            case kSelfDocumentation:
            case kMinOverride:
            case kMaxOverride:
                return com::Variant(std::wstring_view());
            default:
                return ReadEither(id);
        }
    }

    com::Variant ReadEither(DISPID id) const {
        const DataPoint& point = Value().Point();
        switch (id) {
            case kDirection:
                return com::Variant(std::int32_t{point.output ? 1 : 0});
            case kIsConfiguration:
                return com::Variant(point.configuration);
            case kPointType:
                return com::Variant(MakeType(Value().ValueType()).Get());
            case kFields:
                return com::Variant(MakeFields(m_view, m_path).Get());
            default:
                return com::Variant(std::wstring_view(Value().Read(FormOf(id))));
        }
    }

    // The field's place in the structure around it.
    std::int32_t FieldIndex() const {
        PointPath outer = m_path;
        outer.fields.pop_back();
        const Field* first = PointValue(m_view, outer).ValueType().fields.data();
        return static_cast<std::int32_t>(m_path.fields.back() - first);
    }

    DeviceView m_view;
    PointPath m_path;
};

}  // namespace

com::Ptr<IDispatch> MakePoint(DeviceView view, PointPath path) {
    return com::Ptr<IDispatch>::Adopt(com::Make<Point>(std::move(view), std::move(path)).Detach());
}

}  // namespace quorvex
