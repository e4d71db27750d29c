// Application download on a host that fails: each call of each member in turn.
#include <algorithm>
#include <map>

#include "download_fixture.h"

namespace quillon::test {
namespace {

// The steps of a download, told from the calls that one without faults makes.
enum class Step {
    kFocus,
    kSoftOffLine,
    kFindObjects,
    kCatalogue,
    kFirmware,
    kFindIdentity,
    kIdentity,
    kProgramId,
    kWriteObjects,
    kSettings,
    kValues,
    kReport,
};

struct Expectation {
    const wchar_t* code;
    const wchar_t* state;
};

// What a failure in a step must end in.
Expectation ExpectationOf(Step step) {
    switch (step) {
        case Step::kFocus:
        case Step::kSoftOffLine:
            return {L"8004032B", L"04"};
        case Step::kFindObjects:
        case Step::kIdentity:
        case Step::kProgramId:
        case Step::kWriteObjects:
            return {L"8004032B", L"0C"};
        case Step::kFirmware:
            return {L"80040320", L"0C"};
        case Step::kSettings:
        case Step::kValues:
            return {L"8004032F", L"0C"};
        case Step::kReport:
            return {L"8004032F", L"04"};
        default:
            // Lists end quietly, an identity that is not found is not compared.
            return {L"00000000", L"04"};
    }
}

std::wstring MemberOf(const std::wstring& line) {
    return line.substr(0, line.find(L'('));
}

// The step of every line of the log of a download without faults.
std::vector<Step> StepsOf(const Lines& log) {
    std::vector<Step> steps;
    Step step = Step::kFocus;
    int searches = 0;
    int programIds = 0;
    for (const std::wstring& line : log) {
        const std::wstring member = MemberOf(line);
        if (member == L"IDevice.GoSoftOffLine") step = Step::kSoftOffLine;
        if (member == L"IDevice.Files.get")
            step = ++searches == 1 ? Step::kFindObjects
                   : searches == 2 ? Step::kFindIdentity
                                   : Step::kValues;
        if (member == L"IDevice.XMLSNVTs.get") step = Step::kCatalogue;
        if (member == L"IDevice.SISD.get") step = Step::kFirmware;
        if (member == L"IFile.ValueText.get") step = Step::kIdentity;
        if (member == L"IDevice.ProgramId.get")
            step = ++programIds == 1 ? Step::kProgramId : Step::kSettings;
        if (member == L"IFile.ValueText.put" && step == Step::kProgramId)
            step = Step::kWriteObjects;
        if (member == L"IDevice.Network.get") step = Step::kReport;
        steps.push_back(step);
    }
    return steps;
}

class DownloadFaults : public DownloadTest {
protected:
    void SetUp() override {
        DownloadTest::SetUp();
        WriteSettings("DownLoadCPs=1");
        m_path = Write(AppFile());
    }

    // Every download starts with the process-wide state and the device as new.
    Room& Fresh() {
        ReloadPlugin();
        return WithIdentity("00010000");
    }

