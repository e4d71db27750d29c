// The compiled type libraries, as they lie in the DLL: names, kinds, order and identifiers.
#include <algorithm>
#include <map>
#include <set>

#include "support/host_test.h"
#include "type_table.h"

namespace quillon::test {
namespace {

class TypeLibraries : public HostTest {
protected:
    // Resource 1 is what the plug-in publishes, 2 what it assumes of the host.
    com::Ptr<ITypeLib> Load(int resource) {
        com::Ptr<ITypeLib> library;
        const std::wstring place = Plugin().Path() + L"\\" + std::to_wstring(resource);
        com::Check(LoadTypeLibEx(place.c_str(), REGKIND_NONE, library.Out()));
        return library;
    }

    std::vector<TypeMember> Members(int resource, REFGUID interfaceId) {
        return MembersOf(SlotsOf(Load(resource).Get(), interfaceId).Get());
    }

    void ExpectMembers(int resource, REFGUID interfaceId, const MemberTable& expected) {
        const auto members = Members(resource, interfaceId);
        std::vector<std::wstring> found;
        for (const TypeMember& member : members) found.push_back(member.Line());
        EXPECT_EQ(found, std::vector<std::wstring>(expected.begin(), expected.end()));
        ExpectIdentifiers(members);
    }

    // The halves of a property share one identifier; nothing else does. Those that the compiler
    // would make up itself lie at 0x60000000 and above.
    static void ExpectIdentifiers(const std::vector<TypeMember>& members) {
        std::map<std::wstring, DISPID> byName;
        std::map<DISPID, std::wstring> byId;
        for (const TypeMember& member : members) {
            EXPECT_LT(member.id, 0x60000000) << Narrow(member.Line());
            const auto name = byName.emplace(member.name, member.id).first;
            EXPECT_EQ(name->second, member.id) << Narrow(member.Line());
            const auto id = byId.emplace(member.id, member.name).first;
            EXPECT_EQ(id->second, member.name);
        }
    }

