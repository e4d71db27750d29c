// The label tab of a device window, and templates beside the plug-in.
#pragma once

#include "window/window_test.h"

namespace quillon::test {

class LabelTest : public WindowTest {
protected:
    void TearDown() override;

    // The usual settings with these sections added.
    void WriteLabelSettings(const std::string& sections);
    Window OpenWith(const std::string& sections);
    // Sections with one model "KX-1" whose template is TemplateName().
    std::string OneModel(const std::string& port, const std::string& line) const;
    std::string TemplateName() const { return ProgramId() + ".zpl"; }
    // A template file, gone after the test.
    void WriteTemplate(const std::string& bytes);

    static Lines Models(const frmVantor& window);
    static std::wstring FileCaption(const frmVantor& window);
    static std::wstring PortCaption(const frmVantor& window);
    static bool CanPrint(const frmVantor& window);
    // What a click on an entry of the list, and on the button, does.
    static void ChooseModel(const frmVantor& window, int model);
    static void PressPrint(const frmVantor& window);

    // The last box was one of a failure.
    void ExpectFailureShown();
};

}  // namespace quillon::test
