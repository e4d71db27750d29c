// Ways in which a file gets damaged: on its way, by an editor, or by ill will.
#pragma once

#include <cstdint>
#include <string>

namespace quillon::test {

enum class FileKind { kApplication, kParameters, kCalibration, kSettings, kLabel };

struct Damaged {
    std::string bytes;
    const char* mutation = "";  // the first of those that were applied
};

// A good file with one to three mutations that suit its kind. The same number gives the same
// damage; numbers that follow each other begin with each mutation in turn.
Damaged Damage(std::string good, FileKind kind, std::uint32_t number);

}  // namespace quillon::test
