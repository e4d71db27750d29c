// The controls that the plug-in's dialogs are made of.
#pragma once

#include <windows.h>

namespace quillon::test {

// While it lives this thread makes controls of the version that the plug-in's manifest asks for.
class PluginsControls {
public:
    explicit PluginsControls(HMODULE plugin) {
        wchar_t file[MAX_PATH] = {};
        GetModuleFileNameW(plugin, file, MAX_PATH);
        ACTCTXW context{};
        context.cbSize = sizeof context;
        context.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
        context.lpSource = file;
        context.lpResourceName = MAKEINTRESOURCEW(2);
        context.hModule = plugin;
        m_context = CreateActCtxW(&context);
        ActivateActCtx(m_context, &m_cookie);
    }
    PluginsControls(const PluginsControls&) = delete;
    PluginsControls& operator=(const PluginsControls&) = delete;
    ~PluginsControls() {
        DeactivateActCtx(0, m_cookie);
        ReleaseActCtx(m_context);
    }

private:
    HANDLE m_context = nullptr;
    ULONG_PTR m_cookie = 0;
};

}  // namespace quillon::test
