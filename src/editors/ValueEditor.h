// What all value editors share: a modal dialog that shows one data point and writes its value.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "com/module.h"
#include "editors/DataPoint.h"
#include "ui/dialog.h"

namespace quillon {

// Set DataPoint (and CalledFramModif4), then Show. Everything that the dialog opens with is read
// from the host before there is a window, so a failing host means no dialog. The dialog's window
// goes with its owner: then nothing is written. An Enter key that is held down presses nothing.
class ValueEditor : public ui::Dialog {
public:
    // Stores the point and its value text as it is. Throws com::Error.
    void SetDataPoint(const DataPoint& point);
    // True when a structure's editor opens this one for a field: the field then gets its value text
    // back however the dialog closes, unless OK has succeeded.
    void SetCalledFramModif4(bool called) { m_calledFramModif4 = called; }
    // Returns when the dialog is closed. Throws com::Error where nothing could be shown.
    void Show(HWND owner);

protected:
    // failureText: the message when OK fails.
    ValueEditor(int dialog, const wchar_t* failureText)
        : m_dialog(dialog), m_failureText(failureText) {}

    // Reads from the host what the dialog shows when it opens. May throw.
    virtual void Load() = 0;
    // OK: the text to write; nullopt: the operator has been told why not, the dialog stays open.
    // What it throws is reported like a host's refusal.
    virtual std::optional<std::wstring> TextToWrite() = 0;
    // Writes it: to the point's value. May throw.
    virtual void Write(const std::wstring& text) { m_point.SetValue(text); }
    bool OnCommand(int id, int code, HWND control) override;
    // Runs OK, unless its button is disabled or the editor is at work.
    void Accept();

    // While one lives a call of the host is under way, in which messages may be handled: OK, Cancel
    // and the rows of a structure then do nothing. The window may still go.
    class Work {
    public:
        explicit Work(ValueEditor& editor) : m_editor(editor) { m_editor.m_working = true; }
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;
        ~Work() { m_editor.m_working = false; }

    private:
        ValueEditor& m_editor;
    };
    bool Working() const { return m_working; }

    const DataPoint& Point() const { return m_point; }
    // The value text at the time of SetDataPoint.
    const std::wstring& OpeningValue() const { return m_openingValue; }

private:
    void Restore() noexcept;

    com::ModuleLock m_module;
    DataPoint m_point;
    std::wstring m_openingValue;
    int m_dialog;
    const wchar_t* m_failureText;
    bool m_calledFramModif4 = false;
    bool m_working = false;
};

inline constexpr const wchar_t* kErrorInCpValue = L"error in calculating CP value";

}  // namespace quillon
