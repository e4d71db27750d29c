// The label printer that scripts/with-printer.sh attaches to a serial port.
#pragma once

#include <optional>
#include <string>

namespace quillon::test {

class Printer {
public:
    // A printer that has received nothing and takes everything; nullopt where none is attached.
    static std::optional<Printer> Attached();

    // The port's number, "27".
    const std::wstring& Port() const { return m_port; }
    std::string Received() const;
    // Whether a program has the port open.
    bool IsHeld() const;
    // Waits until so many bytes have come; false when they do not within the limit.
    bool HasReceived(std::size_t bytes) const;
    // Gives a command, see scripts/printer.py. Tell waits until it is obeyed.
    void Tell(const char* command) const;
    void Ask(const char* command) const;

private:
    std::string Content(const char* name) const;

    Printer(std::wstring port, std::wstring folder)
        : m_port(std::move(port)), m_folder(std::move(folder)) {}

    std::wstring m_port;
    std::wstring m_folder;
};

}  // namespace quillon::test
