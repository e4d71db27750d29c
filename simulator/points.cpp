#include "points.h"

#include <cmath>

#include "../include/host_members.h"
#include "converted.h"
#include "point_value.h"
#include "refusal.h"
#include "sequence.h"

namespace quorvex {

namespace host = quillon::host;

namespace {

constexpr DISPID kItemId = DISPID_VALUE;
constexpr DISPID kCountId = 1;

// A collection reached by late binding.
class Collection : public Hosted<LateBound> {
protected:
    explicit Collection(std::span<const LateMember> members) : m_members(members) {}

    // The item of a key; no object when there is none.
    virtual com::Ptr<IDispatch> Find(const std::wstring& key) const = 0;
    virtual std::size_t Count() const = 0;
    virtual Sequence::Item Items() const = 0;
    // Refuses when the collection may not be used any more.
    virtual void Require() const {}

private:
    std::span<const LateMember> Members() const override { return m_members; }

    HRESULT GetMember(const LateMember& member, const VARIANT* argument,
                      VARIANT* result) noexcept override {
        if (argument)
            return Answer(
                member.get, result, [&] { return Read(member.id, argument); }, *argument);
        return Answer(member.get, result, [&] { return Read(member.id, nullptr); });
    }

    HRESULT PutMember(const LateMember&, const VARIANT&) noexcept override {
        return DISP_E_MEMBERNOTFOUND;
    }

    com::Variant Read(DISPID id, const VARIANT* argument) const {
        Require();
        // Item alone takes an argument.
        if (argument) return com::Variant(Find(KeyText(*argument)).Get());
        if (id == kCountId) return com::Variant(static_cast<std::int32_t>(Count()));
        com::Variant enumerator;
        enumerator.punkVal = com::Make<Sequence>(Count(), Items()).Detach();
        enumerator.vt = VT_UNKNOWN;
        return enumerator;
    }

    std::span<const LateMember> m_members;
};

constexpr LateMember kPointsMembers[] = {
    {host::points::kItem, kItemId, Id("Points.Item"), LateMember::kNone, true},
    {host::points::kCount, kCountId, Id("Points.Count.get")},
    {L"_NewEnum", DISPID_NEWENUM, Id("Points._NewEnum.get")},
};

class Points final : public Collection {
public:
    Points(DeviceView view, PointKind kind)
        : Collection(kPointsMembers), m_view(std::move(view)), m_kind(kind) {}

private:
    com::Ptr<IDispatch> Find(const std::wstring& key) const override {
        const std::size_t position = m_view.controller->Points(m_kind).Find(key);
        return position == PointTable::npos ? nullptr : Items()(position);
    }
    std::size_t Count() const override { return m_view.controller->Points(m_kind).Size(); }
    Sequence::Item Items() const override {
        return [view = m_view, kind = m_kind](std::size_t position) {
            return MakePoint(view, {kind, position, {}});
        };
    }
    void Require() const override { m_view.RequireDevice(L"A collection of points"); }

    DeviceView m_view;
    PointKind m_kind;
};

class Fields final : public Collection {
public:
    Fields(DeviceView view, PointPath path)
        : Collection(kPointsMembers), m_view(std::move(view)), m_path(std::move(path)) {}

private:
    const std::vector<Field>& All() const { return PointValue(m_view, m_path).ValueType().fields; }

    com::Ptr<IDispatch> Find(const std::wstring& key) const override {
        for (std::size_t position = 0; position < All().size(); ++position)
            if (All()[position].name == key) return Items()(position);
        for (std::size_t position = 0; position < All().size(); ++position)
            if (std::to_wstring(position + 1) == key) return Items()(position);
        return nullptr;
    }
    std::size_t Count() const override { return All().size(); }
    Sequence::Item Items() const override {
        return [view = m_view, path = m_path, all = &All()](std::size_t position) {
            PointPath inner = path;
            inner.fields.push_back(&(*all)[position]);
            return MakePoint(view, std::move(inner));
        };
    }
    void Require() const override { m_view.RequireDevice(L"A collection of fields"); }

