// What the device object tells its window, and what the window reads again.
#include "window/window_test.h"

namespace quillon::test {
namespace {

class WindowEvents : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        m_device = MakeDevice();
    }
    void TearDown() override {
        m_device.Reset();
        WindowTest::TearDown();
    }
    using Notice = HRESULT (STDMETHODCALLTYPE IDevice::*)(BSTR*, long*);
    void Tell(Notice notice) {
        com::Bstr text(L"text");
        long reason = 0;
        EXPECT_EQ((m_device.As<IDevice>().Get()->*notice)(text.InOut(), &reason), S_OK);
    }
    void TellPoint(std::wstring_view point) {
        com::Bstr text(point);
        EXPECT_EQ(m_device.As<IDevice>()->NVCPChanged(text.InOut()), S_OK);
    }
    const com::Ptr<CDevice>& Device() const { return m_device; }
    static HWND Monitor(const Window& window) { return PageItem(*window, kTabTest, IDC_LVMONITOR); }

private:
    com::Ptr<CDevice> m_device;
};

TEST_F(WindowEvents, ChangedNameRefreshesTheName) {
    const Window window = ShowFocus(Device());
    Host().Answer(L"IDevice.Name.get", L"Renamed & new");
    Tell(&IDevice::ChangedName);
    EXPECT_EQ(Panel(*window, 1), L"Renamed & new");
}

TEST_F(WindowEvents, ChangedStatusRefreshesTheState) {
    const Window window = ShowFocus(Device());
    Host().Answer(L"IDevice.State.get", L"06");
    Tell(&IDevice::ChangedStatus);
    EXPECT_EQ(window->StateNumberShown(), 6);
    EXPECT_EQ(WindowText(window->Item(IDC_LBLDEVSTATE)), L"Hard Off Line");
    EXPECT_EQ(Panel(*window, 2), L"Hard Off Line");
}

TEST_F(WindowEvents, ChangedXmitErrRefreshesNothing) {
    const Window window = ShowFocus(Device());
    Host().Clear();
    Tell(&IDevice::ChangedXmitErr);
    EXPECT_EQ(Host().Log().size(), 1u) << "the notice itself";
}

TEST_F(WindowEvents, ChangedApplicationRefreshesNameGeneralDataAndLists) {
    const Window window = ShowFocus(Device());
    WriteSettings(Section("TestNVIs", {"1"}));
    Host().Answer(L"IDevice.Name.get", L"Another");
    Host().Answer(L"IDevice.ProgramId.get", L"9000");
    Device()->RaiseChangedApplication();
    EXPECT_EQ(Panel(*window, 1), L"Another");
    EXPECT_EQ(PageText(*window, kTabGeneralData, IDC_LBLPROGRAMID), L"9000");
    EXPECT_EQ(Rows(Monitor(window)).size(), 1u);
}

TEST_F(WindowEvents, ChangedPointRefreshesItsRowInEveryList) {
    WriteSettings(Section("TestNVIs", {"0", "7"}) + Section("CommissioningNCIs", {"7"}) +
                  Section("AdvancedNCIs", {"7"}) + Section("CommissioningCPs", {"7"}));
    const Window window = ShowFocus(Device());
    Host().Answer(L"Point.FormattedValue.get", L"new");
    TellPoint(L"NVS\\7");
    EXPECT_NE(CellText(Monitor(window), 0, 1), L"new");
    EXPECT_EQ(CellText(Monitor(window), 1, 1), L"new");
    EXPECT_EQ(CellText(PageItem(*window, kTabTune, IDC_LVCPS), 0, 1), L"new");
    EXPECT_EQ(CellText(PageItem(*window, kTabSetup, IDC_LVADVANCEDCPS), 0, 1), L"new");
}

TEST_F(WindowEvents, PropertyAndVariableWithTheSameKeyAreToldApart) {
    WriteSettings(Section("CommissioningNCIs", {"1"}) + Section("CommissioningCPs", {"1"}));
    const Window window = ShowFocus(Device());
    const HWND list = PageItem(*window, kTabTune, IDC_LVCPS);
    Host().Answer(L"Point.FormattedValue.get", L"new");
    TellPoint(L"CPS\\1");
    EXPECT_EQ(CellText(list, 0, 1), L"22.50 degrees Celsius");
    EXPECT_EQ(CellText(list, 1, 1), L"new");
    TellPoint(L"NVS\\1");
    EXPECT_EQ(CellText(list, 0, 1), L"new");
}

