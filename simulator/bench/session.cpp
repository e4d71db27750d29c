#include "session.h"

#include <fstream>
#include <iterator>

#include "text.h"

namespace quorvex::bench {
namespace {

constexpr int kDeepest = 8;  // scripts that run scripts

std::wstring ReadText(const std::wstring& file) {
    std::ifstream stream(file.c_str(), std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream.is_open() || stream.bad()) throw Failure{L"\"" + file + L"\" cannot be read"};
    return WideFromUtf8(bytes);
}

// Counts one script in, for as long as it runs.
struct DepthCount {
    explicit DepthCount(int& depth) : m_depth(depth) { ++m_depth; }
    DepthCount(const DepthCount&) = delete;
    DepthCount& operator=(const DepthCount&) = delete;
    ~DepthCount() { --m_depth; }
    int& m_depth;
};

}  // namespace

void Session::Run(const Words& words) {
    if (words.empty()) return;
    if (const auto error = UsageError(words); !error.empty()) throw Failure{error};
    try {
        FindCommand(words[0])->run(*this, {words.begin() + 1, words.end()});
    } catch (const com::Error& error) {
        throw Failure{words[0] + L" failed: " + Describe(error)};
    } catch (const ScriptError& error) {
        throw Failure{WideFromUtf8(error.what())};
    }
    PumpMessages();
    m_host.Reports();
    CheckBoxes();
}

void Session::RunScript(const std::wstring& file) {
    if (m_depth == kDeepest) throw Failure{L"\"" + file + L"\" is one script too deep"};
    const auto lines = SplitLines(ReadText(file));
    const DepthCount counted(m_depth);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto place = [&] { return file + L":" + std::to_wstring(i + 1) + L": "; };
        try {
            Run(SplitWords(lines[i], [&](auto name) { return Variable(name); }));
        } catch (const Failure& failure) {
            throw Failure{place() + failure.text};
        } catch (const ScriptError& error) {
            throw Failure{place() + WideFromUtf8(error.what())};
        }
    }
}

void Session::CheckBoxes() {
    const auto& boxes = m_boxes.Seen();
    while (m_checkedBoxes < boxes.size()) {
        const Box& box = boxes[m_checkedBoxes++];
        if (box.trouble.empty()) continue;
        throw Failure{L"message box \"" + box.title + L"\" (" + box.text + L"): " + box.trouble};
    }
}

void Session::ExpectMisuse(std::wstring_view text) {
    const auto misuse = m_host.Misuse();
    if (m_checkedMisuse == misuse.size()) throw Failure{L"the host recorded no misuse"};
    const auto& line = misuse[m_checkedMisuse];
    if (line.find(text) == std::wstring::npos) {
        throw Failure{L"expected misuse \"" + std::wstring(text) + L"\", recorded is \"" + line +
                      L"\""};
    }
    ++m_checkedMisuse;
}

void Session::Finish() {
    for (const Report& report : m_host.Reports()) {
        if (FAILED(report.code) && !report.seen) {
            throw Failure{L"the host was told " + CodeText(report.code) + L" for " +
                          m_host.NameOf(report.neuron) + L", and nothing expected it"};
        }
    }
    if (m_boxes.Queued() > 0) throw Failure{L"an answer was queued that no message box asked for"};
    const auto misuse = m_host.Misuse();
    if (m_checkedMisuse < misuse.size()) {
        throw Failure{L"misuse of the host: " + misuse[m_checkedMisuse]};
    }
}

std::optional<std::wstring> Session::Variable(std::wstring_view name) const {
    if (const auto found = m_variables.find(name); found != m_variables.end()) return found->second;
    const std::wstring zeroEnded(name);
    std::wstring value(32767, L'\0');
    SetLastError(ERROR_SUCCESS);
    const DWORD length =
        GetEnvironmentVariableW(zeroEnded.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && GetLastError() != ERROR_SUCCESS) return std::nullopt;
    value.resize(length);
    return value;
}

}  // namespace quorvex::bench
