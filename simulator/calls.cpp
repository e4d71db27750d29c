#include "calls.h"

#include <algorithm>
#include <memory>

#include "com/error.h"
#include "refusal.h"
#include "text.h"

namespace quorvex {

namespace {

constexpr int kMaximumDelay = 60'000;

std::unique_ptr<Calls> g_book = std::make_unique<Calls>();

void CallDefaultMember(IDispatch* object) {
    DISPPARAMS none{};
    com::Variant ignored;
    object->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                   ignored.Out(), nullptr, nullptr);
}

// The forms of a name that stand for the same member: a property's get may go without ".get".
bool Names(std::string_view member, std::string_view name) {
    return member == name ||
           (member.ends_with(".get") && member.substr(0, member.size() - 4) == name);
}

void RequirePositive(long nth) {
    if (nth < 1) Refuse(E_INVALIDARG, L"The number of the call counts from 1");
}

}  // namespace

Calls& Calls::Process() {
    return *g_book;
}

void Calls::Abandon() {
    // Leaked on purpose.
    static_cast<void>(g_book.release());
}

MemberId Calls::MemberOf(std::wstring_view name) {
    const std::string narrow = Utf8FromWide(name);
    for (MemberId id = 0; id < kMemberNames.size(); ++id)
        if (Names(kMemberNames[id], narrow)) return id;
    Refuse(E_INVALIDARG, L"No member is named \"" + std::wstring(name) + L"\"");
}

std::optional<com::Variant> Calls::Meet(MemberId member) {
    Slot& slot = m_slots[member];
    if (slot.delay.count() > 0) Sleep(static_cast<DWORD>(slot.delay.count()));
    RunHandlers(slot);
    if (const auto result = DueFault(slot)) {
        const std::wstring description =
            WideFromUtf8(kMemberNames[member]) + L" fails because it was told to";
        throw com::Error(*result, com::MakeErrorRecord(L"Quorvex", description));
    }
    return slot.answer;
}

// A handler may arm and disarm anything, so each is taken out before it runs.
void Calls::RunHandlers(Slot& slot) {
    std::vector<com::Ptr<IDispatch>> due;
    for (Handler& handler : slot.handlers)
        if (--handler.callsLeft == 0) due.push_back(handler.object);
    std::erase_if(slot.handlers, [](const Handler& handler) { return handler.callsLeft <= 0; });
    Disarm(slot);
    for (const auto& handler : due) CallDefaultMember(handler.Get());
}

std::optional<HRESULT> Calls::DueFault(Slot& slot) {
    std::optional<HRESULT> result;
    for (Fault& fault : slot.faults) {
        if (fault.callsLeft > 0) --fault.callsLeft;
        if (fault.callsLeft == 0 && !result) result = fault.result;
    }
    std::erase_if(slot.faults,
                  [](const Fault& fault) { return fault.callsLeft == 0 && !fault.always; });
    Disarm(slot);
    return result;
}

void Calls::Disarm(Slot& slot) {
    slot.armed = slot.delay.count() > 0 || !slot.handlers.empty() || !slot.faults.empty() ||
                 slot.answer.has_value();
}

void Calls::Fail(MemberId member, long nth, bool always, HRESULT result) {
    RequirePositive(nth);
    m_slots[member].faults.push_back({nth, always, result});
    m_slots[member].armed = true;
}

void Calls::Answer(MemberId member, com::Variant value) {
    m_slots[member].answer = std::move(value);
    m_slots[member].armed = true;
}

void Calls::Delay(MemberId member, std::chrono::milliseconds time) {
    if (time.count() < 0 || time.count() > kMaximumDelay)
        Refuse(E_INVALIDARG, L"A delay is 0 to 60,000 milliseconds");
    m_slots[member].delay = time;
    Disarm(m_slots[member]);
}

void Calls::Call(MemberId member, long nth, com::Ptr<IDispatch> handler) {
    RequirePositive(nth);
    if (!handler) Refuse(E_INVALIDARG, L"There is no handler to call");
    m_slots[member].handlers.push_back({nth, std::move(handler)});
    m_slots[member].armed = true;
}

void Calls::Silence(std::wstring neuron, bool silent) {
    if (silent)
        m_silent.insert(std::move(neuron));
    else
        m_silent.erase(neuron);
}

void Calls::Restore() {
    for (Slot& slot : m_slots) {
        // Letting go of an object may call back into the host.
        Slot old = std::exchange(slot, Slot{});
        slot.calls = old.calls;
    }
    m_silent.clear();
}

void Calls::Log(MemberId member, const std::wstring& arguments) {
    m_log.Add(WideFromUtf8(kMemberNames[member]) + L'(' + arguments + L')');
}

std::wstring Calls::CountsText() const {
    std::wstring text;
    for (MemberId member = 0; member < m_slots.size(); ++member)
        if (const long calls = m_slots[member].calls; calls != 0)
            text += std::to_wstring(calls) + L' ' + WideFromUtf8(kMemberNames[member]) + L'\n';
    return text;
}

void Calls::NoteReport(long code, std::wstring_view neuron) {
    static constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    for (int shift = 28; shift >= 0; shift -= 4)
        m_reports += kDigits[(static_cast<unsigned long>(code) >> shift) & 0xF];
    m_reports += L' ';
    m_reports += neuron;
    m_reports += L'\n';
}

void Calls::NoteMisuse(std::wstring_view what) {
    m_misuse += what;
    m_misuse += L'\n';
}

void Calls::Clear() {
    for (Slot& slot : m_slots) slot.calls = 0;
    m_log.Clear();
    m_writes.Clear();
    m_reports.clear();
    m_misuse.clear();
}

bool Calls::HoldsObjects() const {
    return std::any_of(m_slots.begin(), m_slots.end(), [](const Slot& slot) {
        const int type = slot.answer ? slot.answer->vt : int{VT_EMPTY};
        return !slot.handlers.empty() ||
               ((type == VT_DISPATCH || type == VT_UNKNOWN) && slot.answer->punkVal != nullptr);
    });
}

void Refuse(HRESULT result, std::wstring_view description) {
    throw com::Error(result, com::MakeErrorRecord(L"Quorvex", description));
}

void RefuseMisuse(std::wstring_view description) {
    Calls::Process().NoteMisuse(description);
    Refuse(kMisuse, description);
}

}  // namespace quorvex
