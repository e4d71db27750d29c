#include "window/MSComm.h"

#include <algorithm>
#include <stdexcept>

#include "com/error_text.h"

namespace quillon {

namespace {

// Handed to the system at once. Small, so that a slow line is seen to move even where the driver
// does not count what it has left: 64 bytes take 6 seconds at 110 bits a second.
constexpr std::size_t kWriteSize = 64;
// The system gives a cancelled write back at once; a driver that does not is left alone.
constexpr DWORD kCancelWait = 1000;
constexpr DWORD kInBufferSize = 1024;

void Require(BOOL succeeded) {
    if (!succeeded) com::ThrowSystemError(GetLastError());
}

BYTE ParityCode(Parity parity) {
    switch (parity) {
        case Parity::kOdd:
            return ODDPARITY;
        case Parity::kEven:
            return EVENPARITY;
        case Parity::kMark:
            return MARKPARITY;
        case Parity::kSpace:
            return SPACEPARITY;
        case Parity::kNone:
            break;
    }
    return NOPARITY;
}

BYTE StopBitsCode(StopBits bits) {
    if (bits == StopBits::kTwo) return TWOSTOPBITS;
    return bits == StopBits::kOneAndHalf ? ONE5STOPBITS : ONESTOPBIT;
}

}  // namespace

// The system writes into it until the write is done, whatever becomes of the port.
struct MSComm::Write {
    OVERLAPPED overlapped{};
    std::string bytes;
};

MSComm::MSComm() = default;

MSComm::~MSComm() {
    Discard();
}

void MSComm::SetCommPort(std::wstring_view number) {
    const auto port = ParsePortNumber(number);
    if (!port) throw std::invalid_argument("The serial port's number is not one of 1 to 256.");
    m_commPort = *port;
}

void MSComm::SetSettings(std::wstring_view settings) {
    const auto line = ParseLineSettings(settings);
    if (!line)
        throw std::invalid_argument("The serial port's settings are not like \"9600,e,7,1\".");
    m_settings = *line;
}

void MSComm::SetPortOpen(bool open) {
    if (open == PortOpen()) return;
    if (!open) {
        Discard();
        m_port = com::Handle();
        return;
    }
    if (!m_taken) m_taken = com::Handle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    // COM10 and above have no other name than this.
    const std::wstring path = L"\\\\.\\COM" + std::to_wstring(m_commPort);
    m_port = com::Handle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                     OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
    Require(PortOpen() && m_taken);
    try {
        SetUpLine();
    } catch (...) {
        m_port = com::Handle();
        throw;
    }
}

void MSComm::SetUpLine() {
    DCB line{};
    line.DCBlength = sizeof line;
    Require(GetCommState(m_port.Get(), &line));
    line.BaudRate = m_settings.baud;
    line.ByteSize = m_settings.dataBits;
    line.Parity = ParityCode(m_settings.parity);
    line.StopBits = StopBitsCode(m_settings.stopBits);
    line.fBinary = TRUE;
    line.fParity = m_settings.parity != Parity::kNone;
    line.fOutxCtsFlow = FALSE;
    line.fOutxDsrFlow = FALSE;
    line.fOutX = FALSE;
    line.fInX = FALSE;
    line.fNull = FALSE;
    line.fErrorChar = FALSE;
    line.fAbortOnError = FALSE;
    line.fDtrControl = DTR_CONTROL_ENABLE;
    line.fRtsControl = RTS_CONTROL_ENABLE;
    Require(SetCommState(m_port.Get(), &line));
    Require(SetupComm(m_port.Get(), kInBufferSize, static_cast<DWORD>(m_outBufferSize)));
    COMMTIMEOUTS none{};
    Require(SetCommTimeouts(m_port.Get(), &none));
}

void MSComm::Output(std::string_view bytes) {
    if (!PortOpen()) throw std::logic_error("The serial port is not open.");
    if (OutBufferCount() + bytes.size() > m_outBufferSize)
        throw std::length_error("The serial port's output buffer is full.");
    m_queue += bytes;
    Advance();
}

std::size_t MSComm::OutBufferCount() {
    if (!PortOpen()) return 0;
    Advance();
    COMSTAT state{};
    DWORD faults = 0;
    Require(ClearCommError(m_port.Get(), &faults, &state));
    const std::size_t driver = state.cbOutQue;
    if (!m_write) return m_queue.size() + driver;
    // A driver that does not count says 0 although it is at work.
    const std::size_t most = m_write->bytes.size();
    return m_queue.size() + (driver == 0 ? most : std::min(driver, most));
}

void MSComm::Advance() {
    while (FinishWrite() && !m_queue.empty()) StartWrite();
}

bool MSComm::FinishWrite() {
    if (!m_write) return true;
    DWORD written = 0;
    if (!GetOverlappedResult(m_port.Get(), &m_write->overlapped, &written, FALSE)) {
        const DWORD failure = GetLastError();
        if (failure == ERROR_IO_INCOMPLETE) return false;
        m_write.reset();
        com::ThrowSystemError(failure);
    }
    ResetEvent(m_taken.Get());
    // What the port did not take goes first again.
    m_queue.insert(0, m_write->bytes.substr(written));
    m_write.reset();
    return written != 0;
}

void MSComm::StartWrite() {
    auto write = std::make_unique<Write>();
    write->bytes = m_queue.substr(0, kWriteSize);
    write->overlapped.hEvent = m_taken.Get();
    const auto size = static_cast<DWORD>(write->bytes.size());
    if (!WriteFile(m_port.Get(), write->bytes.data(), size, nullptr, &write->overlapped) &&
        GetLastError() != ERROR_IO_PENDING)
        com::ThrowSystemError(GetLastError());
    m_queue.erase(0, size);
    m_write = std::move(write);
}

void MSComm::Discard() noexcept {
    m_queue.clear();
    if (!PortOpen()) return;
    if (m_write) {
        CancelIo(m_port.Get());
        const bool done = WaitForSingleObject(m_taken.Get(), kCancelWait) == WAIT_OBJECT_0;
        if (!done) static_cast<void>(m_write.release());
        m_write.reset();
    }
    PurgeComm(m_port.Get(), PURGE_TXABORT | PURGE_TXCLEAR);
}

}  // namespace quillon
