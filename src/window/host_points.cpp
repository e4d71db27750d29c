#include "window/host_points.h"

#include "com/error.h"
#include "com/late.h"
#include "host_members.h"
#include "plugin/MMain.h"

namespace quillon {

com::Ptr<IDispatch> FindPoint(IDispatch* points, const com::Variant& key) {
    return com::Get(points, host::points::kItem, {key}).AsObject();
}

ListRow ReadNetworkVariableRow(IDispatch* point, bool withDirection) {
    const bool output = withDirection &&
                        com::Get(point, host::point::kDirection).AsNumber() == host::point::kOutput;
    return NetworkVariableRow(
        com::GetText(point, host::point::kName), com::GetText(point, host::point::kKey),
        com::GetText(point, host::point::kFormattedValue), output, !withDirection);
}

ListRow ReadConfigurationPropertyRow(IDispatch* point) {
    return ConfigurationPropertyRow(com::GetText(point, host::point::kName),
                                    com::GetText(point, host::point::kKey),
                                    com::GetText(point, host::point::kFormattedValue));
}

LiveReading ReadLivePoint(IDispatch* point, const std::function<void()>& answered) {
    const std::wstring raw = com::GetText(point, host::point::kValue);
    if (SaysSilent(raw)) return ReadLiveValue(raw, {}, [] { return std::wstring(); }, {});
    answered();
    const com::Ptr<IDispatch> type = com::Get(point, host::point::kType).AsObject();
    return ReadLiveValue(
        raw, com::GetText(type.Get(), host::type::kInvalidValue),
        [&] { return com::GetText(point, host::point::kFormattedValue); }, LocalDecimalSeparator());
}

}  // namespace quillon
