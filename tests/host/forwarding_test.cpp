// Every member of the host's two interfaces: what is handed on arrives, and comes back, unchanged.
#include <set>

#include "member_call.h"
#include "support/host_test.h"
#include "type_table.h"

namespace quillon::test {
namespace {

// The members of IDevice that the plug-in answers itself, wholly or in part.
const std::set<std::wstring> kOwnMembers{L"method SetProgramID",  L"method ApplicationDownload",
                                         L"method ChangedName",   L"method ChangedXmitErr",
                                         L"method ChangedStatus", L"method NVCPChanged",
                                         L"get DllName",          L"get IsCPsLoaded",
                                         L"put IsCPsLoaded",      L"get GetHardwareModel",
                                         L"put SetHardwareModel"};

// Those of them that call the member of the same name on the host's device, once.
const std::set<std::wstring> kRelayedMembers{L"method ChangedName", L"method ChangedXmitErr",
                                             L"method ChangedStatus"};

class Forwarding : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        OpenSmall();
        m_room = &AddRoom(kLeft);
        // Something that has every interface an argument or result can have.
        m_other = HostDevice(kRight);
        com::Check(m_other->get_Files(m_files.Out()));
        com::Ptr<ITypeLib> library;
        com::Check(LoadTypeLibEx((Plugin().Path() + L"\\2").c_str(), REGKIND_NONE, library.Out()));
        m_members = Describe(SlotsOf(library.Get(), IID_IDevice).Get());
        for (const MemberDescription& member : m_members)
            if (!kOwnMembers.contains(member.Line()) || kRelayedMembers.contains(member.Line()))
                m_forwarded.push_back(&member);
        Host().Clear();
    }

    void TearDown() override {
        m_files.Reset();
        m_other.Reset();
        HostTest::TearDown();
    }

    // An object with the interface that an argument or a result of the member needs.
    IUnknown* ObjectFor(const MemberDescription& member) {
        for (const Parameter& parameter : member.parameters)
            if (parameter.type == VT_DISPATCH && IsEqualGUID(parameter.object, IID_IFiles))
                return m_files.Get();
            else if (parameter.type == VT_DISPATCH &&
                     IsEqualGUID(parameter.object, __uuidof(INetwork)))
                return Network();
        return m_other.Get();
    }

    // Arms the member's answer; gives what must come back.
    com::Variant ArmAnswer(const MemberDescription& member) {
        const Parameter* result = member.Result();
        if (!result) {
            Host().AnswerNothing(member.HostName(L"IDevice"));
            return {};
        }
        com::Variant value = DistinctValue(*result, member.slot, ObjectFor(member));
        // A truth that is neither of the usual two shows that nothing normalises it.
        com::Variant armed = value;
        if (result->type == VT_BOOL) {
            value.boolVal = 0x1234;
            armed = com::Variant(std::int32_t{0x1234});
        }
        Host().Answer(member.HostName(L"IDevice"), armed);
        return value;
    }

    void ExpectOneCall(const MemberDescription& member, const std::wstring& arguments) {
        EXPECT_EQ(Host().Log(), Lines{member.HostName(L"IDevice") + L"(" + arguments + L")"});
        Host().Restore();
        Host().Clear();
    }

    static HRESULT CodeFor(const MemberDescription& member) {
        constexpr auto kFirst = static_cast<HRESULT>(0x80042000);
        return kFirst + static_cast<HRESULT>(member.slot);
    }

    std::wstring DescriptionFor(const MemberDescription& member) {
        return member.HostName(L"IDevice") + L" fails because it was told to";
    }

    IDevice* Device() { return m_room->device.Get(); }

    std::vector<MemberDescription> m_members;
    std::vector<const MemberDescription*> m_forwarded;

private:
    Room* m_room = nullptr;
    com::Ptr<IDevice> m_other;
    com::Ptr<IFiles> m_files;
};

TEST_F(Forwarding, TableCoversEveryMember) {
    EXPECT_EQ(m_members.size(), DeviceMembers().size());
    EXPECT_EQ(m_forwarded.size() + kOwnMembers.size() - kRelayedMembers.size(), m_members.size());
}