    DISPID IdOf(const std::vector<TypeMember>& members, std::wstring_view name) {
        const auto found =
            std::find_if(members.begin(), members.end(),
                         [&](const TypeMember& member) { return member.name == name; });
        return found == members.end() ? DISPID_UNKNOWN : found->id;
    }
};

TEST_F(TypeLibraries, HostsDeviceInterfaceHasItsMembersInSlotOrder) {
    ExpectMembers(2, IID_IDevice, DeviceMembers());
}

TEST_F(TypeLibraries, HostsDeviceInterfaceStartsBehindDispatch) {
    const auto slots = SlotsOf(Load(2).Get(), IID_IDevice);
    FUNCDESC* function = nullptr;
    com::Check(slots->GetFuncDesc(0, &function));
    EXPECT_EQ(function->oVft, static_cast<SHORT>(7 * sizeof(void*)));
    slots->ReleaseFuncDesc(function);
    com::Check(slots->GetFuncDesc(static_cast<UINT>(DeviceMembers().size() - 1), &function));
    EXPECT_EQ(function->oVft, static_cast<SHORT>((6 + DeviceMembers().size()) * sizeof(void*)));
    slots->ReleaseFuncDesc(function);
}

TEST_F(TypeLibraries, HostsExtendedInterfaceHasItsMembersInSlotOrder) {
    ExpectMembers(2, IID_IDeviceEx, DeviceExMembers());
}

TEST_F(TypeLibraries, DeviceClassHasItsOwnPropertiesInOrder) {
    ExpectMembers(1, __uuidof(_CDevice),
                  {L"get XMLSNVTs", L"get AnalogInput1_High", L"get AnalogInput1_Low",
                   L"get AnalogInput1_Offset", L"get ProductionYear", L"get ProductionWeek"});
}

TEST_F(TypeLibraries, EventsStandInOrderAndAreNumberedByIt) {
    ExpectMembers(1, DIID___CDevice,
                  {L"method ChangedName", L"method ChangedStatus", L"method ChangedApplication",
                   L"method NVCPChanged", L"method ChangedXmitErr"});
    DISPID number = 0;
    for (const TypeMember& event : Members(1, DIID___CDevice)) EXPECT_EQ(event.id, ++number);
}

TEST_F(TypeLibraries, ProfileHasItsMembersInOrder) {
    ExpectMembers(1, __uuidof(_CProfile),
                  {L"get CPs", L"get CPValues", L"get FileTypeIIVersion", L"get UserCPFile",
                   L"get FWVersion", L"get CompleteCDB", L"method FriendSet", L"get Name",
                   L"get DeviceID", L"get CustomerID", L"get NVs", L"get ProgramID"});
}

TEST_F(TypeLibraries, NetworkVariableRecordHasItsMembersInOrder) {
    ExpectMembers(1, __uuidof(_CNV),
                  {L"get RawValue", L"get Length", L"put Name", L"putref XMLDomNode",
                   L"put ConnectionIndex", L"get ConnectionIndex", L"get IsNC", L"get Direction",
                   L"get Name", L"get SNVTType", L"get Address", L"put Address"});
}

TEST_F(TypeLibraries, ConfigurationPropertyRecordHasItsMembersInOrder) {
    ExpectMembers(1, __uuidof(_CCP),
                  {L"put Name", L"putref XMLDomNode", L"put ConnectionIndex",
                   L"get ConnectionIndex", L"get Name", L"get RawValue"});
}

TEST_F(TypeLibraries, CollectionsHaveTheirMembersInOrder) {
    const MemberTable expected{L"get Count", L"get Item", L"get NewEnum", L"method Add"};
    ExpectMembers(1, __uuidof(_CNVs), expected);
    ExpectMembers(1, __uuidof(_CCPs), expected);
}

TEST_F(TypeLibraries, CollectionsEnumerateAndIndexByTheStandardIdentifiers) {
    for (const IID& list : {__uuidof(_CNVs), __uuidof(_CCPs)}) {
        const auto members = Members(1, list);
        EXPECT_EQ(IdOf(members, L"NewEnum"), DISPID_NEWENUM);
        EXPECT_EQ(IdOf(members, L"Item"), DISPID_VALUE);
    }
}

TEST_F(TypeLibraries, RegistryClassHasItsMembersInOrder) {
    ExpectMembers(1, __uuidof(_CRegistry),
                  {L"method FindGUUID", L"method FindFirstMachineKey", L"method GetNextMachineKey",
                   L"get AppSetting", L"put AppSetting", L"get MachineSetting",
                   L"put MachineSetting", L"method DeleteMachineSetting"});
}

struct ClassFace {
    const CLSID& clsid;
    const wchar_t* name;
    const wchar_t* face;
};

const ClassFace kPublicFaces[] = {
    {CLSID_CDevice, L"CDevice", L"_CDevice"},
    {CLSID_CProfile, L"CProfile", L"_CProfile"},
    {CLSID_CNV, L"CNV", L"_CNV"},
    {CLSID_CNVs, L"CNVs", L"_CNVs"},
    {CLSID_CCP, L"CCP", L"_CCP"},
    {CLSID_CCPs, L"CCPs", L"_CCPs"},
    {CLSID_CRegistry, L"CRegistry", L"_CRegistry"},
};

std::wstring NameOf(ITypeInfo* info) {
    com::Bstr name;
    com::Check(info->GetDocumentation(MEMBERID_NIL, name.Out(), nullptr, nullptr, nullptr));
    return name.Text();
}

// The name of a class's face with these flags; empty when there is none in this library.
std::wstring FaceOf(ITypeInfo* info, int flags) {
    TYPEATTR* attributes = nullptr;
    com::Check(info->GetTypeAttr(&attributes));
    const UINT faces = attributes->cImplTypes;
    info->ReleaseTypeAttr(attributes);
    for (UINT i = 0; i < faces; ++i) {
        int own = 0;
        com::Check(info->GetImplTypeFlags(i, &own));
        if (own != flags) continue;
        HREFTYPE reference = 0;
        com::Ptr<ITypeInfo> face;
        com::Check(info->GetRefTypeOfImplType(i, &reference));
        com::Check(info->GetRefTypeInfo(reference, face.Out()));
        return NameOf(face.Get());
    }
    return {};
}

TEST_F(TypeLibraries, AllSevenClassesAreCreatableWithTheirDefaultFace) {
    const auto library = Load(1);
    for (const ClassFace& one : kPublicFaces) {
        com::Ptr<ITypeInfo> info;
        com::Check(library->GetTypeInfoOfGuid(one.clsid, info.Out()));
        TYPEATTR* attributes = nullptr;
        com::Check(info->GetTypeAttr(&attributes));
        EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
        EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE, 0) << Narrow(one.name);
        info->ReleaseTypeAttr(attributes);
        EXPECT_EQ(NameOf(info.Get()), one.name);
        EXPECT_EQ(FaceOf(info.Get(), IMPLTYPEFLAG_FDEFAULT), one.face);
    }
}

TEST_F(TypeLibraries, DeviceClassNamesItsEvents) {
    com::Ptr<ITypeInfo> info;
    com::Check(Load(1)->GetTypeInfoOfGuid(CLSID_CDevice, info.Out()));
    EXPECT_EQ(FaceOf(info.Get(), IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE), L"__CDevice");
}

TEST_F(TypeLibraries, PublishedLibraryIsVersionTwoOne) {
    TLIBATTR* attributes = nullptr;
    const auto library = Load(1);
    com::Check(library->GetLibAttr(&attributes));
    EXPECT_EQ(attributes->guid, LIBID_Quillon);
    EXPECT_EQ(attributes->wMajorVerNum, 2);
    EXPECT_EQ(attributes->wMinorVerNum, 1);
    library->ReleaseTLibAttr(attributes);
}

TEST_F(TypeLibraries, WhatTheDispatchServesIsWhatTheLibraryHolds) {
    OpenSmall();
    Room& room = AddRoom(kLeft);
    for (IDispatch* face :
         {static_cast<IDispatch*>(room.device.Get()), static_cast<IDispatch*>(room.ex.Get()),
          static_cast<IDispatch*>(room.own.Get())}) {
        UINT count = 0;
        ASSERT_EQ(face->GetTypeInfoCount(&count), S_OK);
        EXPECT_EQ(count, 1U);
        com::Ptr<ITypeInfo> info;
        ASSERT_EQ(face->GetTypeInfo(0, 0, info.Out()), S_OK);
        EXPECT_EQ(face->GetTypeInfo(1, 0, com::Ptr<ITypeInfo>().Out()), DISP_E_BADINDEX);
        const std::wstring name = NameOf(info.Get());
        EXPECT_EQ(name, face == room.device.Get()                        ? L"IDevice"
                        : face == static_cast<IDispatch*>(room.ex.Get()) ? L"IDeviceEx"
                                                                         : L"_CDevice");
    }
}

}  // namespace
}  // namespace quillon::test
