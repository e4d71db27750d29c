// Reading and writing the value of one data point, or of a field inside it, in each of its three
// texts.
#pragma once

#include <string>
#include <string_view>

#include "points.h"

namespace quorvex {

enum class ValueForm { kRaw, kEdit, kShown };

class PointValue {
public:
    PointValue(const DeviceView& view, const PointPath& path) : m_view(view), m_path(path) {}

    const DataPoint& Point() const;
    // Of the field where the path leads to one.
    const Type& ValueType() const;

    // "?" while the device does not answer.
    std::wstring Read(ValueForm form) const;
    // Refuses: an output, a device that does not answer, a text that is no value of the type.
    void Write(ValueForm form, std::wstring_view text) const;

private:
    Bytes Parse(ValueForm form, std::wstring_view text) const;
    std::wstring Place() const;

    const DeviceView& m_view;
    const PointPath& m_path;
};

}  // namespace quorvex
