// Classes without registration: a manifest names the DLLs that make them.
#pragma once

#include <windows.h>

#include <string>

namespace quorvex::bench {

// While it lives, this thread finds the classes that the manifest, and the assemblies that it
// depends on, name; their manifests and DLLs lie in its folder. The registry is asked only for what
// they lack. Throws Failure when the manifest or one of its assemblies cannot be read.
class ComponentManifest {
public:
    explicit ComponentManifest(const std::wstring& file);
    ComponentManifest(const ComponentManifest&) = delete;
    ComponentManifest& operator=(const ComponentManifest&) = delete;
    ~ComponentManifest();

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
};

}  // namespace quorvex::bench
