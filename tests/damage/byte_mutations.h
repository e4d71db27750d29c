// Damage that any file can take, whatever is in it.
#pragma once

#include <span>
#include <string>

#include "damage/random.h"

namespace quillon::test {

struct Mutation {
    const char* name;
    void (*apply)(std::string& bytes, Random& random);
};

// A stretch of a text.
struct Stretch {
    std::size_t begin = 0;
    std::size_t size = 0;
};

// Anywhere; of at most so many bytes.
Stretch AnyStretch(const std::string& bytes, Random& random, std::size_t most);

std::span<const Mutation> ByteMutations();
// Of the places where a label template has its fields.
std::span<const Mutation> PlaceholderMutations();

}  // namespace quillon::test
