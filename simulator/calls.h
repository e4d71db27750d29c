// The one place that every call of the simulated host goes through: it counts, writes the log, and
// does what ISimulator has armed. One book per process; the host's thread alone uses it.
#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "argument_text.h"
#include "com/error.h"
#include "com/platform.h"
#include "com/ptr.h"
#include "com/variant.h"
#include "line_book.h"
#include "members.h"

namespace quorvex {

namespace com = quillon::com;

class Calls {
public:
    static Calls& Process();
    // Leaves the book of the process unfreed. To be called when the process ends: what the book
    // holds may be in modules that are gone already.
    static void Abandon();

    // Notes a call. False in the plain case; true when Meet has to be asked what is armed.
    template <class... Arguments>
    bool Enter(MemberId member, const Arguments&... arguments) {
        Slot& slot = m_slots[member];
        ++slot.calls;
        if (m_recording) [[unlikely]]
            Log(member, ArgumentsText(arguments...));
        return slot.armed;
    }
    // Does what is armed: sleeps, calls handlers, then fails (com::Error), or gives the answer that
    // stands for the member's own, or neither.
    std::optional<com::Variant> Meet(MemberId member);

    // What ISimulator's members of these names say. MemberOf refuses an unknown name.
    static MemberId MemberOf(std::wstring_view name);
    void Fail(MemberId member, long nth, bool always, HRESULT result);
    void Answer(MemberId member, com::Variant value);
    void Delay(MemberId member, std::chrono::milliseconds time);
    void Call(MemberId member, long nth, com::Ptr<IDispatch> handler);
    void Silence(std::wstring neuron, bool silent);
    bool IsSilent(const std::wstring& neuron) const {
        return !m_silent.empty() && m_silent.contains(neuron);
    }
    void Restore();

    long Count(MemberId member) const { return m_slots[member].calls; }
    // From the call of that number on, the first since Clear being 0; those that are kept.
    std::wstring LogText(long from = 0) const { return m_log.Text(from); }
    long Logged() const { return m_log.Count(); }
    // What points got, a line each: Neuron ID, name and bytes.
    LineBook& Writes() { return m_writes; }
    // The members called since Clear, one a line: count, blank, member.
    std::wstring CountsText() const;
    bool IsRecording() const { return m_recording; }
    void SetRecording(bool on) { m_recording = on; }
    void NoteReport(long code, std::wstring_view neuron);
    std::wstring ReportsText() const { return m_reports; }
    void NoteMisuse(std::wstring_view what);
    std::wstring MisuseText() const { return m_misuse; }
    void Clear();

    // Whether an object of a caller's (handler or answer) is held.
    bool HoldsObjects() const;

private:
    struct Fault {
        long callsLeft;
        bool always;
        HRESULT result;
    };
    struct Handler {
        long callsLeft;
        com::Ptr<IDispatch> object;
    };
    struct Slot {
        long calls = 0;
        bool armed = false;
        std::chrono::milliseconds delay{};
        std::vector<Handler> handlers;
        std::vector<Fault> faults;
        std::optional<com::Variant> answer;
    };

    void Log(MemberId member, const std::wstring& arguments);
    static void RunHandlers(Slot& slot);
    static std::optional<HRESULT> DueFault(Slot& slot);
    static void Disarm(Slot& slot);

    std::array<Slot, kMemberNames.size()> m_slots;
    std::set<std::wstring> m_silent;
    bool m_recording = true;
    LineBook m_log;
    LineBook m_writes;
    std::wstring m_reports;
    std::wstring m_misuse;
};

}  // namespace quorvex
