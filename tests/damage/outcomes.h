// What became of the damaged files, counted and printed at the end of the program.
#pragma once

#include <string>

namespace quillon::test {

void CountDamaged(const std::string& kind, const std::string& mutation, const std::string& outcome);

}  // namespace quillon::test
