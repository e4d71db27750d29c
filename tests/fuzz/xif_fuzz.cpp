#include "xif_reader.h"

#include <set>

#include "fuzz_support.h"

namespace {

std::size_t KnownLength(int standardType) {
    return standardType == 105 ? 2 : 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using quillon::fuzz::Require;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const quorvex::XifDevice device = quorvex::ReadXif(text, KnownLength);
        Require(device.programId.size() == 16);
        Require(device.programId.find_first_not_of("0123456789ABCDEF") == std::string::npos);
        Require(device.variables.size() <= 4096);
        Require(device.selfDocumentation.size() <= 1024);
        std::set<long> indexes;
        for (const quorvex::XifVariable& variable : device.variables) {
            Require(indexes.insert(variable.index).second);
            Require(variable.index >= 0 && variable.index <= 999999);
            Require(!variable.name.empty() && !variable.value.empty());
            Require(variable.name.find('\0') == std::string::npos);
            Require(variable.selfDocumentation.size() <= 1024);
            Require(variable.value.size() <= 31);
            Require(!(variable.output && variable.configuration));
            Require(variable.standardType != 105 || variable.value.size() == 2);
        }
    } catch (const quorvex::XifError& error) {
        Require(std::string_view(error.what()).starts_with("line "));
    }
    return 0;
}
