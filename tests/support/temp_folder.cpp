#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace quillon::test {

TempFolder::TempFolder() {
    static int number = 0;
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    m_path = std::wstring(folder) + L"quillon-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
             std::to_wstring(++number);
    std::filesystem::remove_all(m_path);
    EXPECT_TRUE(std::filesystem::create_directories(m_path));
}

TempFolder::~TempFolder() {
    std::error_code failed;
    std::filesystem::remove_all(m_path, failed);
    EXPECT_FALSE(failed) << "a file of the test is still open: " << failed.message();
}

std::wstring TempFolder::Write(std::wstring_view name, std::string_view bytes) const {
    std::wstring path = *this / name;
    WriteBytes(path, bytes);
    return path;
}

void WriteBytes(const std::wstring& path, std::string_view bytes) {
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + testing::PrintToString(path));
}

std::string ReadBytes(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + testing::PrintToString(path));
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool FileExists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace quillon::test
