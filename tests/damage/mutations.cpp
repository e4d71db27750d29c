#include "damage/mutations.h"

#include <span>

#include "damage/byte_mutations.h"
#include "damage/ini_mutations.h"
#include "damage/random.h"
#include "damage/xml_mutations.h"

namespace quillon::test {

namespace {

// How many mutations a file gets: one for most, or little would be left that can be read.
constexpr std::size_t kCounts[] = {1, 1, 1, 2, 3};

std::span<const Mutation> OwnMutations(FileKind kind) {
    switch (kind) {
        case FileKind::kApplication:
            return XmlMutations();
        case FileKind::kParameters:
        case FileKind::kCalibration:
        case FileKind::kSettings:
            return IniMutations();
        case FileKind::kLabel:
            break;
    }
    return PlaceholderMutations();
}

const Mutation& MutationAt(FileKind kind, std::size_t place) {
    const auto bytes = ByteMutations();
    const auto own = OwnMutations(kind);
    place %= bytes.size() + own.size();
    return place < bytes.size() ? bytes[place] : own[place - bytes.size()];
}

}  // namespace

Damaged Damage(std::string good, FileKind kind, std::uint32_t number) {
    Random random(number * std::uint64_t{8} + static_cast<std::uint64_t>(kind));
    Damaged damaged{std::move(good), MutationAt(kind, number).name};
    const std::size_t count = random.Pick(kCounts);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = i == 0 ? number : random.Below(1000);
        MutationAt(kind, place).apply(damaged.bytes, random);
    }
    return damaged;
}

}  // namespace quillon::test
