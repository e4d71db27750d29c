#include "support/printer.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <system_error>

namespace quillon::test {
namespace {

constexpr ULONGLONG kLimit = 60000;

std::wstring Variable(const wchar_t* name) {
    wchar_t text[512];
    const DWORD length = GetEnvironmentVariableW(name, text, 512);
    return {text, length < 512 ? length : 0};
}

bool WaitFor(const std::function<bool()>& condition) {
    const ULONGLONG start = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - start > kLimit) return false;
        Sleep(2);
    }
    return true;
}

}  // namespace

std::optional<Printer> Printer::Attached() {
    const std::wstring port = Variable(L"QUILLON_TEST_PORT");
    if (port.empty()) return std::nullopt;
    Printer printer(port, Variable(L"QUILLON_TEST_PRINTER"));
    printer.Tell("fresh");
    return printer;
}

std::string Printer::Received() const {
    return Content("received");
}

std::string Printer::Content(const char* name) const {
    std::ifstream file(std::filesystem::path(m_folder) / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool Printer::IsHeld() const {
    Tell("ask");
    return Content("holders") != "0";
}

bool Printer::HasReceived(std::size_t bytes) const {
    return WaitFor([&] { return Received().size() >= bytes; });
}

void Printer::Tell(const char* command) const {
    Ask(command);
    EXPECT_TRUE(WaitFor([&] {
        return !std::filesystem::exists(std::filesystem::path(m_folder) / "do");
    })) << "the printer does not obey";
}

// Renamed into place, so that the printer never reads half a word.
void Printer::Ask(const char* command) const {
    const std::filesystem::path folder(m_folder);
    std::ofstream(folder / "do.new") << command;
    // The printer may take the word away while the system still looks at what it has renamed.
    std::error_code failed;
    std::filesystem::rename(folder / "do.new", folder / "do", failed);
    if (failed && std::filesystem::exists(folder / "do.new"))
        throw std::filesystem::filesystem_error("the printer is not told", failed);
}

}  // namespace quillon::test
