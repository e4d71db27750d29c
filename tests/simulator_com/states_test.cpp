#include "host_fixture.h"

namespace {

class States : public Host {
public:
    using Action = HRESULT (STDMETHODCALLTYPE IDevice::*)(VARIANT_BOOL*);

    // Whether the action was done, and the state after it.
    static std::pair<bool, std::wstring> After(const Ptr<IDevice>& device, Action action) {
        const bool done = ValueOf<VARIANT_BOOL>(device, action) == VARIANT_TRUE;
        return {done, TextOf(device, &IDevice::get_State)};
    }
};

using Done = std::pair<bool, std::wstring>;

TEST_F(States, ResetEndsSoftOffLine) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(After(device, &IDevice::GoSoftOffLine), Done(true, L"0C"));
    EXPECT_EQ(After(device, &IDevice::Reset), Done(true, L"04"));
}

TEST_F(States, ResetDoesNotEndHardOffLine) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(After(device, &IDevice::GoHardOffLine), Done(true, L"06"));
    EXPECT_EQ(After(device, &IDevice::Reset), Done(true, L"06"));
    EXPECT_EQ(After(device, &IDevice::GoSoftOffLine), Done(false, L"06"));
    EXPECT_EQ(After(device, &IDevice::GoOnLine), Done(true, L"04"));
}

TEST_F(States, RebootEndsSoftOffLine) {
    const auto device = Bound(kFirst);
    After(device, &IDevice::GoSoftOffLine);
    ASSERT_EQ(device->Reboot(), S_OK);
    EXPECT_EQ(TextOf(device, &IDevice::get_State), L"04");
}

TEST_F(States, UnconfiguredRunsAgainOnlyWhenConfigured) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(After(device, &IDevice::GoUnConfigured), Done(true, L"02"));
    EXPECT_EQ(After(device, &IDevice::GoOnLine), Done(false, L"02"));
    EXPECT_EQ(After(device, &IDevice::GoSoftOffLine), Done(false, L"02"));
    EXPECT_EQ(After(device, &IDevice::GoConfigured), Done(true, L"04"));
}

TEST_F(States, ApplicationlessNeedsAnApplicationFirst) {
    const auto device = Bound(kAppless);
    EXPECT_EQ(After(device, &IDevice::GoConfigured), Done(false, L"03"));
    EXPECT_EQ(After(device, &IDevice::GoUnConfigured), Done(false, L"03"));
    WriteFileText(folder.File(L"new.apb"), "application");
    long result = 1;
    ASSERT_EQ(
        device->ApplicationDownload(Bstr(folder.File(L"new.apb")).Get(), VARIANT_TRUE, 0, &result),
        S_OK);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(TextOf(device, &IDevice::get_State), L"02");
}

TEST_F(States, GoingApplessIsSeenByAllDeviceObjects) {
    const auto device = Bound(kFirst);
    EXPECT_EQ(After(device, &IDevice::GoAppless), Done(true, L"03"));
    EXPECT_EQ(TextOf(Bound(kFirst), &IDevice::get_State), L"03");
}

TEST_F(States, AbsentDeviceDoesNothingAndGrantsNoFocus) {
    const auto device = Bound(kAbsent);
    for (const auto action : {&IDevice::Reset, &IDevice::ClearStatus, &IDevice::GoConfigured,
                              &IDevice::GoUnConfigured, &IDevice::GoOnLine, &IDevice::GoSoftOffLine,
                              &IDevice::GoHardOffLine, &IDevice::GoAppless})
        EXPECT_EQ(After(device, action), Done(false, L""));
    VARIANT_BOOL granted = VARIANT_TRUE;
    ASSERT_EQ(device->Focus(nullptr, &granted), S_OK);
    EXPECT_EQ(granted, VARIANT_FALSE);
    EXPECT_EQ(TextOf(device, &IDevice::get_Name), L"Absent");
}

TEST_F(States, PresentDeviceGrantsFocus) {
    VARIANT_BOOL granted = VARIANT_FALSE;
    ASSERT_EQ(Bound(kFirst)->Focus(nullptr, &granted), S_OK);
    EXPECT_EQ(granted, VARIANT_TRUE);
}

TEST_F(States, SilentDeviceDoesNothingUntilItAnswersAgain) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(control->Silence(Bstr(L"0123456789ab").Get(), VARIANT_TRUE), S_OK);
    EXPECT_EQ(After(device, &IDevice::GoSoftOffLine), Done(false, L"04"));
    ASSERT_EQ(control->Silence(Bstr(kFirst).Get(), VARIANT_FALSE), S_OK);
    EXPECT_EQ(After(device, &IDevice::GoSoftOffLine), Done(true, L"0C"));
}

TEST_F(States, WinksAndResetsShowInTheStatisticsUntilCleared) {
    const auto device = Bound(kFirst);
    ASSERT_EQ(device->Wink(), S_OK);
    ASSERT_EQ(device->Wink(), S_OK);
    After(device, &IDevice::Reset);
    EXPECT_THAT(TextOf(device, &IDevice::get_Statistics),
                testing::HasSubstr(L"Resets: 1; winks: 2;"));
    ASSERT_EQ(device->ClearStyatistics(), S_OK);
    EXPECT_THAT(TextOf(device, &IDevice::get_Statistics),
                testing::HasSubstr(L"Resets: 0; winks: 0;"));
}

TEST_F(States, NotificationsAreNoted) {
    const auto device = Bound(kFirst);
    Bstr name(L"Hall"), status(L"busy"), error(L"7"), point(L"3");
    long reason = 1;
    ASSERT_EQ(device->ChangedName(name.InOut(), &reason), S_OK);
    ASSERT_EQ(device->ChangedStatus(status.InOut(), &reason), S_OK);
    ASSERT_EQ(device->ChangedXmitErr(error.InOut(), &reason), S_OK);
    ASSERT_EQ(device->NVCPChanged(point.InOut()), S_OK);
    EXPECT_THAT(TextOf(device, &IDevice::get_Statistics),
                testing::HasSubstr(L"points changed: 1; network variables: 0; name: Hall; status: "
                                   L"busy; transmit error: 7"));
}

TEST_F(States, ReportIsRecordedWithTheDevicesNeuronId) {
    const auto device = Bound(kFirst);
    long code = static_cast<long>(0x80040322);
    IDevice* told = device.Get();
    ASSERT_EQ(network->Report(&code, &told), S_OK);
    code = 0;
    ASSERT_EQ(network->Report(&code, &told), S_OK);
    EXPECT_EQ(Reports(), L"80040322 0123456789AB\n00000000 0123456789AB\n");
    EXPECT_EQ(Count(L"INetwork.Report"), 2);
    EXPECT_EQ(Count(L"IDevice.NeuronID.get"), 0);
}

TEST_F(States, ReportWithoutADeviceIsRefused) {
    long code = 0;
    IDevice* none = nullptr;
    EXPECT_EQ(network->Report(&code, &none), kMisuse);
    EXPECT_EQ(network->Report(&code, nullptr), kMisuse);
    EXPECT_EQ(Reports(), L"");
    EXPECT_NE(Misuse(), L"");
}

}  // namespace
