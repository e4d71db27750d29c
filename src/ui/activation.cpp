#include "ui/activation.h"

#include "ui/module.h"

namespace quillon::ui {

namespace {

constexpr int kManifest = 2;

}  // namespace

ActivationScope::ActivationScope() {
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    description.hModule = OwnModule();
    description.lpResourceName = MAKEINTRESOURCEW(kManifest);
    m_context = CreateActCtxW(&description);
    if (m_context != INVALID_HANDLE_VALUE && !ActivateActCtx(m_context, &m_cookie)) {
        ReleaseActCtx(m_context);
        m_context = INVALID_HANDLE_VALUE;
    }
}

ActivationScope::~ActivationScope() {
    if (m_context == INVALID_HANDLE_VALUE) return;
    DeactivateActCtx(0, m_cookie);
    ReleaseActCtx(m_context);
}

}  // namespace quillon::ui
