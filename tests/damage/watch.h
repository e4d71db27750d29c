// Ends the program when one file takes too long.
#pragma once

#include <string>

namespace quillon::test {

// From construction to destruction. One at a time.
class Watch {
public:
    explicit Watch(const std::string& name);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();
};

}  // namespace quillon::test
