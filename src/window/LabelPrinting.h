// The work behind the tab "Label Print": which template belongs to which model, and the way of a
// label to the printer. It shows nothing.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "plugin/calendar.h"
#include "window/MSComm.h"
#include "window/label_text.h"

namespace quillon {

// What a print asks of its caller. Each may let messages be handled.
struct LabelSource {
    std::function<std::wstring()> neuronId;  // may throw
    std::function<bool()> wanted;            // false: the window is gone, end the print
    Date today;
};

class LabelPrinting {
public:
    // Positions of the list that can have a template: 0 to 100.
    static constexpr std::size_t kPositions = 101;

    // Reads a key of a section of the settings file.
    using Setting = std::function<std::wstring(const wchar_t* section, const std::wstring& key)>;

    // `folder`: the plug-in's own, without a backslash at its end.
    explicit LabelPrinting(std::wstring folder) : m_folder(std::move(folder)) {}

    // True once: the tab is yet to be set up.
    bool TakeSetUp() { return std::exchange(m_pending, false); }
    static std::vector<std::wstring> ReadModels(const Setting& read);
    // A port or settings left empty keep "1" and "9600,e,7,1".
    void ReadPort(const Setting& read);
    // Throws LabelError when there are more than the positions have room for; those up to the last
    // position then have theirs.
    void ReadTemplates(const Setting& read);

    std::wstring PortCaption() const;
    std::wstring FileCaption(std::size_t position) const;

    // Fills in the template of a position and sends it. The port is opened by the first print and
    // stays open, whatever happens afterwards. True: the printer has taken all; false: it is not
    // wanted any more. Throws what makes the label unprintable; what was not sent yet is dropped.
    // Handles messages all the time.
    bool Print(std::size_t position, const LabelSource& source);
    void ClosePort() { m_port.SetPortOpen(false); }

private:
    // The full path, empty for a position without template.
    std::wstring TemplatePath(std::size_t position) const;
    void OpenPort();
    void ReadTemplate(std::size_t position);
    bool Send(const LabelSource& source);
    bool WaitUntilSent(const LabelSource& source);

    std::wstring m_folder;
    std::wstring m_portNumber = L"1";
    std::wstring m_portSettings = L"9600,e,7,1";
    std::vector<std::wstring> m_templates;  // as the settings name them, by position
    bool m_pending = true;
    bool m_portOpened = false;
    LabelText m_label;
    MSComm m_port;
};

}  // namespace quillon
