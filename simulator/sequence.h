// Enumeration of the host's collections, item by item, so that a long one costs nothing in advance.
#pragma once

#include <cstddef>
#include <functional>

#include "com/variant.h"
#include "hosted.h"

namespace quorvex {

class Sequence final : public Hosted<IEnumVARIANT> {
public:
    // `item` makes the object at a position below `count`; it holds what it needs.
    using Item = std::function<com::Ptr<IDispatch>(std::size_t position)>;

    Sequence(std::size_t count, Item item, std::size_t position = 0)
        : m_count(count), m_item(std::move(item)), m_position(position) {}

    STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumVARIANT** copy) override;

private:
    std::size_t m_count;
    Item m_item;
    std::size_t m_position;
};

}  // namespace quorvex
