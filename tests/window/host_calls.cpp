#include "window/host_calls.h"

#include <map>

#include "support/full_run.h"

namespace quillon::test {

std::vector<HostCall> CallsOf(const Lines& log) {
    std::vector<HostCall> calls;
    std::map<std::wstring, long> counts;
    for (const std::wstring& line : log) {
        const std::wstring member = line.substr(0, line.find(L'('));
        calls.push_back({member, ++counts[member]});
    }
    return calls;
}

std::vector<HostCall> Tried(const std::vector<HostCall>& calls) {
    if (FullRun()) return calls;
    std::map<std::wstring, std::vector<HostCall>> ofMembers;
    for (const HostCall& call : calls) ofMembers[call.member].push_back(call);
    std::vector<HostCall> tried;
    for (const auto& [member, all] : ofMembers) {
        tried.push_back(all.front());
        if (all.size() > 2) tried.push_back(all[all.size() / 2]);
        if (all.size() > 1) tried.push_back(all.back());
    }
    return tried;
}

}  // namespace quillon::test
