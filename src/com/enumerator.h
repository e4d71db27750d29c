// Enumerators over a snapshot: what is added or removed later does not show.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#include "com/error.h"
#include "com/object.h"
#include "com/platform.h"
#include "com/variant.h"

namespace quillon::com {

// How one kind of enumerator hands an item over: Traits::Value, Traits::Item and
// Traits::Give(const Value&, Item*), which may throw, and Traits::Take(Item*), which takes one
// back.
template <class I, class Traits>
class Enumerator final : public Object<I> {
public:
    using Values = std::vector<typename Traits::Value>;

    explicit Enumerator(Values values, std::size_t position = 0)
        : m_values(std::make_shared<const Values>(std::move(values))), m_position(position) {}

    STDMETHODIMP Next(ULONG count, typename Traits::Item* items, ULONG* fetched) override {
        if (fetched) *fetched = 0;
        if (!items || (!fetched && count != 1)) return E_POINTER;
        ULONG given = 0;
        try {
            for (; given < count && m_position < m_values->size(); ++given, ++m_position)
                Traits::Give((*m_values)[m_position], &items[given]);
        } catch (...) {
            while (given > 0) {
                Traits::Take(&items[--given]);
                --m_position;
            }
            return ResultOfCurrentException();
        }
        if (fetched) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }

    STDMETHODIMP Skip(ULONG count) override {
        const std::size_t left = m_values->size() - m_position;
        m_position += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }

    STDMETHODIMP Reset() override {
        m_position = 0;
        return S_OK;
    }

    STDMETHODIMP Clone(I** copy) override {
        if (!copy) return E_POINTER;
        *copy = nullptr;
        try {
            *copy = Make<Enumerator>(*m_values, m_position).Detach();
            return S_OK;
        } catch (...) {
            return ResultOfCurrentException();
        }
    }

private:
    std::shared_ptr<const Values> m_values;
    std::size_t m_position;
};

struct VariantTraits {
    using Value = Variant;
    using Item = VARIANT;
    static void Give(const Variant& value, VARIANT* item) { Variant(value).DetachTo(item); }
    static void Take(VARIANT* item) { VariantClear(item); }
};
using VariantEnumerator = Enumerator<IEnumVARIANT, VariantTraits>;

}  // namespace quillon::com
