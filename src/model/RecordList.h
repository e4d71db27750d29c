// What the two collections of an application file have in common.
#pragma once

#include <cmath>
#include <vector>

#include "com/class_info.h"
#include "com/dual.h"
#include "com/enumerator.h"
#include "com/gate.h"
#include "com/object.h"
#include "plugin/number_text.h"
#include "quillon_h.h"
#include "ui/message_box.h"

namespace quillon {

// An ordered list of records, in the order of adding; positions count from 1. Nothing has a key:
// duplicate names and connection indexes stand side by side. Derived is the collection class,
// Collection its interface, Record its records' class.
template <class Derived, class Collection, class Record>
class RecordList
    : public com::Object<com::Dual<Collection>, com::ClassInfo<Derived>, com::ErrorInfoSupport> {
public:
    using RecordInterface = typename Record::RecordInterface;
    using Records = std::vector<com::Ptr<Record>>;

    STDMETHODIMP get_Count(long* count) override {
        return com::Gate(count, [&] { return static_cast<std::int32_t>(m_records.size()); });
    }

    STDMETHODIMP get_Item(BSTR key, RecordInterface** record) override {
        return com::Gate(record, [&] { return Item(com::View(key)); });
    }

    STDMETHODIMP get_NewEnum(IUnknown** enumerator) override {
        return com::Gate(enumerator, [&] {
            com::VariantEnumerator::Values values;
            values.reserve(m_records.size());
            for (const auto& record : m_records)
                values.emplace_back(static_cast<RecordInterface*>(record.Get()));
            return com::Make<com::VariantEnumerator>(std::move(values));
        });
    }

    STDMETHODIMP Add(BSTR name, IDispatch* element, IDispatch* catalogue,
                     RecordInterface** record) override {
        return com::Gate(record, [&] { return Add(com::Text(name), element, catalogue); });
    }

    // The record at the position that the key's number rounds to, halves to even; empty for a
    // position that is none. Keys themselves find nothing, for records have none.
    com::Ptr<Record> Item(std::wstring_view key) const {
        return com::Quietly([&]() -> com::Ptr<Record> {
            const std::int32_t position = RoundHalfEven(LenientNumber(key));
            const bool exists =
                position >= 1 && static_cast<std::size_t>(position) <= m_records.size();
            return exists ? m_records[static_cast<std::size_t>(position) - 1] : nullptr;
        });
    }

    // Appends a record filled from an element; empty, with a message to the operator, when that
    // fails.
    com::Ptr<Record> Add(std::wstring name, IDispatch* element, IDispatch* catalogue) {
        try {
            com::Ptr<Record> record = com::Make<Record>();
            record->SetName(std::move(name));
            record->SetTypeCatalogue(catalogue);
            record->Fill(element);
            m_records.push_back(record);
            return record;
        } catch (...) {
            com::Swallow();
        }
        ui::ShowMessage(L"Error: multiple connection index!", MB_OK);
        return nullptr;
    }

    const Records& All() const { return m_records; }

private:
    Records m_records;
};

}  // namespace quillon
