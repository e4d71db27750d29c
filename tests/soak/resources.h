// What this process holds, and how that changes over a day.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "window/gui_objects.h"

namespace quillon::test {

struct Resources {
    std::size_t heap = 0;          // bytes in use in all heaps
    std::size_t privateBytes = 0;  // in committed pages
    int handles = 0;
    GuiObjects gui;
};

Resources CountResources();

class ResourceCurve {
public:
    // systems: bytes in the heaps that the system has left behind.
    void Add(double partOfDay, double systems = 0);
    // All but the private bytes are at the end what they are in the middle, within an allowance; of
    // the heaps what is not the system's.
    void ExpectFlat() const;
    void Print() const;

private:
    struct Sample {
        double partOfDay = 0;
        double systems = 0;
        Resources resources;
    };
    // The mean of what lies between two parts of the day.
    template <class Field>
    double Mean(double from, double to, Field field) const;

    std::vector<Sample> m_samples;
};

}  // namespace quillon::test