TEST_F(WindowEvents, EqualRowsAreAllRefreshed) {
    WriteSettings(Section("TestNVIs", {"1", "0", "1"}));
    const Window window = ShowFocus(Device());
    Host().Answer(L"Point.FormattedValue.get", L"new");
    TellPoint(L"NVS\\1");
    EXPECT_EQ(CellText(Monitor(window), 0, 1), L"new");
    EXPECT_EQ(CellText(Monitor(window), 1, 1), L"21.00 degrees Celsius");
    EXPECT_EQ(CellText(Monitor(window), 2, 1), L"new");
}

TEST_F(WindowEvents, PointThatNoRowShowsIsNotLookedUp) {
    const Window window = ShowFocus(Device());
    Host().Clear();
    for (const wchar_t* point : {L"NVS\\99", L"CPS\\", L"", L"anything else"}) TellPoint(point);
    EXPECT_EQ(Host().Count(L"Points.Item"), 0);
}

TEST_F(WindowEvents, SilentPointKeepsTheShownTextGreyedUntilItIsRead) {
    const Window window = ShowFocus(Device());
    Host().Silence(kLeft, true);
    TellPoint(L"NVS\\0");
    EXPECT_EQ(CellText(Monitor(window), 0, 1), L"21.00 degrees Celsius");
    EXPECT_TRUE(IsRowGreyed(Monitor(window), 0));
    EXPECT_FALSE(IsRowGreyed(Monitor(window), 1));
    Host().Silence(kLeft, false);
    TellPoint(L"NVS\\0");
    EXPECT_FALSE(IsRowGreyed(Monitor(window), 0));
}

TEST_F(WindowEvents, FailingHostLeavesEverythingAsItIs) {
    const Window window = ShowFocus(Device());
    const auto rows = Rows(Monitor(window));
    for (const wchar_t* member : {L"Point.Value.get", L"Points.Item", L"IDevice.State.get"})
        Host().FailAlways(member);
    TellPoint(L"NVS\\0");
    Tell(&IDevice::ChangedStatus);
    EXPECT_EQ(Rows(Monitor(window)), rows);
    EXPECT_TRUE(IsRowGreyed(Monitor(window), 0));
    EXPECT_EQ(window->StateNumberShown(), 4);
}

TEST_F(WindowEvents, ClosedWindowHearsNothing) {
    const Window window = ShowFocus(Device());
    window->Unload();
    Host().Clear();
    Device()->RaiseChangedApplication();
    TellPoint(L"NVS\\0");
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(WindowEvents, OtherDevicesWindowHearsNothing) {
    const Window left = ShowFocus(Device());
    const Window right = ShowFocus(MakeDevice(kRight));
    Host().Answer(L"IDevice.State.get", L"06");
    Tell(&IDevice::ChangedStatus);
    EXPECT_EQ(left->StateNumberShown(), 6);
    EXPECT_EQ(right->StateNumberShown(), 4);
}

TEST_F(WindowEvents, WindowClosedByAnEventHandlerInFrontOfItHearsNothingMore) {
    Window window;
    {
        Subscription first(Device().As<IDevice>().Get(), [&](DISPID, DISPPARAMS&) {
            if (window) window->Unload();
            return S_OK;
        });
        window = ShowFocus(Device());
        Tell(&IDevice::ChangedStatus);
        EXPECT_FALSE(window->IsOpen());
    }
}

// ---- a list that is built anew while one of its rows is read

TEST_F(WindowEvents, ValueReadForARowThatIsGoneIsWrittenIntoNoOther) {
    const Window window = ShowFocus(Device());
    WriteSettings(Section("TestNVIs", {"3"}));
    Host().Call(L"Point.Value.get", 1, [&] { Device()->RaiseChangedApplication(); });
    window->Tick(Timer::kTmrNvs);
    EXPECT_EQ(Rows(Monitor(window)),
              (std::vector<ShownRow>{{L"nviFanSpeedCmd", L"50.0 1", L"nvi"}}));
}

TEST_F(WindowEvents, PointReadForARowThatIsGoneIsWrittenIntoNoOther) {
    const Window window = ShowFocus(Device());
    WriteSettings(Section("TestNVIs", {"3"}));
    Host().Call(L"Point.Value.get", 1, [&] { Device()->RaiseChangedApplication(); });
    TellPoint(L"NVS\\0");
    EXPECT_EQ(Rows(Monitor(window)),
              (std::vector<ShownRow>{{L"nviFanSpeedCmd", L"50.0 1", L"nvi"}}));
}

}  // namespace
}  // namespace quillon::test
