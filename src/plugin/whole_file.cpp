#include "plugin/whole_file.h"

#include <windows.h>

#include "com/handle.h"

namespace quillon {
namespace {

com::Handle OpenFile(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
    return com::Handle(CreateFileW(path.c_str(), access, share, nullptr, disposition,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool WriteAll(const com::Handle& file, std::string_view bytes) {
    DWORD written = 0;
    return WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) &&
           written == bytes.size();
}

}  // namespace

std::optional<std::string> ReadWholeFile(const std::wstring& path, std::size_t largest) {
    const auto file =
        OpenFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
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
    auto file = OpenFile(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!file) return false;
    if (WriteAll(file, bytes)) return true;
    file = com::Handle();
    DeleteFileW(path.c_str());
    return false;
}

bool DeleteWholeFile(const std::wstring& path) {
    if (DeleteFileW(path.c_str())) return true;
    const DWORD failure = GetLastError();
    return failure == ERROR_FILE_NOT_FOUND || failure == ERROR_PATH_NOT_FOUND;
}

}  // namespace quillon
