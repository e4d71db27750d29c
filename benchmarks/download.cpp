#include <stdexcept>
#include <string>
#include <vector>

#include "com/error.h"
#include "com/text.h"
#include "com/variant.h"
#include "host_members.h"
#include "late_call.h"
#include "measures.h"
#include "stamp.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 18;
constexpr int kPoints = 20'000;

// The values are written between two calls that the host sees: the second entry that is written
// (the properties, of which this device has none, so that it takes no time) and going on line.
double SecondsOfSubject(const Session& session, const Room& room, const std::wstring& file) {
    const com::Ptr<Stamp> begin = com::Make<Stamp>();
    const com::Ptr<Stamp> end = com::Make<Stamp>();
    com::Check(session.Host().Clear());
    Arm(session, L"IFile.ValueText.put", 2, begin.Get());
    Arm(session, L"IDevice.GoOnLine", 1, end.Get());
    long ignored = 0;
    com::Check(room.subject.As<IDeviceEx>()->AppDownload(com::Bstr(file).Get(), &ignored));
    com::Bstr reports;
    com::Check(session.Host().get_Reports(reports.Out()));
    if (begin->Calls() != 1 || end->Calls() != 1 ||
        reports.View() != L"00000000 " + std::wstring(kNeuron) + L"\n")
        throw std::runtime_error("the download did not succeed");
    return end->Time() - begin->Time();
}

struct Value {
    long index = 0;
    std::wstring raw;
};

std::vector<Value> ValuesOf(const Room& room) {
    com::Ptr<IDispatch> points;
    com::Check(room.bare->get_NetworkVariables(points.Out()));
    std::vector<Value> values;
    for (long i = 0; i < kPoints; ++i) {
        com::Variant key(std::to_wstring(i));
        const com::Variant point = BareGet(points.Get(), host::points::kItem, &key);
        values.push_back({i, BareGet(point.pdispVal, host::point::kRawValue).AsText()});
    }
    return values;
}

double SecondsOfFloor(const Session& session, const Room& room, const std::vector<Value>& values) {
    com::Check(session.Host().Clear());
    return Seconds([&] {
        for (const Value& value : values) {
            BarePump();
            com::Ptr<IDispatch> points;
            com::Check(room.bare->get_NetworkVariables(points.Out()));
            com::Variant key(std::to_wstring(value.index));
            const com::Variant point = BareGet(points.Get(), host::points::kItem, &key);
            com::Variant raw(value.raw);
            BarePut(point.pdispVal, host::point::kRawValue, raw);
        }
    });
}

void RequireWrites(const Session& session) {
    for (const wchar_t* member :
         {L"IDevice.NetworkVariables", L"Points.Item", L"Point.RawValue.put"})
        if (session.Calls(member) != kPoints)
            throw std::runtime_error("not every value was written once");
}

}  // namespace

void MeasureDownload(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = kPoints, .allConfiguration = true});
    const std::wstring file = session.ExportApplication(room, L"values.app");
    const std::vector<Value> values = ValuesOf(room);
    const auto subject = [&] { return SecondsOfSubject(session, room, file); };
    const auto floor = [&] { return SecondsOfFloor(session, room, values); };
    subject();
    RequireWrites(session);
    floor();
    RequireWrites(session);
    table.AddRatio("writing 20,000 NC values in a download, a value",
                   "the same host look-ups and writes in a bare loop", 1.2,
                   Compare(kRounds, subject, floor), kPoints);
}

}  // namespace quillon::benchmarks
