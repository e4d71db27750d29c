// The serial port to the label printer.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "com/handle.h"
#include "window/line_settings.h"

namespace quillon {

// Nothing here waits for the printer: what is put out is written behind the caller's back, as often
// as it asks for OutBufferCount. Failures are com::Error with the system's number, or a
// std::exception whose text is for the operator. User-interface thread only.
class MSComm {
public:
    MSComm();
    MSComm(const MSComm&) = delete;
    MSComm& operator=(const MSComm&) = delete;
    ~MSComm();

    // These count when the port is opened next. The first two throw std::invalid_argument for a
    // text that names no port, or is not like "9600,e,7,1".
    void SetCommPort(std::wstring_view number);
    void SetSettings(std::wstring_view settings);
    void SetOutBufferSize(std::size_t size) { m_outBufferSize = size; }

    bool PortOpen() const { return static_cast<bool>(m_port); }
    // Opens the port for this program alone and sets the line up, without handshaking; or closes it
    // and drops what was not sent. Opening an open port, or closing a closed one, does nothing.
    void SetPortOpen(bool open);

    // Queues bytes and begins to send them. Throws std::length_error when the buffer has no room
    // for all of them, std::logic_error when the port is not open.
    void Output(std::string_view bytes);
    // Bytes that have not gone out yet; the sending goes on meanwhile. Throws when it has failed,
    // for instance because the port is gone.
    std::size_t OutBufferCount();
    // Signalled when the port has taken something, so that OutBufferCount is worth asking.
    HANDLE Taken() const { return m_taken.Get(); }
    // Drops what was not sent.
    void Discard() noexcept;

private:
    struct Write;

    void SetUpLine();
    // True: the write at work is done, or there is none.
    bool FinishWrite();
    void StartWrite();
    void Advance();

    std::uint32_t m_commPort = 1;
    LineSettings m_settings;
    std::size_t m_outBufferSize = 512;
    com::Handle m_port;
    com::Handle m_taken;
    std::string m_queue;  // not handed to the system yet
    std::unique_ptr<Write> m_write;
};

}  // namespace quillon
