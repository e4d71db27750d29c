// Damage to the sections, keys and values of a settings file.
#pragma once

#include "damage/byte_mutations.h"

namespace quillon::test {

std::span<const Mutation> IniMutations();

}  // namespace quillon::test
