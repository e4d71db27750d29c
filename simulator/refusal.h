// How the simulated host fails: a result code with an error record whose source is "Quorvex".
#pragma once

#include <string_view>

#include "com/platform.h"

namespace quorvex {

// The device is absent or silent.
inline constexpr HRESULT kNoAnswer = static_cast<HRESULT>(0x80040301);
// The device object is not bound to a room controller of a network.
inline constexpr HRESULT kNotBound = static_cast<HRESULT>(0x80040302);
// The caller did what a caller must not do; ISimulator::Misuse says what.
inline constexpr HRESULT kMisuse = static_cast<HRESULT>(0x80040303);
// A network file is not as it must be, or cannot be read or written.
inline constexpr HRESULT kBadNetworkFile = static_cast<HRESULT>(0x80040304);

// Throws quillon::com::Error.
[[noreturn]] void Refuse(HRESULT result, std::wstring_view description);

// Records the misuse, then refuses with kMisuse.
[[noreturn]] void RefuseMisuse(std::wstring_view description);

}  // namespace quorvex
