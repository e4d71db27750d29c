// Files of a test's own.
#pragma once

#include <string>
#include <string_view>

namespace quillon::test {

// A new empty folder, removed with all that is in it at the end.
class TempFolder {
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    // Without a trailing backslash.
    const std::wstring& Path() const { return m_path; }
    std::wstring operator/(std::wstring_view name) const {
        return m_path + L"\\" + std::wstring(name);
    }
    // Writes a file into the folder and gives its path.
    std::wstring Write(std::wstring_view name, std::string_view bytes) const;

private:
    std::wstring m_path;
};

// Whole files. One that cannot be read or written throws std::runtime_error.
void WriteBytes(const std::wstring& path, std::string_view bytes);
std::string ReadBytes(const std::wstring& path);
bool FileExists(const std::wstring& path);

}  // namespace quillon::test
