// A host data point whose members a test decides, and which keeps what it was asked.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "com/platform.h"
#include "com/ptr.h"
#include "com/variant.h"
#include "editors/DataPoint.h"

namespace quillon::test {

// Lives longer than the editors that are given it. Members by the host's names, those of the type
// among them; a "FormattedValue" that is not set is the text of "Value".
class FakePoint {
public:
    explicit FakePoint(std::wstring genType, std::wstring value = {});
    FakePoint(const FakePoint&) = delete;

    FakePoint& Set(const std::wstring& member, const com::Variant& value) {
        m_members[member] = value;
        return *this;
    }
    FakePoint& Set(const std::wstring& member, const wchar_t* text) {
        return Set(member, com::Variant(text));
    }
    std::wstring Value() const { return m_members.at(L"Value").AsText(); }
    FakePoint& AddField(const std::wstring& name, std::wstring genType, std::wstring value);
    FakePoint& Field(std::size_t place) {
        return *std::next(m_fields.begin(), static_cast<std::ptrdiff_t>(place));
    }
    // The collection then has no such field any more.
    void RemoveFields() { m_gone = true; }

    // "Value.get", "GenType.get", "Value.put 5", "Fields.Item Key", in the order of the calls.
    std::vector<std::wstring>& Log() { return m_log; }
    std::vector<std::wstring> Written() const;
    // Every call of "Value.put" and so on fails.
    void Fail(const std::wstring& call) { m_failing.insert(call); }
    // The nth call from now fails, once, whatever it is.
    void FailNth(int nth) { m_failIn = nth; }
    void Restore() {
        m_failing.clear();
        m_failIn = 0;
    }
    // Runs inside the next call of that kind.
    void During(const std::wstring& call, std::function<void()> function) {
        m_during[call] = std::move(function);
    }

    DataPoint Point();

private:
    com::Variant Get(const std::wstring& member);
    void Put(const std::wstring& member, const com::Variant& value);
    com::Variant GetField(const std::wstring& member, const com::Variant* key);
    void Called(const std::wstring& call, const std::wstring& detail = {});

    std::map<std::wstring, com::Variant> m_members;
    std::list<FakePoint> m_fields;
    std::vector<std::wstring> m_log;
    std::set<std::wstring> m_failing;
    std::map<std::wstring, std::function<void()>> m_during;
    int m_failIn = 0;
    bool m_gone = false;
};

}  // namespace quillon::test
