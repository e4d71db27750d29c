// Calls any member of a dual interface from its description, through the vtable or through
// IDispatch, with arguments that tell the members and the positions apart.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "com/platform.h"
#include "com/ptr.h"
#include "com/variant.h"

namespace quillon::test {

struct Parameter {
    VARTYPE type = VT_EMPTY;  // of the value itself, without VT_BYREF; VT_DISPATCH: any object
    GUID object{};            // of VT_DISPATCH: the interface
    bool in = false;
    bool byReference = false;
    bool result = false;
};

struct MemberDescription {
    std::wstring name;
    INVOKEKIND kind = INVOKE_FUNC;
    DISPID id = 0;
    SHORT slot = 0;  // offset in the vtable, in bytes
    std::vector<Parameter> parameters;

    bool IsPut() const { return (kind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0; }
    const Parameter* Result() const;
    // "get Name"
    std::wstring Line() const;
    // As the simulated host names it: "IDevice.Name.get".
    std::wstring HostName(std::wstring_view interfaceName) const;
};

// The members of a dual interface, by slot.
std::vector<MemberDescription> Describe(ITypeInfo* slots);

// The arguments of one call, and what came back in them.
class Arguments {
public:
    // `object` stands in for every argument that is one.
    Arguments(const MemberDescription& member, IUnknown* object);
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    // As the simulated host writes them into its log: "3, \"text\"".
    std::wstring LogText() const;

    HRESULT CallSlot(void* face);
    // A failure comes back in `exception`, which must be given.
    HRESULT CallDispatch(IDispatch* face, EXCEPINFO* exception);
    // What the member gave; VT_EMPTY when it has no result.
    const com::Variant& Result() const { return m_result; }
    // All values given and taken, the result apart.
    const std::deque<com::Variant>& Values() const { return m_values; }

private:
    const MemberDescription& m_member;
    std::deque<com::Variant> m_values;
    com::Variant m_result;
};

// A value for a type that differs by `seed`.
com::Variant DistinctValue(const Parameter& parameter, int seed, IUnknown* object);

// Whether two variants hold the same type and value, or the same object.
bool Same(const VARIANT& left, const VARIANT& right);

}  // namespace quillon::test
