// Change notices of the host, and the events that the plug-in makes of them.
#include <algorithm>

#include "support/host_test.h"

namespace quillon::test {
namespace {

struct Notice {
    const wchar_t* name;
    DISPID event;
    HRESULT (STDMETHODCALLTYPE IDevice::*member)(BSTR*, long*);
};

const Notice kNotices[] = {
    {L"ChangedName", 1, &IDevice::ChangedName},
    {L"ChangedStatus", 2, &IDevice::ChangedStatus},
    {L"ChangedXmitErr", 5, &IDevice::ChangedXmitErr},
};
constexpr DISPID kPointChanged = 4;
constexpr VARTYPE kTextByReference = VT_BYREF | VT_BSTR;

class Events : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        OpenSmall();
        m_room = &AddRoom(kLeft);
    }

    IDevice* Device() { return m_room->device.Get(); }
    IUnknown* Source() { return m_room->device.Get(); }
    HRESULT Tell(const Notice& notice, com::Bstr& text) {
        long reason = 77;
        return (Device()->*notice.member)(text.InOut(), &reason);
    }
    static std::wstring HostName(const Notice& notice) {
        return std::wstring(L"IDevice.") + notice.name;
    }

    Room* m_room = nullptr;
};

TEST_F(Events, NoticeIsForwardedWithBothArgumentsThenRaisedWithTheFirst) {
    for (const Notice& notice : kNotices) {
        Host().Clear();
        Lines logAtEvent;
        std::vector<Event> events;
        Subscription subscription(Source(), [&](DISPID id, DISPPARAMS& arguments) {
            events.push_back(EventOf(id, arguments));
            logAtEvent = Host().Log();
            return S_OK;
        });
        com::Bstr text(L"new text");
        EXPECT_EQ(Tell(notice, text), S_OK);
        EXPECT_EQ(events, (std::vector<Event>{{notice.event, L"new text", kTextByReference}}));
        EXPECT_EQ(logAtEvent, Lines{HostName(notice) + L"(\"new text\", 77)"});
        EXPECT_EQ(Host().Log(), logAtEvent);
    }
}

TEST_F(Events, FailingForwardRaisesNothing) {
    Subscription subscription(Source());
    for (const Notice& notice : kNotices) {
        Host().Fail(HostName(notice));
        com::Bstr text(L"x");
        EXPECT_EQ(Tell(notice, text), kFault);
    }
    EXPECT_TRUE(subscription.Events().empty());
}

TEST_F(Events, NoticeWithoutArgumentsFailsAsTheHostSays) {
    Subscription subscription(Source());
    EXPECT_EQ(Device()->ChangedName(nullptr, nullptr), E_POINTER);
    EXPECT_TRUE(subscription.Events().empty());
}

TEST_F(Events, PointChangeIsRaisedAndNotForwarded) {
    Subscription subscription(Source());
    com::Bstr point(L"nvoSpaceTemp");
    EXPECT_EQ(Device()->NVCPChanged(point.InOut()), S_OK);
    EXPECT_EQ(subscription.Events(),
              (std::vector<Event>{{kPointChanged, L"nvoSpaceTemp", kTextByReference}}));
    EXPECT_EQ(Host().Log(), Lines());
}

TEST_F(Events, WhatASinkWritesBackReachesTheCaller) {
    Subscription subscription(Source(), [](DISPID, DISPPARAMS& arguments) {
        BSTR* text = arguments.rgvarg[0].pbstrVal;
        SysFreeString(*text);
        *text = SysAllocString(L"written back");
        return S_OK;
    });
    for (const Notice& notice : kNotices) {
        com::Bstr text(L"given");
        EXPECT_EQ(Tell(notice, text), S_OK);
        EXPECT_EQ(text.Text(), L"written back");
    }
    com::Bstr point(L"given");
    EXPECT_EQ(Device()->NVCPChanged(point.InOut()), S_OK);
    EXPECT_EQ(point.Text(), L"written back");
}

TEST_F(Events, WriteBackReachesALateBoundCaller) {
    Subscription subscription(Source(), [](DISPID, DISPPARAMS& arguments) {
        BSTR* text = arguments.rgvarg[0].pbstrVal;
        SysFreeString(*text);
        *text = SysAllocString(L"written back");
        return S_OK;
    });
    com::Variant variable(L"given");
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = VT_BYREF | VT_VARIANT;
    argument.pvarVal = &variable;
    DISPPARAMS params{&argument, nullptr, 1, 0};
    const DISPID nvcpChanged = 61;
    EXPECT_EQ(Device()->Invoke(nvcpChanged, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr,
                               nullptr),
              S_OK);
    EXPECT_EQ(variable.AsText(), L"written back");
}

TEST_F(Events, FailingSinkDisturbsNoOther) {
    Subscription before(Source());
    Subscription failing(Source(), [](DISPID, DISPPARAMS&) { return kFault; });
    Subscription after(Source());
    com::Bstr text(L"x");
    EXPECT_EQ(Tell(kNotices[0], text), S_OK);
    EXPECT_EQ(before.Events().size(), 1U);
    EXPECT_EQ(after.Events().size(), 1U);
}

TEST_F(Events, SinkThatLetsGoDuringAnEventDisturbsNoOther) {
    std::unique_ptr<Subscription> leaving;
    leaving = std::make_unique<Subscription>(Source(), [&](DISPID, DISPPARAMS&) {
        leaving->Leave();
        return S_OK;
    });
    Subscription after(Source());
    com::Bstr text(L"x");
    EXPECT_EQ(Tell(kNotices[0], text), S_OK);
    EXPECT_EQ(Tell(kNotices[0], text), S_OK);
    EXPECT_EQ(after.Events().size(), 2U);
}

TEST_F(Events, SinkThatDropsTheDeviceDuringAnEventGoesWithoutHarm) {
    Room& room = *m_room;
    int raised = 0;
    auto dropping = std::make_unique<Subscription>(Source(), [&](DISPID, DISPPARAMS&) {
        ++raised;
        room.Drop();
        return S_OK;
    });
    IDevice* const device = Device();
    com::Bstr text(L"x");
    long reason = 0;
    EXPECT_EQ(device->ChangedStatus(text.InOut(), &reason), S_OK);
    EXPECT_EQ(raised, 1);
    dropping.reset();
    EXPECT_EQ(Host().LiveObjects(), 1) << "the network alone";
}

TEST_F(Events, UnsubscribedSinkHearsNothing) {
    Subscription subscription(Source());
    subscription.Leave();
    com::Bstr text(L"x");
    EXPECT_EQ(Tell(kNotices[0], text), S_OK);
    EXPECT_TRUE(subscription.Events().empty());
}

TEST_F(Events, EventsOfOneDeviceDoNotReachAnothersSinks) {
    Room& right = AddRoom(kRight);
    Subscription other(right.device.Get());
    com::Bstr text(L"x");
    EXPECT_EQ(Tell(kNotices[0], text), S_OK);
    EXPECT_TRUE(other.Events().empty());
}

TEST_F(Events, PointChangeWithoutATextRaisesAnEmptyOne) {
    Subscription subscription(Source());
    EXPECT_EQ(Device()->NVCPChanged(nullptr), S_OK);
    EXPECT_EQ(subscription.Events(), (std::vector<Event>{{kPointChanged, L"", kTextByReference}}));
}

}  // namespace
}  // namespace quillon::test
