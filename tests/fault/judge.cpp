// The rules by which a run with a fault is judged.
#include <algorithm>

#include "fault/sweep.h"

namespace quillon::test {

namespace {

// Documents that end in the same closing tag.
bool EndsAlike(const std::string& one, const std::string& other) {
    constexpr std::size_t kClosing = 16;
    const auto end = [&](const std::string& text) {
        return text.substr(text.size() - std::min(text.size(), kClosing));
    };
    return !one.empty() && end(one) == end(other);
}

// What an operation that stops may not have gone beyond.
void JudgeOrder(const Fault& fault, const Seen& good, const Seen& seen) {
    const Lines before(good.log.begin(),
                       good.log.begin() + static_cast<std::ptrdiff_t>(*fault.call) + 1);
    EXPECT_LE(seen.changes.size(), Changes(before).size()) << "written behind the failing call";
}

void JudgeChanges(const Operation& operation, const Seen& good, const Seen& seen) {
    // Without a catalogue a downloaded list is empty.
    const std::wstring emptied = L"IFile.ValueText.put(\"\")";
    for (const std::wstring& change : seen.changes)
        EXPECT_TRUE(std::count(good.changes.begin(), good.changes.end(), change) > 0 ||
                    (operation.putsBack && change == operation.putsBack) ||
                    (!operation.stops && change == emptied))
            << "written: " << Narrow(change);
    EXPECT_LE(seen.changes.size(), good.changes.size() + (operation.putsBack ? 1u : 0u));
    EXPECT_TRUE(good.printed.starts_with(seen.printed)) << "printed: " << seen.printed;
}

void JudgeFiles(const Operation& operation, const Rules& rules, const Seen& good,
                const Seen& seen) {
    for (const auto& [name, text] : seen.files) {
        const auto known = good.files.find(name);
        ASSERT_NE(known, good.files.end()) << "left behind: " << Narrow(name);
        const bool leavesOut = operation.leavesOut && rules.mayLeaveOut;
        EXPECT_TRUE(text == known->second || text == kOldFile ||
                    (leavesOut && EndsAlike(text, known->second)))
            << "half written: " << Narrow(name);
    }
}

// What tells of a success does so of the whole alone.
void JudgeReport(const Operation& operation, const Fault& fault, const Seen& good,
                 const Seen& seen) {
    // Without a catalogue a list of the profile is empty, and the load succeeds.
    const bool emptiesList = fault.name.starts_with("IDevice.XMLSNVTs.get");
    if (!good.reports.empty() && seen.reports == good.reports && !emptiesList) {
        EXPECT_EQ(seen.changes, good.changes) << "reported as done";
    }
    if (!good.printed.empty() && seen.boxes == good.boxes) {
        EXPECT_EQ(seen.printed, good.printed) << "shown as printed";
    }
    if (operation.leavesOut && KindOf(good, seen) == OutcomeKind::kQuiet) {
        for (const auto& [name, text] : seen.files)
            EXPECT_TRUE(text != kOldFile || good.files.at(name) == kOldFile)
                << "not written, in silence: " << Narrow(name);
    }
}

}  // namespace

OutcomeKind KindOf(const Seen& good, const Seen& seen) {
    if (seen.SameOutcome(good)) return OutcomeKind::kUntouched;
    if (FAILED(seen.result)) return OutcomeKind::kCode;
    if (seen.boxes != good.boxes || seen.reports != good.reports) return OutcomeKind::kTold;
    return OutcomeKind::kQuiet;
}

void Judge(const Operation& operation, const Fault& fault, const Rules& rules, const Seen& good,
           const Seen& seen) {
    if (operation.quiet && rules.successPromised) {
        EXPECT_EQ(seen.result, S_OK);
    }
    if (rules.misuseIsWrong) {
        EXPECT_EQ(seen.misuse, Lines());
    }
    // What the host could not tell of is not known; settings say which label shows what.
    if (rules.nothingOld && SUCCEEDED(seen.result) && !fault.ofSettings) {
        EXPECT_EQ(seen.oldShown, Lines()) << "shown as current";
    }
    if (rules.sameContent && !(operation.bySettings && fault.ofSettings)) {
        JudgeChanges(operation, good, seen);
        JudgeFiles(operation, rules, good, seen);
    }
    if (rules.wholeOrTold) JudgeReport(operation, fault, good, seen);
    if (operation.stops && rules.mayStopWriting && fault.call) JudgeOrder(fault, good, seen);
}

}  // namespace quillon::test
