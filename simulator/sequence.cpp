#include "sequence.h"

#include <algorithm>
#include <vector>

namespace quorvex {

STDMETHODIMP Sequence::Next(ULONG count, VARIANT* items, ULONG* fetched) {
    if (fetched) *fetched = 0;
    if (!items || (!fetched && count != 1)) return E_POINTER;
    ULONG given = 0;
    const HRESULT result = Do(
        Id("Enumerator.Next"),
        [&] {
            std::vector<com::Variant> taken;
            for (std::size_t at = m_position; taken.size() < count && at < m_count; ++at)
                taken.emplace_back(m_item(at).Get());
            for (com::Variant& value : taken) value.DetachTo(&items[given++]);
            m_position += given;
        },
        count);
    if (result != S_OK) return result;
    if (fetched) *fetched = given;
    return given == count ? S_OK : S_FALSE;
}

STDMETHODIMP Sequence::Skip(ULONG count) {
    bool all = false;
    const HRESULT result = Do(
        Id("Enumerator.Skip"),
        [&] {
            const std::size_t left = m_count - m_position;
            all = count <= left;
            m_position += std::min<std::size_t>(count, left);
        },
        count);
    return result == S_OK && !all ? S_FALSE : result;
}

STDMETHODIMP Sequence::Reset() {
    return Do(Id("Enumerator.Reset"), [&] { m_position = 0; });
}

STDMETHODIMP Sequence::Clone(IEnumVARIANT** copy) {
    return Answer(Id("Enumerator.Clone"), copy,
                  [&] { return com::Make<Sequence>(m_count, m_item, m_position); });
}

}  // namespace quorvex
