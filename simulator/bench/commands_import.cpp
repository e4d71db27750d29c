#include <filesystem>
#include <fstream>
#include <iterator>

#include "commands.h"
#include "text.h"
#include "xif_network.h"

namespace quorvex::bench::commands {
namespace {

constexpr std::uintmax_t kLargestFile = std::uintmax_t{16} * 1024 * 1024;
constexpr std::wstring_view kNeuron = L"0000000000F1";

std::string ReadInterface(const std::wstring& file) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(file, failure);
    if (!failure && size > kLargestFile) throw Failure{L"\"" + file + L"\" is too large"};
    std::ifstream stream(file.c_str(), std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream.is_open() || stream.bad()) throw Failure{L"\"" + file + L"\" cannot be read"};
    return bytes;
}

XifDevice ReadDevice(const std::wstring& file) {
    const std::string text = ReadInterface(file);
    try {
        return ReadXif(text, CatalogueLength);
    } catch (const XifError& error) {
        throw Failure{L"\"" + file + L"\" " + WideFromUtf8(error.what())};
    }
}

}  // namespace

void Import(Session&, const Words& words) {
    ImportInterface(words);
}

void ImportInterface(const Words& words) {
    const std::filesystem::path source(FullPath(words[0]));
    std::filesystem::path target(source);
    target.replace_extension(L".json");
    if (words.size() > 1) target = FullPath(words[1]);
    const std::wstring neuron = words.size() > 2 ? Upper(words[2]) : std::wstring(kNeuron);
    if (!IsHex(neuron, 12)) throw Failure{L"\"" + neuron + L"\" is no Neuron ID"};

    const XifDevice device = ReadDevice(source.wstring());
    const std::string text =
        NetworkTextOf(device, Utf8FromWide(source.stem().wstring()), Utf8FromWide(neuron));
    std::ofstream stream(target, std::ios::binary | std::ios::trunc);
    stream << text;
    stream.flush();
    if (!stream) throw Failure{L"\"" + target.wstring() + L"\" cannot be written"};
    Print(L"Imported " + std::to_wstring(device.variables.size()) + L" network variables into " +
          target.wstring() + L"; try it with --network");
}

}  // namespace quorvex::bench::commands
