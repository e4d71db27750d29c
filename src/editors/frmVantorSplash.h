// The splash window: shown while a device window opens, gone after five seconds.
#pragma once

#include <memory>

#include "com/module.h"
#include "ui/dialog.h"
#include "ui/form_list.h"

namespace quillon {

// Takes no focus and is not topmost. It is raised once over the window that it is linked to.
class frmVantorSplash final : public ui::Form, public ui::Dialog {
public:
    static constexpr UINT_PTR kTimer = 1;
    static constexpr UINT kMilliseconds = 5000;

    // A new form whose window is made when it is shown.
    static std::shared_ptr<frmVantorSplash> Create();
    ~frmVantorSplash() override;

    void SetLinkedForm(std::weak_ptr<ui::Form> form) { m_linkedForm = std::move(form); }
    std::weak_ptr<ui::Form> LinkedForm() const { return m_linkedForm; }
    void Show(HWND owner) override;
    // Brings the splash over the window that has just been shown.
    void Raise();

private:
    frmVantorSplash() = default;
    bool OnInit() override;
    std::optional<INT_PTR> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnDestroyed() override;
    std::shared_ptr<void> KeepAlive() override { return weak_from_this().lock(); }
    void Close() override { Destroy(); }

    com::ModuleLock m_module;
    std::weak_ptr<ui::Form> m_linkedForm;
    HBITMAP m_picture = nullptr;
};

}  // namespace quillon
