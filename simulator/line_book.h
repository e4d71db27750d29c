// Lines in the order in which they came; the newest are kept.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <string>

namespace quorvex {

class LineBook {
public:
    static constexpr std::size_t kKept = 100'000;

    void Add(std::wstring line) {
        if (m_lines.size() == kKept) {
            m_lines.pop_front();
            ++m_dropped;
        }
        m_lines.push_back(std::move(line));
    }
    void Clear() {
        m_lines.clear();
        m_dropped = 0;
    }
    // Those that are no longer kept included.
    long Count() const { return m_dropped + static_cast<long>(m_lines.size()); }
    // The kept ones from a number on (0: the first), each with a line end.
    std::wstring Text(long from) const {
        std::wstring text;
        for (long i = std::max(from - m_dropped, 0L); i < static_cast<long>(m_lines.size()); ++i)
            text += m_lines[static_cast<std::size_t>(i)] + L'\n';
        return text;
    }

private:
    std::deque<std::wstring> m_lines;
    long m_dropped = 0;
};

}  // namespace quorvex
