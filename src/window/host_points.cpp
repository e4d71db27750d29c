#include "window/host_points.h"

#include "com/error.h"
#include "com/late.h"
#include "host_members.h"
#include "plugin/MMain.h"

namespace quillon {

namespace {

// Null is an empty text.
std::wstring TextOf(IDispatch* object, const wchar_t* member) {
    const com::Variant value = com::Get(object, member);
    return value.vt == VT_NULL ? std::wstring() : value.AsText();
}

}  // namespace

com::Ptr<IDispatch> FindPoint(IDispatch* points, const com::Variant& key) {
    return com::Get(points, host::points::kItem, {key}).AsObject();
}

ListRow ReadNetworkVariableRow(IDispatch* point, bool withDirection) {
    const bool output = withDirection &&
                        com::Get(point, host::point::kDirection).AsNumber() == host::point::kOutput;
    return NetworkVariableRow(TextOf(point, host::point::kName), TextOf(point, host::point::kKey),
                              TextOf(point, host::point::kFormattedValue), output, !withDirection);
}

ListRow ReadConfigurationPropertyRow(IDispatch* point) {
    return ConfigurationPropertyRow(TextOf(point, host::point::kName),
                                    TextOf(point, host::point::kKey),
                                    TextOf(point, host::point::kFormattedValue));
}

LiveReading ReadLivePoint(IDispatch* point, const std::function<void()>& answered) {
    const std::wstring raw = TextOf(point, host::point::kValue);
    if (SaysSilent(raw)) return ReadLiveValue(raw, {}, [] { return std::wstring(); }, {});
    answered();
    const com::Ptr<IDispatch> type = com::Get(point, host::point::kType).AsObject();
    return ReadLiveValue(
        raw, TextOf(type.Get(), host::type::kInvalidValue),
        [&] { return TextOf(point, host::point::kFormattedValue); }, LocalDecimalSeparator());
}

}  // namespace quillon