    std::wstring m_path;
};

TEST_F(DownloadFaults, EachCallThatFailsEndsTheDownloadAsItsStepSays) {
    const Outcome whole = Run(Fresh(), m_path);
    ExpectSuccess(whole);
    const Lines log = Host().Log();
    const std::vector<Step> steps = StepsOf(log);
    std::map<std::wstring, long> seen;
    for (std::size_t i = 0; i < log.size(); ++i) {
        const std::wstring member = MemberOf(log[i]);
        const long nth = ++seen[member];
        SCOPED_TRACE(Narrow(log[i]) + ", call " + std::to_string(nth));
        Room& room = Fresh();
        Host().Fail(member, nth);
        const Outcome outcome = Run(room, m_path);
        Host().Restore();
        const Expectation expected = ExpectationOf(steps[i]);
        const std::wstring code = expected.code;
        EXPECT_EQ(outcome.reports, Lines{code + L" " + kRight});
        EXPECT_EQ(outcome.state, expected.state);
        EXPECT_EQ(outcome.events, code == L"00000000" ? 1 : 0);
        for (const std::wstring& change : outcome.changes) {
            // Without a catalogue a list stays empty, and so does what is made of it.
            const bool meant =
                std::count(whole.changes.begin(), whole.changes.end(), change) > 0 ||
                (steps[i] == Step::kCatalogue && change == L"IFile.ValueText.put(\"\")");
            EXPECT_TRUE(meant) << Narrow(change);
        }
    }
}

TEST_F(DownloadFaults, MemberThatAlwaysFailsDoesNoHarm) {
    Run(Fresh(), m_path);
    std::map<std::wstring, int> members;
    for (const std::wstring& line : Host().Log()) ++members[MemberOf(line)];
    for (const auto& [member, count] : members) {
        SCOPED_TRACE(Narrow(member));
        Room& room = Fresh();
        Host().FailAlways(member);
        const Outcome outcome = Run(room, m_path);
        Host().Restore();
        const bool untold = member == L"IDevice.Network.get" || member == L"INetwork.Report";
        EXPECT_EQ(outcome.reports.size(), untold ? 0U : 1U);
    }
}

TEST_F(DownloadFaults, ForcingSettingOfAnUnknownProgramIsNoRefusal) {
    WriteSettings("ForceCustomerID=1");
    for (const char* identity : {"00020000", "00010001"}) {
        SCOPED_TRACE(identity);
        ReloadPlugin();
        Room& room = WithIdentity(identity);
        Host().Fail(L"IDevice.ProgramId.get");
        const Outcome outcome = Run(room, m_path);
        ExpectOutcome(outcome, L"8004032B");
        EXPECT_EQ(outcome.changes, NothingWritten());
    }
}

TEST_F(DownloadFaults, ReportOfAFailureIsNotTriedAgain) {
    for (const wchar_t* member : {L"INetwork.Report", L"IDevice.Network.get"}) {
        SCOPED_TRACE(Narrow(member));
        Room& room = Fresh();
        Host().FailAlways(L"IDevice.ProgramId.get");
        Host().FailAlways(member);
        const Outcome outcome = Run(room, m_path);
        EXPECT_EQ(outcome.reports, Lines());
        EXPECT_EQ(outcome.events, 0);
        EXPECT_EQ(Host().Count(member), 1);
    }
}

TEST_F(DownloadFaults, EntryTextsThatAreNoIdentityDoNoHarm) {
    for (const wchar_t* text : {L"", L"0", L"0001", L"00010", L"000100", L"xyz", L"0001002A00"}) {
        SCOPED_TRACE(Narrow(text));
        Room& room = Fresh();
        Host().Answer(L"IFile.ValueText.get", std::wstring_view(text));
        AllowMisuse();
        const Outcome outcome = Run(room, m_path);
        Host().Restore();
        EXPECT_EQ(outcome.reports.size(), 1U);
    }
}

TEST_F(DownloadFaults, AnswersOfWrongTypesDoNoHarm) {
    const com::Variant answers[] = {com::Variant(), com::Variant(L"nonsense"),
                                    com::Variant(std::int32_t{-1}),
                                    com::Variant(static_cast<IDispatch*>(nullptr))};
    AllowMisuse();
    for (const wchar_t* member :
         {L"IDevice.Files.get", L"IFiles.Count.get", L"IFiles.Item", L"IFile.Identifier.get",
          L"IDevice.XMLSNVTs.get", L"IDevice.NetworkVariables.get", L"Points.Item",
          L"IDevice.SISD.get"})
        for (const com::Variant& answer : answers) {
            SCOPED_TRACE(Narrow(member));
            Room& room = Fresh();
            Host().Answer(member, answer);
            const Outcome outcome = Run(room, m_path);
            Host().Restore();
            EXPECT_EQ(outcome.reports.size(), 1U);
        }
}

TEST_F(DownloadFaults, SilentDeviceIsReportedOnce) {
    Room& room = Fresh();
    Host().Silence(kRight, true);
    EXPECT_EQ(Run(room, m_path).reports, Lines{std::wstring(L"8004032B ") + kRight});
}

}  // namespace
}  // namespace quillon::test
