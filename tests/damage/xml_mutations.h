// Damage to the elements of an XML document, most of which leaves it well-formed.
#pragma once

#include "damage/byte_mutations.h"

namespace quillon::test {

std::span<const Mutation> XmlMutations();

}  // namespace quillon::test