TEST_F(Forwarding, ArgumentsArriveAndTheResultComesBack) {
    for (const MemberDescription* member : m_forwarded) {
        SCOPED_TRACE(Narrow(member->Line()));
        Arguments call(*member, ObjectFor(*member));
        const std::wstring arguments = call.LogText();
        const com::Variant expected = ArmAnswer(*member);
        EXPECT_EQ(call.CallSlot(Device()), S_OK);
        EXPECT_TRUE(Same(call.Result(), expected));
        EXPECT_EQ(call.LogText(), arguments) << "an argument was changed";
        ExpectOneCall(*member, arguments);
    }
}

TEST_F(Forwarding, ArgumentsArriveAndTheResultComesBackThroughDispatch) {
    for (const MemberDescription* member : m_forwarded) {
        SCOPED_TRACE(Narrow(member->Line()));
        Arguments call(*member, ObjectFor(*member));
        const std::wstring arguments = call.LogText();
        const com::Variant expected = ArmAnswer(*member);
        EXCEPINFO exception{};
        EXPECT_EQ(call.CallDispatch(Device(), &exception), S_OK);
        EXPECT_TRUE(Same(call.Result(), expected));
        EXPECT_EQ(call.LogText(), arguments) << "an argument was changed";
        ExpectOneCall(*member, arguments);
    }
}

TEST_F(Forwarding, FailureComesBackWithItsRecord) {
    for (const MemberDescription* member : m_forwarded) {
        SCOPED_TRACE(Narrow(member->Line()));
        Arguments call(*member, ObjectFor(*member));
        Host().Fail(member->HostName(L"IDevice"), 1, CodeFor(*member));
        SetErrorInfo(0, nullptr);
        EXPECT_EQ(call.CallSlot(Device()), CodeFor(*member));
        com::Ptr<IErrorInfo> record;
        ASSERT_EQ(GetErrorInfo(0, record.Out()), S_OK);
        com::Bstr source;
        com::Bstr description;
        com::Check(record->GetSource(source.Out()));
        com::Check(record->GetDescription(description.Out()));
        EXPECT_EQ(source.Text(), L"Quorvex");
        EXPECT_EQ(description.Text(), DescriptionFor(*member));
        ExpectOneCall(*member, call.LogText());
    }
}

TEST_F(Forwarding, FailureComesBackWithItsRecordThroughDispatch) {
    for (const MemberDescription* member : m_forwarded) {
        SCOPED_TRACE(Narrow(member->Line()));
        Arguments call(*member, ObjectFor(*member));
        Host().Fail(member->HostName(L"IDevice"), 1, CodeFor(*member));
        EXCEPINFO exception{};
        EXPECT_EQ(call.CallDispatch(Device(), &exception), DISP_E_EXCEPTION);
        const com::Bstr source = com::Bstr::Adopt(exception.bstrSource);
        const com::Bstr description = com::Bstr::Adopt(exception.bstrDescription);
        SysFreeString(exception.bstrHelpFile);
        EXPECT_EQ(exception.scode, CodeFor(*member));
        EXPECT_EQ(source.Text(), L"Quorvex");
        EXPECT_EQ(description.Text(), DescriptionFor(*member));
        ExpectOneCall(*member, call.LogText());
    }
}

TEST_F(Forwarding, SuccessCodesComeBackAsTheyAre) {
    for (const MemberDescription* member : m_forwarded) {
        SCOPED_TRACE(Narrow(member->Line()));
        Arguments call(*member, ObjectFor(*member));
        Host().Fail(member->HostName(L"IDevice"), 1, 0x00041000 + member->slot);
        EXPECT_EQ(call.CallSlot(Device()), 0x00041000 + member->slot);
        ExpectOneCall(*member, call.LogText());
    }
}

