#include "plugin/whole_file.h"

#include <windows.h>

#include <utility>

namespace quillon {
namespace {

class FileHandle {
public:
    FileHandle(const std::wstring& path, DWORD access, DWORD share, DWORD disposition)
        : m_handle(CreateFileW(path.c_str(), access, share, nullptr, disposition,
                               FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { Close(); }

    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const { return m_handle; }
    void Close() {
        if (*this) CloseHandle(std::exchange(m_handle, INVALID_HANDLE_VALUE));
    }

private:
    HANDLE m_handle;
};

}  // namespace

std::optional<std::string> ReadWholeFile(const std::wstring& path, std::size_t largest) {
    const FileHandle file(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.Get(), &size)) return std::nullopt;
    if (size.QuadPart > static_cast<LONGLONG>(largest)) return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr) ||
        read != bytes.size())
        return std::nullopt;
    return bytes;
}

bool WriteWholeFile(const std::wstring& path, std::string_view bytes) {
    FileHandle file(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!file) return false;
    DWORD written = 0;
    const bool done =
        WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
        written == bytes.size();
    file.Close();
    if (!done) DeleteFileW(path.c_str());
    return done;
}

bool DeleteWholeFile(const std::wstring& path) {
    return DeleteFileW(path.c_str()) || GetLastError() == ERROR_FILE_NOT_FOUND ||
           GetLastError() == ERROR_PATH_NOT_FOUND;
}

}  // namespace quillon
