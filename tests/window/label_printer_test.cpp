// Printing on a printer at a real serial port; left out where none is attached
// (scripts/with-printer.sh attaches one).
#include "com/module.h"
#include "plugin/clock.h"
#include "support/printer.h"
#include "window/label_fixture.h"

namespace quillon::test {
namespace {

constexpr const char* kNeuronPlace = "nnnnnnnnnnnn";
constexpr const char* kNeuron = "0000000000A1";

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

class LabelPrinter : public LabelTest {
protected:
    void SetUp() override {
        LabelTest::SetUp();
        m_printer = Printer::Attached();
        if (!m_printer) GTEST_SKIP() << "no printer is attached";
        SetToday(Date{2026, 11, 21});  // week 47
    }
    const Printer& Paper() const { return *m_printer; }
    // A window with the label tab shown, its one model chosen.
    Window OpenLabelTab(const std::string& bytes) {
        WriteTemplate(bytes);
        const Window window = OpenWith(OneModel(Narrow(Paper().Port()), "115200,n,8,1"));
        window->SelectTab(kTabLabelPrint);
        ChooseModel(*window, 0);
        return window;
    }
    // The tab changes only after the box.
    void PrintWell(const frmVantor& window) {
        const int tab = window.SelectedTab();
        Boxes().Answer(IDOK, [&] { EXPECT_EQ(window.SelectedTab(), tab); });
        PressPrint(window);
        ASSERT_FALSE(Boxes().Seen().empty());
        EXPECT_EQ(Boxes().Seen().back().text, L"Etichetta stampata");
        EXPECT_EQ(Boxes().Seen().back().icon, Icon::kNone);
    }
    void PrintBadly(const frmVantor& window) {
        Boxes().Answer(IDOK);
        PressPrint(window);
        ExpectFailureShown();
    }
    // What arrives when this is the template.
    std::string Printed(const std::string& bytes) {
        Paper().Tell("fresh");
        const Window window = OpenLabelTab(bytes);
        PrintWell(*window);
        EXPECT_TRUE(Paper().HasReceived(bytes.size()));
        CloseAll();
        return Paper().Received();
    }

private:
    std::optional<Printer> m_printer;
};

TEST_F(LabelPrinter, LabelIsTheTemplateWithItsFieldsFilled) {
    const Window window = OpenLabelTab("^XA^FDnnnnnnnnnnnn^FS^FDYYWW^FS^XZ\r\n");
    PrintWell(*window);
    EXPECT_TRUE(Paper().HasReceived(34));
    EXPECT_EQ(Paper().Received(), "^XA^FD0000000000A1^FS^FD2647^FS^XZ\r\n");
    EXPECT_EQ(window->SelectedTab(), kTabHw);
    EXPECT_FALSE(CanPrint(*window));
    EXPECT_EQ(
        SendMessageW(PageItem(*window, kTabLabelPrint, IDC_NIMBRA_MODEL_LIST), LB_GETCURSEL, 0, 0),
        LB_ERR);
    EXPECT_TRUE(ActionMenuEnabled(*window));
}

TEST_F(LabelPrinter, EveryByteArrivesAsItIs) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
    EXPECT_EQ(Printed(bytes + bytes), bytes + bytes);
}

TEST_F(LabelPrinter, FortyPlaceholdersOfWhichFiveAndThreeAreFilled) {
    EXPECT_EQ(Printed(Repeated(kNeuronPlace + std::string("."), 20) + Repeated("YYWW,", 20)),
              Repeated(kNeuron + std::string("."), 5) +
                  Repeated(kNeuronPlace + std::string("."), 15) + Repeated("2647,", 3) +
                  Repeated("YYWW,", 17));
}

TEST_F(LabelPrinter, PlaceholdersAcrossPiecesAndInsideGraphics) {
    const std::string before(250, '\xAA');
    const std::string graphics = std::string("GW\0\1", 4) + "YYWW" + std::string(300, '\xFF');
    EXPECT_EQ(Printed(before + kNeuronPlace + graphics),
              before + kNeuron + std::string("GW\0\1", 4) + "2647" + std::string(300, '\xFF'));
}

TEST_F(LabelPrinter, LongestTemplateIsPrintedAndALongerOneIsTold) {
    const std::string longest = kNeuronPlace + std::string(13000 - 16, 'x') + "YYWW";
    EXPECT_EQ(Printed(longest), kNeuron + std::string(13000 - 16, 'x') + "2647");
    Paper().Tell("fresh");
    const Window window = OpenLabelTab(longest + "x");
    PrintBadly(*window);
    EXPECT_EQ(Boxes().Seen().back().text, L"The label template is longer than 13000 bytes.");
    EXPECT_EQ(Paper().Received(), "");
}

TEST_F(LabelPrinter, EmptyTemplateIsPrinted) {
    EXPECT_EQ(Printed(""), "");
}

TEST_F(LabelPrinter, SecondLabelIsSentByThePortThatIsOpen) {
    const Window window = OpenLabelTab("YYWW nnnnnnnnnnnn\n");
    PrintWell(*window);
    EXPECT_TRUE(Paper().IsHeld());
    window->SelectTab(kTabLabelPrint);
    EXPECT_FALSE(CanPrint(*window));
    ChooseModel(*window, 0);
    SetToday(Date{2027, 1, 2});
    PrintWell(*window);
    EXPECT_TRUE(Paper().HasReceived(36));
    EXPECT_EQ(Paper().Received(), "2647 0000000000A1\n2701 0000000000A1\n");
    window->Unload();
    EXPECT_FALSE(Paper().IsHeld());
}

TEST_F(LabelPrinter, MissingTemplateStillOpensThePort) {
    const Window window = OpenLabelTab("");
    DeleteFileW(InFolder(Wide(TemplateName())).c_str());
    PrintBadly(*window);
    EXPECT_TRUE(Paper().IsHeld());
    EXPECT_EQ(window->SelectedTab(), kTabLabelPrint);
    EXPECT_TRUE(CanPrint(*window));
    WriteTemplate("here");
    PrintWell(*window);
    EXPECT_TRUE(Paper().HasReceived(4));
}

TEST_F(LabelPrinter, TemplateOutsideTheFolderCountsAsMissing) {
    WriteTemplate("inside");
    const std::string folder = Narrow(com::ModuleFolder());
    const std::string name = folder.substr(folder.find_last_of('\\') + 1);
    for (const std::string& path : {"..\\" + name + "\\" + TemplateName(),
                                    folder + "\\" + TemplateName(), std::string("NUL")}) {
        const Window window =
            OpenWith("[Nimbra Codes]\r\n0Model=KX-1\r\n[Label Printer]\r\n0Model=" + path +
                     "\r\nCOMSettings=9600,n,8,1\r\nCOMPort=" + Narrow(Paper().Port()) + "\r\n");
        window->SelectTab(kTabLabelPrint);
        ChooseModel(*window, 0);
        PrintBadly(*window);
        CloseAll();
    }
    EXPECT_EQ(Paper().Received(), "");
}

TEST_F(LabelPrinter, ModelWithoutTemplateIsTold) {
    const Window window = OpenLabelTab("");
    window->Unload();
    const Window other = OpenWith("[Nimbra Codes]\r\n0Model=KX-1\r\n[Label Printer]\r\nCOMPort=" +
                                  Narrow(Paper().Port()) + "\r\n");
    other->SelectTab(kTabLabelPrint);
    ChooseModel(*other, 0);
    PrintBadly(*other);
    EXPECT_TRUE(Paper().IsHeld());
}

TEST_F(LabelPrinter, NeuronIdOfAnotherLengthIsToldAndNothingSent) {
    const Window window = OpenLabelTab("no placeholder at all");
    for (const wchar_t* neuron : {L"", L"0000000000A", L"0000000000A11"}) {
        Host().Answer(L"IDevice.NeuronID.get", neuron);
        PrintBadly(*window);
        EXPECT_TRUE(CanPrint(*window));
    }
    EXPECT_EQ(Paper().Received(), "");
}

TEST_F(LabelPrinter, NeuronIdIsReadBeforeEachOfItsReplacements) {
    const Window window = OpenLabelTab("-");
    Host().Clear();
    PrintWell(*window);
    EXPECT_EQ(Host().Count(L"IDevice.NeuronID.get"), 5);
}

TEST_F(LabelPrinter, NeuronIdThatCannotBeReadIsTold) {
    const Window window = OpenLabelTab("nnnnnnnnnnnn");
    Host().Fail(L"IDevice.NeuronID.get", 3);
    PrintBadly(*window);
    EXPECT_EQ(Paper().Received(), "");
    PrintWell(*window);
}

TEST_F(LabelPrinter, PortThatAnotherProgramHoldsIsTold) {
    const Window window = OpenLabelTab("label");
    Paper().Tell("refuse");
    PrintBadly(*window);
    EXPECT_TRUE(CanPrint(*window));
    Paper().Tell("fresh");
    PrintWell(*window);
    EXPECT_TRUE(Paper().HasReceived(5));
    EXPECT_EQ(Paper().Received(), "label");
}

TEST_F(LabelPrinter, PrinterThatGoesInTheMiddleIsTold) {
    const Window window = OpenLabelTab(std::string(13000, 'x'));
    Paper().Tell("stop");
    Posted().Post([&] { Paper().Ask("leave"); });
    PrintBadly(*window);
    EXPECT_TRUE(CanPrint(*window));
    EXPECT_TRUE(ActionMenuEnabled(*window));
    // The port stays open, as after every failure; that it is gone is told again.
    PrintBadly(*window);
}

TEST_F(LabelPrinter, PrinterThatTakesNothingIsGivenUpAndTheWindowAnswersMeanwhile) {
    const Window window = OpenLabelTab("YYWW" + std::string(600, 'x'));
    Paper().Tell("stop");
    Posted().Post([&] {
        EXPECT_FALSE(CanPrint(*window));
        EXPECT_FALSE(ActionMenuEnabled(*window));
        PressPrint(*window);  // not a second time
    });
    const ULONGLONG start = GetTickCount64();
    Posted().Post([&] { window->SelectTab(kTabTest); });
    PrintBadly(*window);
    EXPECT_GE(GetTickCount64() - start, 10000u);
    EXPECT_EQ(Boxes().Seen().back().text, L"The label printer has taken nothing for 10 seconds.");
    EXPECT_EQ(window->SelectedTab(), kTabTest);
    EXPECT_TRUE(Paper().IsHeld());
    // Nothing of the first label comes out in front of the second.
    Paper().Tell("go");
    WriteTemplate("again");
    PrintWell(*window);
    EXPECT_TRUE(Paper().HasReceived(5));
    EXPECT_EQ(Paper().Received(), "again");
}

TEST_F(LabelPrinter, WindowClosedWhilePrinting) {
    for (const bool posted : {true, false}) {
        const Window window = OpenLabelTab(std::string(13000, 'x'));
        Paper().Tell("stop");
        Posted().Post([&] {
            if (posted)
                PostMessageW(window->Handle(), WM_CLOSE, 0, 0);
            else
                window->Unload();
        });
        PressPrint(*window);
        EXPECT_FALSE(window->IsOpen());
        EXPECT_FALSE(Paper().IsHeld());
        Paper().Tell("fresh");
    }
    EXPECT_TRUE(Boxes().Seen().empty());
}

TEST_F(LabelPrinter, WindowThatNothingElseHoldsIsClosedWhilePrinting) {
    const std::weak_ptr<frmVantor> window = OpenLabelTab(std::string(13000, 'x'));
    const HWND button = PageItem(*window.lock(), kTabLabelPrint, IDC_NIMBRA_PRINTBUTTON);
    Paper().Tell("stop");
    Posted().Post([&] {
        window.lock()->Unload();
        EXPECT_FALSE(window.expired()) << "the print is still at work";
    });
    SendMessageW(button, BM_CLICK, 0, 0);
    EXPECT_TRUE(window.expired());
    EXPECT_FALSE(Paper().IsHeld());
    Paper().Tell("fresh");
}

TEST_F(LabelPrinter, WindowClosedWhileTheNeuronIdIsRead) {
    const Window window = OpenLabelTab("nnnnnnnnnnnn");
    Host().Call(L"IDevice.NeuronID.get", 2, [&] { window->Unload(); });
    PressPrint(*window);
    EXPECT_FALSE(window->IsOpen());
    EXPECT_EQ(Paper().Received(), "");
}

TEST_F(LabelPrinter, WindowClosedUnderTheBoxAtTheEnd) {
    const Window window = OpenLabelTab("label");
    Boxes().Answer(IDOK, [&] { window->Unload(); });
    PressPrint(*window);
    EXPECT_FALSE(window->IsOpen());
    EXPECT_TRUE(Paper().HasReceived(5));
}

}  // namespace
}  // namespace quillon::test
