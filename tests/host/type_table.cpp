#include "type_table.h"

#include <iterator>

#include "com/error.h"
#include "com/text.h"

namespace quillon::test {

namespace {

constexpr const wchar_t* kDeviceMembers[] = {
    L"put EngineeringUnits",
    L"get EngineeringUnits",
    L"method WriteSNVTTable",
    L"method WriteNVFixedStruct",
    L"get FileSystemAddress",
    L"method WriteNVConfigStruct",
    L"method WriteNVNum",
    L"get NVAddress",
    L"get XMLSNVTs",
    L"get NetworkVariables",
    L"get ConfigProperties",
    L"get Files",
    L"putref Network",
    L"get Network",
    L"get NeuronID",
    L"put NeuronID",
    L"get FocusHidden",
    L"method Focus",
    L"get ForceFocus",
    L"get IsOpen",
    L"get SISD",
    L"get DisplayName",
    L"get ProgramId",
    L"method SetProgramID",
    L"get Name",
    L"method RefreshDeviceTree",
    L"method WriteOnlyFix15",
    L"get ReadOnlyFix15",
    L"put Name",
    L"get State",
    L"get PollingState",
    L"put PollingState",
    L"get PollingName",
    L"get PollingPID",
    L"method Reset",
    L"method ClearStatus",
    L"method GoConfigured",
    L"method GoUnConfigured",
    L"method GoOnLine",
    L"method GoSoftOffLine",
    L"method GoHardOffLine",
    L"method GoAppless",
    L"method SetLogicalAddress",
    L"get NeuronChipModelNO",
    L"method AdjustProfile",
    L"get ReadNVConfigTable",
    L"get ReadSNVTTable",
    L"method ApplicationDownload",
    L"method ParameterDownload",
    L"method ParameterExport",
    L"get Statistics",
    L"method ClearStyatistics",
    L"get DeviceManufacturer",
    L"get DeviceClass",
    L"method Wink",
    L"method GetLogicalAddress",
    L"method WriteMemory",
    L"method Reboot",
    L"get UserCPFile",
    L"get PrgIdINIFilePath",
    L"put PrgIdINIFilePath",
    L"method ReadMemoryString",
    L"method ReadMemoryUnicode",
    L"method ChangedName",
    L"method ChangedXmitErr",
    L"method ChangedStatus",
    L"method NVCPChanged",
    L"method Export",
    L"get DllName",
    L"get IsCPsLoaded",
    L"put IsCPsLoaded",
    L"get GetHardwareModel",
    L"put SetHardwareModel",
    L"get IsExplored",
    L"put IsExplored",
    L"put UserCPFile",
};

}  // namespace

const MemberTable& DeviceMembers() {
    static const MemberTable members(std::begin(kDeviceMembers), std::end(kDeviceMembers));
    return members;
}

const MemberTable& DeviceExMembers() {
    static const MemberTable members{
        L"method ShowFocus",       L"method CloseFocus",      L"get DisplayDownloadAvailable",
        L"method DisplayDownload", L"method DisplayExport",   L"get ApplDownloadAvailable",
        L"get ApplFileExtension",  L"method AppDownload",     L"method AppExport",
        L"method SaveCalibration", L"method LoadCalibration", L"get ApplicationCode",
        L"get DisplayHWCode",      L"get DisplayAppCode",     L"get DeviceIDCode",
        L"get DeviceHWCode",       L"get VantorFirmwareType", L"get VantorFirmwareVersion",
        L"get VantorAppStatus",    L"get VantorOSVersion",    L"method WriteOutputs",
        L"method ReadOutputs",     L"method ReadInputs",      L"get ApplicationHeaderFileNAme",
        L"get CommissioningArea",
    };
    return members;
}

com::Ptr<ITypeInfo> SlotsOf(ITypeLib* library, REFGUID interfaceId) {
    com::Ptr<ITypeInfo> info;
    com::Check(library->GetTypeInfoOfGuid(interfaceId, info.Out()));
    TYPEATTR* attributes = nullptr;
    com::Check(info->GetTypeAttr(&attributes));
    const bool dual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
    const bool dispatch = attributes->typekind == TKIND_DISPATCH;
    info->ReleaseTypeAttr(attributes);
    if (!dual || !dispatch) return info;
    // A dual interface is first described as a dispatch interface; behind it stands the vtable.
    HREFTYPE reference = 0;
    com::Check(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    com::Ptr<ITypeInfo> slots;
    com::Check(info->GetRefTypeInfo(reference, slots.Out()));
    return slots;
}

std::vector<TypeMember> MembersOf(ITypeInfo* slots) {
    TYPEATTR* attributes = nullptr;
    com::Check(slots->GetTypeAttr(&attributes));
    const UINT count = attributes->cFuncs;
    slots->ReleaseTypeAttr(attributes);
    std::vector<TypeMember> members;
    SHORT lastSlot = -1;
    for (UINT i = 0; i < count; ++i) {
        FUNCDESC* function = nullptr;
        com::Check(slots->GetFuncDesc(i, &function));
        TypeMember member;
        member.id = function->memid;
        switch (function->invkind) {
            case INVOKE_PROPERTYGET:
                member.kind = L"get";
                break;
            case INVOKE_PROPERTYPUT:
                member.kind = L"put";
                break;
            case INVOKE_PROPERTYPUTREF:
                member.kind = L"putref";
                break;
            default:
                member.kind = L"method";
        }
        // A slot that does not follow the one before would show as a wrong name.
        if (function->funckind == FUNC_PUREVIRTUAL && function->oVft <= lastSlot)
            member.name = L"(slot out of order) ";
        lastSlot = function->oVft;
        com::Bstr name;
        com::Check(slots->GetDocumentation(function->memid, name.Out(), nullptr, nullptr, nullptr));
        member.name += name.Text();
        slots->ReleaseFuncDesc(function);
        members.push_back(std::move(member));
    }
    return members;
}

}  // namespace quillon::test
