// The platform's own headers, in the one order in which they compile.
#pragma once

#include <windows.h>
//
#include <oaidl.h>
#include <ocidl.h>
#include <ole2.h>
#include <oleauto.h>
#include <olectl.h>
