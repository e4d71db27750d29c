// Every operation with every kind of fault. The table is printed at the end.
#include <map>
#include <set>

#include "fault/device_window.h"
#include "fault/sweep.h"

namespace quillon::test {
namespace {

constexpr std::size_t kMostAllocations = 400;

std::wstring MemberOf(const std::wstring& line) {
    return line.substr(0, line.find(L'('));
}

class FaultSweep : public SweepTest, public ::testing::WithParamInterface<std::size_t> {
protected:
    const Operation& Tested() const { return Operations()[GetParam()]; }

    // One fault for each call of the host that a run without faults makes.
    using ArmCall = std::function<void(Stage& stage, const std::wstring& member, long nth)>;
    static std::vector<Fault> AtEachCall(const Seen& good, const ArmCall& arm) {
        std::vector<Fault> faults;
        std::map<std::wstring, long> seen;
        for (std::size_t i = 0; i < good.log.size(); ++i) {
            const std::wstring member = MemberOf(good.log[i]);
            const long nth = ++seen[member];
            faults.push_back({Narrow(member) + ", call " + std::to_string(nth),
                              [=](Stage& stage) { arm(stage, member, nth); }, i});
        }
        return faults;
    }

    std::vector<Fault> AtEachPlatformCall(const Seen& good, bool forGood) {
        std::vector<Fault> faults;
        std::map<std::string, long> seen;
        for (const std::string& function : good.platformCalls) {
            const long nth = ++seen[function];
            faults.push_back({function + ", call " + std::to_string(nth),
                              [=, this](Stage&) { Platform().Fail(function, nth, forGood); },
                              std::nullopt});
        }
        return faults;
    }

    std::vector<Fault> AtAllocations(const Seen& good) {
        std::vector<Fault> faults;
        const auto all = static_cast<std::size_t>(good.allocations);
        const std::size_t count = std::min(all, kMostAllocations);
        for (std::size_t i = 0; i < count; ++i) {
            const auto nth = static_cast<long>(i * all / count + 1);
            faults.push_back(
                {"allocation " + std::to_string(nth),
                 [=, this](Stage&) { Platform().Fail(PlatformFaults::kMemory, nth, false); },
                 std::nullopt});
        }
        return faults;
    }

    static std::vector<Fault> WithWrongAnswers(const Seen& good) {
        std::set<std::wstring> members;
        for (const std::wstring& line : good.log) members.insert(MemberOf(line));
        std::vector<Fault> faults;
        const std::pair<const char*, com::Variant> kAnswers[] = {
            {"nothing", com::Variant()},
            {"a text", com::Variant(L"nonsense")},
            {"a negative number", com::Variant(std::int32_t{-1})},
            {"no object", com::Variant(static_cast<IDispatch*>(nullptr))}};
        for (const std::wstring& member : members)
            for (const auto& [name, answer] : kAnswers)
                faults.push_back(
                    {Narrow(member) + " answers " + name,
                     [member, answer = answer](Stage&) { Host().Answer(member, answer); },
                     std::nullopt});
        return faults;
    }
};

TEST_P(FaultSweep, HostCallsFail) {
    const Seen good = Prime(Tested());
    Sweep(Tested(), "host call, once", good,
          AtEachCall(good, [](Stage&, auto& member, long nth) { Host().Fail(member, nth); }), {});
    Sweep(Tested(), "host call, for good", good,
          AtEachCall(good, [](Stage&, auto& member, long nth) { Host().FailFrom(member, nth); }),
          {});
}

TEST_P(FaultSweep, DeviceFallsSilent) {
    const Seen good = Prime(Tested());
    const Rules rules{.mayStopWriting = false};
    Sweep(Tested(), "device falls silent", good,
          AtEachCall(good,
                     [](Stage&, auto& member, long nth) {
                         Host().Call(member, nth, [] { Host().Silence(kRight, true); });
                     }),
          rules);
}

TEST_P(FaultSweep, HostAnswersWrongly) {
    const Seen good = Prime(Tested());
    const Rules rules{.successPromised = false,
                      .mayStopWriting = false,
                      .misuseIsWrong = false,
                      .sameContent = false};
    Sweep(Tested(), "wrong answer", good, WithWrongAnswers(good), rules);
}

TEST_P(FaultSweep, OperatorClosesTheWindow) {
    if (!Tested().needsWindow) return;
    const Seen good = Prime(Tested());
    Sweep(Tested(), "window closed", good,
          AtEachCall(good, [](Stage&, auto& member,
                              long nth) { Host().Call(member, nth, [] { CloseAllWindows(); }); }),
          {.mayStopWriting = false});
}

TEST_P(FaultSweep, LastReferenceIsDropped) {
    const Seen good = Prime(Tested());
    Sweep(Tested(), "object let go", good,
          AtEachCall(good,
                     [](Stage& stage, auto& member, long nth) {
                         Host().Call(member, nth, [&stage] { stage.room.Drop(); });
                     }),
          {.mayStopWriting = false});
}

TEST_P(FaultSweep, PlatformCallsFail) {
    const Seen good = Prime(Tested());
    const Rules rules{.successPromised = false, .mayStopWriting = false};
    Sweep(Tested(), "platform call, once", good, AtEachPlatformCall(good, false), rules);
    Sweep(Tested(), "platform call, for good", good, AtEachPlatformCall(good, true), rules);
}

TEST_P(FaultSweep, MemoryIsShort) {
    const Seen good = Prime(Tested());
    Sweep(Tested(), "no memory", good, AtAllocations(good),
          {.successPromised = false, .mayStopWriting = false});
}

std::string NameOf(const ::testing::TestParamInfo<std::size_t>& info) {
    std::string name;
    for (const char* c = Operations()[info.param].name; *c; ++c)
        if (*c != ' ') name += *c;
    return name;
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultSweep,
                         ::testing::Range(std::size_t{0}, Operations().size()), NameOf);

}  // namespace
}  // namespace quillon::test
