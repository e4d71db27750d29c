// The tab "Label Print" where no printer is at hand: set-up, choosing, ports that do not open.
#include "plugin/clock.h"
#include "window/label_fixture.h"

namespace quillon::test {
namespace {

using Label = LabelTest;

TEST_F(Label, TabIsSetUpWhenItIsFirstShown) {
    const Window window = OpenWith("[Nimbra Codes]\r\n0Model=KX-1\r\n1Model=KX-2\r\n");
    EXPECT_EQ(Models(*window), Lines());
    EXPECT_EQ(FileCaption(*window), L"Selezionare modello Ostel New dalla lista");
    EXPECT_EQ(PortCaption(*window), L"");
    window->SelectTab(kTabLabelPrint);
    EXPECT_EQ(Models(*window), (Lines{L"KX-1", L"KX-2"}));
    EXPECT_FALSE(CanPrint(*window));
    EXPECT_EQ(PortCaption(*window), L"Porta Seriale: COM1,  Parametri: 9600,e,7,1");
    EXPECT_EQ(FileCaption(*window), L"Selezionare modello Ostel New dalla lista");
}

TEST_F(Label, TabIsSetUpOnce) {
    const Window window = OpenWith("[Nimbra Codes]\r\n0Model=KX-1\r\n");
    window->SelectTab(kTabLabelPrint);
    ChooseModel(*window, 0);
    WriteLabelSettings("[Nimbra Codes]\r\n0Model=other\r\n[Label Printer]\r\nCOMPort=5\r\n");
    window->SelectTab(kTabMain);
    window->SelectTab(kTabLabelPrint);
    EXPECT_EQ(Models(*window), Lines{L"KX-1"});
    EXPECT_EQ(PortCaption(*window), L"Porta Seriale: COM1,  Parametri: 9600,e,7,1");
    EXPECT_TRUE(CanPrint(*window));
}

TEST_F(Label, PortAndItsSettingsComeFromTheFile) {
    const Window window =
        OpenWith("[Label Printer]\r\nCOMPort=12 / upstairs\r\nCOMSettings=19200,n,8,1\r\n");
    window->SelectTab(kTabLabelPrint);
    EXPECT_EQ(PortCaption(*window), L"Porta Seriale: COM12,  Parametri: 19200,n,8,1");
}

TEST_F(Label, PortLeftEmptyKeepsTheDefaults) {
    const Window window = OpenWith("[Label Printer]\r\nCOMPort=\r\nCOMSettings= / none\r\n");
    window->SelectTab(kTabLabelPrint);
    EXPECT_EQ(PortCaption(*window), L"Porta Seriale: COM1,  Parametri: 9600,e,7,1");
}

TEST_F(Label, WithoutModelsTheListIsEmptyAndTheButtonStaysDisabled) {
    for (const char* settings : {"", "[Nimbra Codes]\r\n1Model=KX-2\r\n00Model=KX-3\r\n"}) {
        const Window window = OpenWith(settings);
        window->SelectTab(kTabLabelPrint);
        EXPECT_EQ(Models(*window), Lines());
        EXPECT_FALSE(CanPrint(*window));
        PressPrint(*window);
        CloseAll();
    }
}

TEST_F(Label, ChoosingAModelShowsItsTemplateAndEnablesTheButton) {
    const Window window = OpenWith(
        "[Nimbra Codes]\r\n0Model=KX-1\r\n1Model=KX-2\r\n2Model=KX-3\r\n"
        "[Label Printer]\r\n0Model=one.zpl\r\n1Model=labels\\two.epl / small ones\r\n");
    window->SelectTab(kTabLabelPrint);
    ChooseModel(*window, 1);
    EXPECT_EQ(FileCaption(*window), L"File etichetta: " + InFolder(L"labels\\two.epl"));
    EXPECT_TRUE(CanPrint(*window));
    ChooseModel(*window, 0);
    EXPECT_EQ(FileCaption(*window), L"File etichetta: " + InFolder(L"one.zpl"));
    ChooseModel(*window, 2);
    EXPECT_EQ(FileCaption(*window), L"File etichetta: ");
    EXPECT_TRUE(CanPrint(*window));
}

TEST_F(Label, OnlyAHundredTemplatesHaveRoomBesideTheEmptyOne) {
    for (const int count : {100, 101}) {
        std::string settings = "[Label Printer]\r\n";
        for (int n = 0; n < count; ++n)
            settings += std::to_string(n) + "Model=" + std::to_string(n) + ".zpl\r\n";
        settings += "[Nimbra Codes]\r\n";
        for (int n = 0; n < count; ++n) settings += std::to_string(n) + "Model=KX\r\n";
        const Window window = OpenWith(settings);
        if (count > 100) Boxes().Answer(IDOK);
        window->SelectTab(kTabLabelPrint);
        EXPECT_EQ(Models(*window).size(), static_cast<std::size_t>(count));
        ChooseModel(*window, count - 1);
        EXPECT_EQ(FileCaption(*window),
                  L"File etichetta: " + InFolder(std::to_wstring(count - 1)) + L".zpl");
        CloseAll();
        // What the system keeps after a list's first scroll bar is not counted.
        if (count == 100) CountAgain();
    }
    ExpectFailureShown();
}

TEST_F(Label, WindowClosedUnderTheBoxOfTheSetUp) {
    std::string settings = "[Label Printer]\r\n";
    for (int n = 0; n <= 100; ++n) settings += std::to_string(n) + "Model=x\r\n";
    const Window window = OpenWith(settings);
    Boxes().Answer(IDOK, [&] { window->Unload(); });
    window->SelectTab(kTabLabelPrint);
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(Label, PortThatIsNotThereIsToldAndTheWindowStaysUsable) {
    const Window window = OpenWith(OneModel("211", "9600,e,7,1"));
    window->SelectTab(kTabLabelPrint);
    ChooseModel(*window, 0);
    for (int time = 0; time < 2; ++time) {
        Boxes().Answer(IDOK);
        PressPrint(*window);
        ExpectFailureShown();
        EXPECT_TRUE(CanPrint(*window));
        EXPECT_EQ(window->SelectedTab(), kTabLabelPrint);
        EXPECT_TRUE(ActionMenuEnabled(*window));
    }
    EXPECT_EQ(Boxes().Seen().size(), 2u);
}

TEST_F(Label, PortOrSettingsThatMeanNothingAreTold) {
    const std::pair<const char*, const char*> kSettings[] = {
        {"COM1", "9600,e,7,1"}, {"0", "9600,e,7,1"}, {"211", "fast"}, {"211", "9600,e,7"}};
    for (const auto& [port, line] : kSettings) {
        const Window window = OpenWith(OneModel(port, line));
        window->SelectTab(kTabLabelPrint);
        ChooseModel(*window, 0);
        Boxes().Answer(IDOK);
        PressPrint(*window);
        ExpectFailureShown();
        CloseAll();
    }
    EXPECT_EQ(Boxes().Seen()[0].text, L"The serial port's number is not one of 1 to 256.");
    EXPECT_EQ(Boxes().Seen()[2].text, L"The serial port's settings are not like \"9600,e,7,1\".");
}

TEST_F(Label, WindowClosedUnderTheBoxOfAFailure) {
    const Window window = OpenWith(OneModel("211", "9600,e,7,1"));
    window->SelectTab(kTabLabelPrint);
    ChooseModel(*window, 0);
    Boxes().Answer(IDOK, [&] { window->Unload(); });
    PressPrint(*window);
    EXPECT_FALSE(window->IsOpen());
}

TEST_F(Label, WindowThatNothingElseHoldsLivesUntilItsPrintEnds) {
    const std::weak_ptr<frmVantor> window = OpenWith(OneModel("211", "9600,e,7,1"));
    const HWND button = PageItem(*window.lock(), kTabLabelPrint, IDC_NIMBRA_PRINTBUTTON);
    window.lock()->SelectTab(kTabLabelPrint);
    ChooseModel(*window.lock(), 0);
    Boxes().Answer(IDOK, [&] {
        window.lock()->Unload();
        EXPECT_FALSE(window.expired()) << "the print is still at work";
    });
    SendMessageW(button, BM_CLICK, 0, 0);
    EXPECT_TRUE(window.expired());
}

}  // namespace
}  // namespace quillon::test
