// The serial port; what needs a printer at its other end is left out where none is attached
// (scripts/with-printer.sh attaches one).
#include "window/MSComm.h"

#include <stdexcept>

#include "com/error.h"

#include "support/component_fixture.h"
#include "support/printer.h"

namespace quillon::test {
namespace {

class SerialPort : public ComponentTest {
protected:
    void SetUp() override {
        m_printer = Printer::Attached();
        if (!m_printer) GTEST_SKIP() << "no printer is attached";
        m_port.SetCommPort(m_printer->Port());
        m_port.SetSettings(L"115200,n,8,1");
        m_port.SetOutBufferSize(1024);
    }
    const Printer& Paper() const { return *m_printer; }
    MSComm& Port() { return m_port; }
    // Until everything has gone out; false when it does not within the limit.
    bool Empty() {
        for (const ULONGLONG start = GetTickCount64(); Port().OutBufferCount() != 0;) {
            if (GetTickCount64() - start > 60000) return false;
            WaitForSingleObject(Port().Taken(), 20);
        }
        return true;
    }

private:
    std::optional<Printer> m_printer;
    MSComm m_port;
};

TEST(MSComm, PortThatIsNotThereCannotBeOpened) {
    MSComm port;
    port.SetCommPort(L"211");
    EXPECT_THROW(port.SetPortOpen(true), com::Error);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THROW(port.Output("x"), std::logic_error);
    EXPECT_EQ(port.OutBufferCount(), 0u);
    port.Discard();
    port.SetPortOpen(false);
}

TEST(MSComm, TextsThatMeanNothingAreRefusedAndChangeNothing) {
    MSComm port;
    EXPECT_THROW(port.SetCommPort(L"COM1"), std::invalid_argument);
    EXPECT_THROW(port.SetCommPort(L""), std::invalid_argument);
    EXPECT_THROW(port.SetSettings(L"9600"), std::invalid_argument);
}

TEST_F(SerialPort, OutputArrivesInItsOrder) {
    Port().SetPortOpen(true);
    Port().SetPortOpen(true);
    std::string all;
    for (int piece = 0; piece < 40; ++piece) {
        const std::string bytes(256, static_cast<char>(piece));
        all += bytes;
        Port().Output(bytes);
        ASSERT_TRUE(Empty());
    }
    EXPECT_TRUE(Paper().HasReceived(all.size()));
    EXPECT_EQ(Paper().Received(), all);
}

TEST_F(SerialPort, OutputDoesNotWaitAndCountsWhatIsLeft) {
    Paper().Tell("stop");
    Port().SetPortOpen(true);
    Port().Output(std::string(600, 'a'));
    EXPECT_EQ(Port().OutBufferCount(), 600u);
    Port().Output(std::string(424, 'b'));
    EXPECT_EQ(Port().OutBufferCount(), 1024u);
    EXPECT_THROW(Port().Output("c"), std::length_error);
    Paper().Tell("go");
    EXPECT_TRUE(Empty());
    EXPECT_TRUE(Paper().HasReceived(1024));
    EXPECT_EQ(Paper().Received(), std::string(600, 'a') + std::string(424, 'b'));
}

TEST_F(SerialPort, WhatIsDiscardedNeverArrives) {
    Paper().Tell("stop");
    Port().SetPortOpen(true);
    Port().Output(std::string(600, 'a'));
    Port().Discard();
    EXPECT_EQ(Port().OutBufferCount(), 0u);
    Port().Output("b");
    Paper().Tell("go");
    EXPECT_TRUE(Empty());
    EXPECT_TRUE(Paper().HasReceived(1));
    EXPECT_EQ(Paper().Received(), "b");
}

TEST_F(SerialPort, ClosedWithOutputWaitingAndOpenedAgain) {
    Paper().Tell("stop");
    Port().SetPortOpen(true);
    Port().Output(std::string(600, 'a'));
    Port().SetPortOpen(false);
    EXPECT_FALSE(Port().PortOpen());
    Port().SetPortOpen(true);
    Port().Output("b");
    Paper().Tell("go");
    EXPECT_TRUE(Empty());
    EXPECT_TRUE(Paper().HasReceived(1));
    EXPECT_EQ(Paper().Received(), "b");
}

TEST_F(SerialPort, IsHeldWhileItIsOpen) {
    EXPECT_FALSE(Paper().IsHeld());
    Port().SetPortOpen(true);
    EXPECT_TRUE(Paper().IsHeld());
    Port().SetPortOpen(false);
    EXPECT_FALSE(Paper().IsHeld());
}

TEST_F(SerialPort, PortThatAnotherProgramHasCannotBeOpened) {
    Paper().Tell("refuse");
    try {
        Port().SetPortOpen(true);
        ADD_FAILURE() << "it opens";
    } catch (const com::Error& error) {
        EXPECT_EQ(error.Result(), E_ACCESSDENIED);
    }
    EXPECT_FALSE(Port().PortOpen());
    Paper().Tell("fresh");
    Port().SetPortOpen(true);
    EXPECT_TRUE(Port().PortOpen());
}

TEST_F(SerialPort, PortThatGoesIsTold) {
    Paper().Tell("stop");
    Port().SetPortOpen(true);
    Port().Output(std::string(600, 'a'));
    Paper().Ask("leave");
    EXPECT_THROW(Empty(), com::Error);
    EXPECT_TRUE(Port().PortOpen());
    Port().SetPortOpen(false);
}

TEST_F(SerialPort, EverySettingThatALineCanHaveIsTaken) {
    for (const wchar_t* settings : {L"9600,e,7,1", L"300,o,7,2", L"19200,n,8,1", L"1200,E,8,1"}) {
        Port().SetSettings(settings);
        Port().SetPortOpen(true);
        EXPECT_TRUE(Port().PortOpen()) << settings;
        Port().SetPortOpen(false);
    }
}

}  // namespace
}  // namespace quillon::test
