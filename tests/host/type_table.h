// What the compiled type libraries must hold: the members of each interface in slot order.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "com/platform.h"
#include "com/ptr.h"

namespace quillon::test {

// One member of an interface: "get Name", "put Name", "putref Name" or "method Name".
struct TypeMember {
    std::wstring kind;
    std::wstring name;
    DISPID id = 0;
    std::wstring Line() const { return kind + L" " + name; }
};

using MemberTable = std::vector<std::wstring_view>;

// Tables as the host's and the plug-in's interfaces are promised.
const MemberTable& DeviceMembers();    // IDevice
const MemberTable& DeviceExMembers();  // IDeviceEx

// The vtable description of a dual interface, or the description of a dispatch interface.
com::Ptr<ITypeInfo> SlotsOf(ITypeLib* library, REFGUID interfaceId);
// Its own members (not the inherited ones), by slot.
std::vector<TypeMember> MembersOf(ITypeInfo* slots);

}  // namespace quillon::test
