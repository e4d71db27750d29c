#include "editors/option_set.h"

#include <algorithm>

#include "editors/option_editors.h"
#include "fuzz_support.h"

namespace quillon::fuzz {
namespace {

void CheckSet(const OptionSet& set, const OptionValue& value) {
    const auto position = set.PositionOf(value);
    if (!position) return;
    Require(*position < set.Options().size());
    const OptionValue written = set.Encode(*position);
    Require(written.state.empty() == (set.Shape() != PointShape::kTwoFields));
    // Of equal codes the first is read back.
    const auto again = set.PositionOf(written);
    Require(again && *again <= *position);
    Require(set.Encode(*again) == written);
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon;
    using namespace quillon::fuzz;
    // Three texts: level, state, and the rest as an option list or an entry of the settings.
    const std::wstring text = WideText(data, size);
    const std::size_t first = std::min(text.find(L'|'), text.size());
    const std::size_t second = std::min(text.find(L'|', first + 1), text.size());
    const std::size_t stateFrom = std::min(first + 1, second);
    const OptionValue value{text.substr(0, first), text.substr(stateFrom, second - stateFrom)};
    const std::wstring rest = text.substr(std::min(second + 1, text.size()));

    const auto entry = ReadOptionEditor(rest);
    Require(!entry || entry->editor == OptionEditor::kFan || entry->speeds == 0);
    for (const OptionSet& set :
         {OptionSet::AppMode(), OptionSet::OccSchedule(), OptionSet::Lighting(),
          OptionSet::EnergyHoldOff(), OptionSet::Fan(entry ? entry->speeds : 3),
          OptionSet::OfCodes(rest, PointShape::kPlain)})
        CheckSet(set, value);
    return 0;
}
