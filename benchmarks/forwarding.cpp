#include "com/error.h"
#include "com/text.h"
#include "measures.h"

namespace quillon::benchmarks {

namespace {

constexpr int kRounds = 501;
constexpr int kDirectCalls = 2000;
constexpr int kDispatchCalls = 500;

void ReadNumber(IDevice* device) {
    long number = 0;
    com::Check(device->get_EngineeringUnits(&number));
}

void ReadText(IDevice* device) {
    BSTR text = nullptr;
    com::Check(device->get_DisplayName(&text));
    SysFreeString(text);
}

void ReadObject(IDevice* device) {
    IDispatch* object = nullptr;
    com::Check(device->get_NetworkVariables(&object));
    object->Release();
}

DISPID IdOf(IDevice* device, const wchar_t* name) {
    DISPID id = DISPID_UNKNOWN;
    auto* text = const_cast<wchar_t*>(name);
    com::Check(device->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id));
    return id;
}

void ReadByDispatch(IDevice* device, DISPID id) {
    DISPPARAMS none{};
    VARIANT result;
    VariantInit(&result);
    com::Check(device->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                              &result, nullptr, nullptr));
    VariantClear(&result);
}

template <class F>
Comparison CompareCalls(const Room& room, int calls, F&& call) {
    const auto batch = [&](IDevice* device) {
        return Seconds([&] {
            for (int i = 0; i < calls; ++i) call(device);
        });
    };
    return Compare(
        kRounds, [&] { return batch(room.subject.Get()); }, [&] { return batch(room.bare.Get()); });
}

void AddDispatch(const Room& room, Table& table, const char* what, const wchar_t* member) {
    const DISPID id = IdOf(room.bare.Get(), member);
    table.AddRatio(
        what, "IDispatch on the host's device", 1.3,
        CompareCalls(room, kDispatchCalls, [id](IDevice* device) { ReadByDispatch(device, id); }),
        kDispatchCalls);
}

}  // namespace

void MeasureForwarding(const Session& session, Table& table) {
    const Room room = session.OpenRoom({.variables = 40, .properties = 30});
    const auto direct = [&](const char* what, double limit, auto call) {
        table.AddRatio(what, "the same call on the host's device", limit,
                       CompareCalls(room, kDirectCalls, call), kDirectCalls);
    };
    direct("a forwarded number (vtable)", 2.2, ReadNumber);
    direct("a forwarded text (vtable)", 1.3, ReadText);
    direct("a forwarded object (vtable)", 1.3, ReadObject);
    AddDispatch(room, table, "a forwarded number (IDispatch)", L"EngineeringUnits");
    AddDispatch(room, table, "a forwarded text (IDispatch)", L"DisplayName");
    AddDispatch(room, table, "a forwarded object (IDispatch)", L"NetworkVariables");
}

}  // namespace quillon::benchmarks