TEST_F(Forwarding, OwnMembersDoNotReachTheHostsMemberOfTheSameName) {
    for (const MemberDescription& member : m_members) {
        if (!kOwnMembers.contains(member.Line()) || kRelayedMembers.contains(member.Line()))
            continue;
        // Its logic ends in the host's member; what it does is tested with application download.
        if (member.name == L"ApplicationDownload") continue;
        SCOPED_TRACE(Narrow(member.Line()));
        Arguments call(member, ObjectFor(member));
        EXPECT_EQ(call.CallSlot(Device()), S_OK);
        EXPECT_EQ(Host().Log(), Lines());
    }
}

TEST_F(Forwarding, ExtendedMembersNeverReachTheHostsExtendedInterface) {
    com::Ptr<ITypeLib> library;
    com::Check(LoadTypeLibEx((Plugin().Path() + L"\\2").c_str(), REGKIND_NONE, library.Out()));
    const auto members = Describe(SlotsOf(library.Get(), IID_IDeviceEx).Get());
    EXPECT_EQ(members.size(), DeviceExMembers().size());
    Room& room = AddRoom(kRight);
    for (const MemberDescription& member : members) {
        // These need a file name that leads somewhere and answered boxes.
        if (member.name == L"AppDownload" || member.name == L"AppExport" ||
            member.name == L"LoadCalibration")
            continue;
        SCOPED_TRACE(Narrow(member.Line()));
        Arguments call(member, room.device.Get());
        call.CallSlot(room.ex.Get());
        EXPECT_EQ(Only(Host().Log(), L"IDeviceEx."), Lines());
        CloseAllWindows();
    }
}

TEST_F(Forwarding, TypeCatalogueOfTheDeviceClassIsTheHosts) {
    Room& room = AddRoom(kRight);
    Host().Clear();
    com::Ptr<IDispatch> catalogue;
    EXPECT_EQ(room.own->get_XMLSNVTs(catalogue.Out()), S_OK);
    EXPECT_TRUE(catalogue);
    EXPECT_EQ(Host().Log(), Lines{L"IDevice.XMLSNVTs.get()"});
    Host().Fail(L"IDevice.XMLSNVTs.get");
    EXPECT_EQ(room.own->get_XMLSNVTs(catalogue.Out()), kFault);
}

TEST_F(Forwarding, NetworkPutByReferenceIsTheNetworkThatIsGot) {
    com::Ptr<INetwork> network;
    EXPECT_EQ(Device()->putref_Network(nullptr), S_OK);
    EXPECT_EQ(Device()->get_Network(network.Out()), S_OK);
    EXPECT_FALSE(network);
    EXPECT_EQ(Device()->putref_Network(Network()), S_OK);
    EXPECT_EQ(Device()->get_Network(network.Out()), S_OK);
    EXPECT_EQ(network.Get(), Network());
}

TEST_F(Forwarding, MemoryArrayIsHandedOverToTheCaller) {
    SAFEARRAY* bytes = nullptr;
    EXPECT_EQ(Device()->ReadMemoryUnicode(16400, 3, &bytes), S_OK);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(bytes->rgsabound[0].cElements, 3U);
    EXPECT_EQ(static_cast<unsigned char*>(bytes->pvData)[0], 0x04);
    EXPECT_EQ(SafeArrayDestroy(bytes), S_OK);
}

TEST_F(Forwarding, LogicalAddressComesBackThroughItsArguments) {
    VARIANT_BOOL done = VARIANT_FALSE;
    com::Bstr domain(L"4F");
    com::Bstr key(L"FFFFFFFFFFFF");
    EXPECT_EQ(Device()->SetLogicalAddress(1, domain.Get(), 7, 99, key.Get(), &done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    com::Bstr gotDomain(L"old");
    com::Bstr gotKey(L"old");
    short length = 0;
    short subnet = 0;
    short node = 0;
    EXPECT_EQ(Device()->GetLogicalAddress(1, gotDomain.InOut(), &length, &subnet, &node,
                                          gotKey.InOut(), &done),
              S_OK);
    EXPECT_EQ(gotDomain.Text(), L"4F");
    EXPECT_EQ(gotKey.Text(), L"FFFFFFFFFFFF");
    EXPECT_EQ(subnet, 7);
    EXPECT_EQ(node, 99);
}

}  // namespace
}  // namespace quillon::test
