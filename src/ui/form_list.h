// The open windows of the plug-in, each with a tag by which others find it.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillon::ui {

// A window of the plug-in. It is in the list from Open to Unload, and the list keeps it alive
// meanwhile.
class Form : public std::enable_shared_from_this<Form> {
public:
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    const std::wstring& Tag() const { return m_tag; }
    void SetTag(std::wstring tag) { m_tag = std::move(tag); }

    // Puts the form into the list of open windows.
    void Open();
    bool IsOpen() const;
    // Takes the form out of the list, then closes its window. A second call does nothing.
    void Unload();

    // Shows the window modeless; a window that is already shown comes to the front.
    virtual void Show(HWND owner) = 0;

protected:
    // Destroys the window.
    virtual void Close() = 0;

private:
    std::wstring m_tag;
};

// Looks through the windows open at the start, handling pending messages before each; gives the
// first one that is still open and matches. May throw what `matches` throws.
std::shared_ptr<Form> FindForm(const std::function<bool(const Form&)>& matches);

// Snapshot of the open windows, oldest first.
std::vector<std::shared_ptr<Form>> OpenForms();

}  // namespace quillon::ui