    DeviceView m_view;
    PointPath m_path;
};

constexpr LateMember kCatalogueMembers[] = {
    {host::points::kItem, kItemId, Id("Catalogue.Item"), LateMember::kNone, true},
    {host::points::kCount, kCountId, Id("Catalogue.Count.get")},
    {L"_NewEnum", DISPID_NEWENUM, Id("Catalogue._NewEnum.get")},
};

class Catalogue final : public Collection {
public:
    Catalogue() : Collection(kCatalogueMembers) {}

private:
    com::Ptr<IDispatch> Find(const std::wstring& key) const override {
        const Type* type = FindType(key);
        return type ? MakeType(*type) : nullptr;
    }
    std::size_t Count() const override { return AllTypes().size(); }
    Sequence::Item Items() const override {
        return [](std::size_t position) { return MakeType(AllTypes()[position]); };
    }
};

enum TypeMember : DISPID { kTypeName, kLength, kGenType, kUnits, kInvalidValue, kBCoef, kEnumDesc };

constexpr LateMember kTypeMembers[] = {
    {host::type::kName, kTypeName, Id("Type.Name.get")},
    {host::type::kLength, kLength, Id("Type.Length.get")},
    {host::type::kGenType, kGenType, Id("Type.GenType.get")},
    {host::type::kUnits, kUnits, Id("Type.Units.get")},
    {host::type::kInvalidValue, kInvalidValue, Id("Type.InvalidValue.get")},
    {host::type::kBCoef, kBCoef, Id("Type.BCoef.get")},
    {host::type::kEnumDesc, kEnumDesc, Id("Type.EnumDesc.get")},
};

class TypeObject final : public Hosted<LateBound> {
public:
    explicit TypeObject(const Type& type) : m_type(type) {}

private:
    std::span<const LateMember> Members() const override { return kTypeMembers; }

    HRESULT GetMember(const LateMember& member, const VARIANT*, VARIANT* result) noexcept override {
        return Answer(member.get, result, [&] { return Read(member.id); });
    }
    HRESULT PutMember(const LateMember&, const VARIANT&) noexcept override {
        return DISP_E_MEMBERNOTFOUND;
    }

    com::Variant Read(DISPID id) const {
        switch (id) {
            case kTypeName:
                return com::Variant(m_type.name);
            case kLength:
                return com::Variant(static_cast<std::int32_t>(m_type.length));
            case kGenType:
                return com::Variant(m_type.GenType());
            case kUnits:
                return com::Variant(m_type.units);
            case kInvalidValue:
                return com::Variant(std::wstring_view(m_type.invalidValue));
            case kBCoef:
                return com::Variant(static_cast<std::int32_t>(m_type.bCoef));
            default:
                return com::Variant(std::wstring_view(m_type.enumDesc));
        }
    }

    const Type& m_type;
};

}  // namespace

void DeviceView::RequireDevice(std::wstring_view user) const {
    if (device.expired())
        RefuseMisuse(std::wstring(user) + L" was used after its device object " +
                     controller->neuron + L" went away");
}

std::wstring KeyText(const VARIANT& key) {
    switch (key.vt) {
        case VT_R4:
        case VT_R8:
        case VT_DECIMAL:
        case VT_CY: {
            const double number = Converted(key, VT_R8).value().dblVal;
            // No point has a broken key.
            const bool whole = std::trunc(number) == number && std::abs(number) < 1e9;
            return whole ? std::to_wstring(static_cast<long>(number)) : std::wstring();
        }
        case VT_BSTR:
        case VT_I1:
        case VT_I2:
        case VT_I4:
        case VT_I8:
        case VT_INT:
        case VT_UI1:
        case VT_UI2:
        case VT_UI4:
        case VT_UI8:
        case VT_UINT:
            return com::Text(Converted(key, VT_BSTR).value().bstrVal);
        default:
            throw com::Error(DISP_E_TYPEMISMATCH);
    }
}

com::Ptr<IDispatch> MakePoints(DeviceView view, PointKind kind) {
    return com::Ptr<IDispatch>::Adopt(com::Make<Points>(std::move(view), kind).Detach());
}
com::Ptr<IDispatch> MakeFields(DeviceView view, PointPath path) {
    return com::Ptr<IDispatch>::Adopt(com::Make<Fields>(std::move(view), std::move(path)).Detach());
}
com::Ptr<IDispatch> MakeType(const Type& type) {
    return com::Ptr<IDispatch>::Adopt(com::Make<TypeObject>(type).Detach());
}
com::Ptr<IDispatch> MakeCatalogue() {
    return com::Ptr<IDispatch>::Adopt(com::Make<Catalogue>().Detach());
}

}  // namespace quorvex
