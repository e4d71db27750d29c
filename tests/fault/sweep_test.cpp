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

// What happens at the nth call of a member of the host.
void FailOnce(Stage&, const std::wstring& member, long nth) {
    Host().Fail(member, nth);
}

void FailForGood(Stage&, const std::wstring& member, long nth) {
    Host().FailFrom(member, nth);
}

void FallSilent(Stage&, const std::wstring& member, long nth) {
    Host().Call(member, nth, [] { Host().Silence(kRight, true); });
}

void CloseWindow(Stage&, const std::wstring& member, long nth) {
    Host().Call(member, nth, [] { CloseAllWindows(); });
}

void LetGo(Stage& stage, const std::wstring& member, long nth) {
    Host().Call(member, nth, [&stage] { stage.room.Drop(); });
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
                              [=](Stage& stage) { arm(stage, member, nth); }, i,
                              member == L"IDevice.PollingPID.get"});
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
                              std::nullopt, function == "GetPrivateProfileStringA"});
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
                     std::nullopt, false});
        return faults;
    }
};

TEST_P(FaultSweep, EveryKindOfFault) {
    const Operation& operation = Tested();
    const Seen good = Prime(operation);
    const Rules rules;
    const Rules goesOn{.mayStopWriting = false};
    // A settings file that cannot be read reads as an empty one.
    const Rules platform{.successPromised = false, .mayStopWriting = false, .wholeOrTold = false};
    const Rules anything{.successPromised = false,
                         .mayStopWriting = false,
                         .misuseIsWrong = false,
                         .sameContent = false,
                         .wholeOrTold = false,
                         .nothingOld = false};
    Sweep(operation, "host call, once", good, AtEachCall(good, FailOnce), rules);
    Sweep(operation, "host call, for good", good, AtEachCall(good, FailForGood), rules);
    Sweep(operation, "device falls silent", good, AtEachCall(good, FallSilent), goesOn);
    Sweep(operation, "wrong answer", good, WithWrongAnswers(good), anything);
    if (operation.needsWindow)
        Sweep(operation, "window closed", good, AtEachCall(good, CloseWindow), goesOn);
    Sweep(operation, "object let go", good, AtEachCall(good, LetGo), goesOn);
    Sweep(operation, "platform call, once", good, AtEachPlatformCall(good, false), platform);
    Sweep(operation, "platform call, for good", good, AtEachPlatformCall(good, true), platform);
    Sweep(operation, "no memory", good, AtAllocations(good, kMostAllocations), kWithoutMemory);
    ExpectWorks(operation, good);
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
