// The bench: plays the host for the plug-in, from the command line or a script.
#include <algorithm>
#include <optional>
#include <stdexcept>

#include "com/module.h"
#include "commands.h"
#include "component_manifest.h"
#include "session.h"
#include "text.h"
#include "window.h"

namespace quorvex::bench {
namespace {

constexpr int kFailed = 1;
constexpr int kUsage = 2;
constexpr std::wstring_view kUsageText =
    L"usage: bench [--network FILE] [--save] [--class PROGID] [--manifest FILE]\n"
    L"             [COMMAND... [-- COMMAND...]...]\n"
    L"  --network FILE   the network to open; default: networks\\room.json beside the program, or\n"
    L"                   simulator\\networks\\room.json in a folder above it\n"
    L"  --save           write the network file back at the end, when all went well\n"
    L"  --class PROGID   the plug-in's device class; default: Quillon.CDevice\n"
    L"  --manifest FILE  the classes of plug-in and host by this manifest, without registration\n"
    L"Without a command, where there is a display, the window opens.\n"
    L"Commands (a device is named by its Neuron ID or its name; \"--\" separates commands):";

struct Options {
    std::wstring network;
    std::wstring plugin;
    std::wstring manifest;
    bool save = false;
    std::vector<Words> commands;
};

struct UsageTrouble {
    std::wstring text;
};

// The value of an option, which is the argument behind it.
std::wstring ValueBehind(const Words& arguments, std::size_t& place) {
    if (++place == arguments.size()) throw UsageTrouble{arguments[place - 1] + L" needs a value"};
    return arguments[place];
}

Options ParseOptions(const Words& arguments) {
    Options options;
    std::size_t i = 0;
    for (; i < arguments.size() && arguments[i].starts_with(L"--"); ++i) {
        if (arguments[i] == L"--network") {
            options.network = ValueBehind(arguments, i);
        } else if (arguments[i] == L"--class") {
            options.plugin = ValueBehind(arguments, i);
        } else if (arguments[i] == L"--manifest") {
            options.manifest = ValueBehind(arguments, i);
        } else if (arguments[i] == L"--save") {
            options.save = true;
        } else {
            throw UsageTrouble{arguments[i] + L" is no option"};
        }
    }
    if (i == arguments.size() && HasDisplay()) {
        options.commands.push_back({L"window"});
        return options;
    }
    Words command;
    for (; i <= arguments.size(); ++i) {
        if (i < arguments.size() && arguments[i] != L"--") {
            command.push_back(arguments[i]);
            continue;
        }
        if (command.empty()) throw UsageTrouble{L"a command is missing"};
        if (auto error = UsageError(command); !error.empty()) throw UsageTrouble{std::move(error)};
        options.commands.push_back(std::move(command));
        command.clear();
    }
    return options;
}

std::wstring DefaultNetwork() {
    std::wstring folder = com::ModuleFolder();
    for (std::wstring place = L"\\networks\\room.json"; !folder.empty();) {
        std::wstring file = folder + place;
        if (GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES) return file;
        if (place.starts_with(L"\\simulator")) {
            const auto mark = folder.find_last_of(L'\\');
            folder.resize(mark == std::wstring::npos ? 0 : mark);
        }
        place = L"\\simulator\\networks\\room.json";
    }
    throw Failure{L"there is no networks\\room.json here; name a network with --network"};
}

// An interface can be imported where no host is registered and no network is to be had.
bool ImportsOnly(const Options& options) {
    return std::all_of(options.commands.begin(), options.commands.end(),
                       [](const Words& command) { return command[0] == L"import"; });
}

void RunAll(const Options& options) {
    if (ImportsOnly(options)) {
        for (const Words& command : options.commands)
            commands::ImportInterface({command.begin() + 1, command.end()});
        return;
    }
    const auto network = options.network.empty() ? DefaultNetwork() : FullPath(options.network);
    Host host(network, options.plugin);
    {
        Session session(host);
        for (const Words& command : options.commands) session.Run(command);
        session.Finish();
    }
    if (options.save) host.Save(network);
    if (const long alive = host.Close(); alive != 0) {
        throw Failure{std::to_wstring(alive) + L" objects of the host are still held"};
    }
}

// COM for the lifetime of this object.
class Apartment {
public:
    Apartment() { com::Check(OleInitialize(nullptr)); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() { OleUninitialize(); }
};

int Main(const Words& arguments) {
    PrepareOutput();
    try {
        if (arguments.size() == 1 && arguments[0] == L"--help") {
            Print(std::wstring(kUsageText) + L"\n" + CommandSummary());
            return 0;
        }
        const Options options = ParseOptions(arguments);
        const Apartment apartment;
        std::optional<ComponentManifest> components;
        if (!options.manifest.empty()) components.emplace(options.manifest);
        RunAll(options);
        return 0;
    } catch (const UsageTrouble& trouble) {
        PrintError(L"bench: " + trouble.text + L"\n" + std::wstring(kUsageText) + L"\n" +
                   CommandSummary());
        return kUsage;
    } catch (const Failure& failure) {
        PrintError(L"bench: " + failure.text);
    } catch (const com::Error& error) {
        PrintError(L"bench: " + Describe(error));
    } catch (const std::exception& error) {
        PrintError(L"bench: " + WideFromUtf8(error.what()));
    }
    return kFailed;
}

}  // namespace
}  // namespace quorvex::bench

int wmain(int count, wchar_t** arguments) {
    return quorvex::bench::Main({arguments + 1, arguments + count});
}
