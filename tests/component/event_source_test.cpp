#include "com/event_source.h"

#include "component/probe.h"

namespace quillon {
namespace {

using com::Bstr;
using com::Ptr;
using com::Variant;
using test::Sink;
using test::Source;

constexpr DISPID kNamed = 1;
constexpr DISPID kPlain = 3;

class EventSourceTest : public test::ProbeTest {
protected:
    static Ptr<IConnectionPoint> PointOf(const Ptr<Source>& source) {
        Ptr<IConnectionPoint> point;
        EXPECT_EQ(source->FindConnectionPoint(DIID___CDevice, point.Out()), S_OK);
        return point;
    }
    Ptr<IConnectionPoint> Point() const { return PointOf(source); }

    DWORD Advise(const Ptr<Sink>& sink) const {
        DWORD cookie = 0;
        EXPECT_EQ(Point()->Advise(sink.Get(), &cookie), S_OK);
        return cookie;
    }
    // A sink that notes its name at each event, and then does what is given.
    DWORD Subscribe(
        wchar_t name, std::function<HRESULT()> then = [] { return S_OK; }) {
        return Advise(com::Make<Sink>([this, name, then](DISPID, DISPPARAMS&) {
            told += name;
            return then();
        }));
    }

    Ptr<Source> source = com::Make<Source>();
    std::wstring told;
};

TEST_F(EventSourceTest, SubscribersAreToldInTheOrderInWhichTheyJoined) {
    Subscribe(L'a');
    Subscribe(L'b');
    Subscribe(L'c');
    source->Raise(kPlain);
    EXPECT_EQ(told, L"abc");
}

TEST_F(EventSourceTest, FailingSubscriberDisturbsNobody) {
    for (const HRESULT result : {E_FAIL, DISP_E_MEMBERNOTFOUND, DISP_E_EXCEPTION})
        Subscribe(L'x', [result] { return result; });
    Subscribe(L'b');
    source->Raise(kPlain);
    source->Raise(kPlain);
    EXPECT_EQ(told, L"xxxbxxxb");
}

TEST_F(EventSourceTest, SubscriberMayLetGoDuringTheEvent) {
    DWORD cookie = 0;
    cookie = Subscribe(L'a', [&] { return Point()->Unadvise(cookie); });
    Subscribe(L'b');
    source->Raise(kPlain);
    source->Raise(kPlain);
    EXPECT_EQ(told, L"abb");
}

TEST_F(EventSourceTest, SubscriberLetGoOfByAnEarlierOneIsNotToldAnyMore) {
    DWORD second = 0;
    Subscribe(L'a', [&] { return Point()->Unadvise(second); });
    second = Subscribe(L'b');
    Subscribe(L'c');
    source->Raise(kPlain);
    EXPECT_EQ(told, L"ac");
}

TEST_F(EventSourceTest, SubscriberThatJoinsDuringAnEventIsToldOfTheNext) {
    bool joined = false;
    Subscribe(L'a', [&] {
        if (!std::exchange(joined, true)) Subscribe(L'n');
        return S_OK;
    });
    Subscribe(L'b');
    source->Raise(kPlain);
    EXPECT_EQ(told, L"ab");
    source->Raise(kPlain);
    EXPECT_EQ(told, L"ababn");
}

TEST_F(EventSourceTest, EventWithinAnEventReachesEverybody) {
    int depth = 0;
    Subscribe(L'a', [&] {
        if (depth++ == 0) source->Raise(kPlain);
        return S_OK;
    });
    Subscribe(L'b');
    source->Raise(kPlain);
    EXPECT_EQ(told, L"aabb");
}

TEST_F(EventSourceTest, SourceLetGoOfDuringItsEventLivesUntilAllWereTold) {
    Subscribe(L'a', [&] {
        source.Reset();
        return S_OK;
    });
    Subscribe(L'b');
    source->Raise(kPlain);
    EXPECT_EQ(told, L"ab");
    EXPECT_EQ(test::g_probes, 0);
}

TEST_F(EventSourceTest, SinkThatHoldsItsSourceEndsWithItsSubscription) {
    const Ptr<IConnectionPoint> point = Point();
    const DWORD cookie = Subscribe(L'a', [point] { return S_OK; });
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    source->Raise(kPlain);
    EXPECT_EQ(told, L"");
}

TEST_F(EventSourceTest, ArgumentsComeByReferenceAndWhatASinkWritesIsSeenByTheRest) {
    Bstr name(L"old");
    std::wstring seen;
    Advise(com::Make<Sink>([](DISPID event, DISPPARAMS& params) {
        EXPECT_EQ(event, kNamed);
        EXPECT_EQ(params.cArgs, 1u);
        EXPECT_EQ(params.rgvarg[0].vt, VT_BYREF | VT_BSTR);
        SysReAllocString(params.rgvarg[0].pbstrVal, L"new");
        return S_OK;
    }));
    Advise(com::Make<Sink>([&](DISPID, DISPPARAMS& params) {
        seen = *params.rgvarg[0].pbstrVal;
        return S_OK;
    }));
    VARIANT argument;
    argument.vt = VT_BYREF | VT_BSTR;
    argument.pbstrVal = name.InOut();
    source->Raise(kNamed, {argument});
    EXPECT_EQ(seen, L"new");
    EXPECT_EQ(name.View(), L"new");
}

TEST_F(EventSourceTest, SeveralArgumentsArriveLastFirst) {
    std::wstring order;
    Advise(com::Make<Sink>([&](DISPID, DISPPARAMS& params) {
        for (UINT i = 0; i < params.cArgs; ++i) order += std::to_wstring(params.rgvarg[i].lVal);
        return S_OK;
    }));
    source->Raise(kNamed, {Variant(1), Variant(2)});
    EXPECT_EQ(order, L"21");
}

TEST_F(EventSourceTest, BadCookiesAndBadSinksAreRefused) {
    const Ptr<IConnectionPoint> point = Point();
    EXPECT_EQ(point->Unadvise(0), CONNECT_E_NOCONNECTION);
    const DWORD cookie = Subscribe(L'a');
    EXPECT_EQ(point->Unadvise(cookie + 1), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
    DWORD none = 7;
    EXPECT_EQ(point->Advise(nullptr, &none), E_POINTER);
    const Ptr<IUnknown> noDispatch = com::Make<Source>().As<IUnknown>();
    EXPECT_EQ(point->Advise(noDispatch.Get(), &none), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(none, 0u);
    EXPECT_EQ(point->Advise(noDispatch.Get(), nullptr), E_POINTER);
}

TEST_F(EventSourceTest, UnknownEventInterfaceHasNoPoint) {
    void* was = this;
    auto* point = static_cast<IConnectionPoint*>(was);
    EXPECT_EQ(source->FindConnectionPoint(IID_IDispatch, &point), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(point, nullptr);
    EXPECT_EQ(source->FindConnectionPoint(DIID___CDevice, nullptr), E_POINTER);
}

TEST_F(EventSourceTest, PointNamesItsInterfaceAndItsContainer) {
    const Ptr<IConnectionPoint> point = Point();
    IID iid{};
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_TRUE(IsEqualIID(iid, DIID___CDevice));
    EXPECT_EQ(point->GetConnectionInterface(nullptr), E_POINTER);
    Ptr<IConnectionPointContainer> container;
    EXPECT_EQ(point->GetConnectionPointContainer(container.Out()), S_OK);
    EXPECT_EQ(container.As<IUnknown>().Get(), source.As<IUnknown>().Get());
    EXPECT_EQ(point->GetConnectionPointContainer(nullptr), E_POINTER);
}

TEST_F(EventSourceTest, PointKeepsItsSourceAlive) {
    const Ptr<IConnectionPoint> point = Point();
    source.Reset();
    EXPECT_EQ(test::g_probes, 1);
    DWORD cookie = 0;
    EXPECT_EQ(
        point->Advise(com::Make<Sink>([](DISPID, DISPPARAMS&) { return S_OK; }).Get(), &cookie),
        S_OK);
}

TEST_F(EventSourceTest, PointsAreEnumerated) {
    Ptr<IEnumConnectionPoints> points;
    ASSERT_EQ(source->EnumConnectionPoints(points.Out()), S_OK);
    Ptr<IConnectionPoint> point;
    ULONG fetched = 0;
    EXPECT_EQ(points->Next(1, point.Out(), &fetched), S_OK);
    IID iid{};
    point->GetConnectionInterface(&iid);
    EXPECT_TRUE(IsEqualIID(iid, DIID___CDevice));
    EXPECT_EQ(points->Next(1, point.Out(), &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0u);
    EXPECT_EQ(source->EnumConnectionPoints(nullptr), E_POINTER);
}

TEST_F(EventSourceTest, ConnectionsAreEnumeratedWithTheirCookies) {
    const Ptr<Sink> sink = com::Make<Sink>([](DISPID, DISPPARAMS&) { return S_OK; });
    const DWORD first = Advise(sink);
    const DWORD second = Advise(sink);
    EXPECT_NE(first, second);
    Ptr<IEnumConnections> connections;
    ASSERT_EQ(Point()->EnumConnections(connections.Out()), S_OK);
    CONNECTDATA data[3]{};
    ULONG fetched = 0;
    EXPECT_EQ(connections->Next(3, data, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 2u);
    EXPECT_EQ(data[0].dwCookie, first);
    EXPECT_EQ(data[1].dwCookie, second);
    EXPECT_EQ(Ptr<IUnknown>::Adopt(data[0].pUnk).Get(), static_cast<IUnknown*>(sink.Get()));
    Ptr<IUnknown>::Adopt(data[1].pUnk).Reset();
}

}  // namespace
}  // namespace quillon
