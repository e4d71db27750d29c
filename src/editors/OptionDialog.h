// What the five option dialogs share; they differ in their option sets.
#pragma once

#include <string>

#include "editors/OptionButtons.h"
#include "editors/ValueEditor.h"
#include "editors/option_set.h"

namespace quillon {

// Offers the options of a set as buttons, checks the one that the point's value stands for, and
// writes the checked one. While none is checked OK is disabled.
class OptionDialog : public ValueEditor {
public:
    explicit OptionDialog(OptionSet set);

protected:
    void SetOptions(OptionSet set) { m_set = std::move(set); }

private:
    void Load() override;
    std::optional<std::wstring> TextToWrite() override;
    void Write(const std::wstring& text) override;
    bool OnInit() override;

    OptionValue ReadValue();
    void Arrange();
    void EnableOk();

    OptionSet m_set;
    OptionButtons m_buttons;
    DataPoint m_level;  // where the value, or its level, stands
    DataPoint m_state;
    std::wstring m_openingLevel;
    std::wstring m_name;
    std::optional<std::size_t> m_current;
};

}  // namespace quillon
