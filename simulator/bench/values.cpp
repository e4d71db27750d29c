#include "values.h"

#include <cstdint>

#include "com/late.h"
#include "host_members.h"
#include "text.h"

namespace quorvex::bench {
namespace {

namespace point = quillon::host::point;
namespace points = quillon::host::points;

constexpr std::size_t kLongestIdentifier = 4;

com::Ptr<IDispatch> PointsOf(const Room& room, ValueKind kind) {
    com::Ptr<IDispatch> collection;
    com::Check(kind == ValueKind::kVariable ? room.device->get_NetworkVariables(collection.Out())
                                            : room.device->get_ConfigProperties(collection.Out()));
    if (!collection) throw Failure{room.name + L" gives no such collection"};
    return collection;
}

com::Ptr<IDispatch> FindByName(IDispatch* collection, const std::wstring& name) {
    // Keys are indexes, which need not be consecutive, so the collection is enumerated.
    const auto enumerable = com::Get(collection, L"_NewEnum");
    if (enumerable.vt != VT_UNKNOWN && enumerable.vt != VT_DISPATCH) return nullptr;
    const auto all = com::Ptr<IUnknown>(enumerable.punkVal).As<IEnumVARIANT>();
    com::Variant item;
    while (all && all->Next(1, item.Out(), nullptr) == S_OK) {
        auto candidate = item.AsObject();
        if (com::Get(candidate.Get(), point::kName).AsText() == name) return candidate;
    }
    return nullptr;
}

com::Ptr<IDispatch> FindPoint(const Room& room, ValueKind kind, const std::wstring& key) {
    const auto collection = PointsOf(room, kind);
    auto found = com::Get(collection.Get(), points::kItem, {com::Variant(key)}).AsObject();
    if (!found) found = FindByName(collection.Get(), key);
    if (!found) throw Failure{room.name + L" has no value \"" + key + L"\""};
    return found;
}

std::vector<com::Ptr<IFile>> FilesOf(const Room& room) {
    com::Ptr<IFiles> files;
    com::Check(room.device->get_Files(files.Out()));
    std::vector<com::Ptr<IFile>> all;
    long count = 0;
    if (files) com::Check(files->get_Count(&count));
    for (long i = 1; i <= count; ++i) {
        com::Ptr<IFile> file;
        com::Check(files->get_Item(i, file.Out()));
        all.push_back(std::move(file));
    }
    return all;
}

long IdentifierOf(const com::Ptr<IFile>& file) {
    long identifier = 0;
    com::Check(file->get_Identifier(&identifier));
    return identifier;
}

com::Ptr<IFile> FindFile(const Room& room, const std::wstring& key) {
    if (key.empty() || key.size() > kLongestIdentifier || !IsHex(key, key.size())) {
        throw Failure{L"\"" + key + L"\" is no entry identifier of one to four hexadecimal digits"};
    }
    const auto identifier = static_cast<std::int16_t>(std::stoul(key, nullptr, 16));
    for (auto& file : FilesOf(room)) {
        if (IdentifierOf(file) == identifier) return file;
    }
    throw Failure{room.name + L" has no entry " + key};
}

}  // namespace

ValueKind ValueKindOf(std::wstring_view word) {
    if (word == L"nv") return ValueKind::kVariable;
    if (word == L"cp") return ValueKind::kProperty;
    if (word == L"file") return ValueKind::kFile;
    throw Failure{L"\"" + std::wstring(word) + L"\" is none of nv, cp, file"};
}

const std::wstring& ValueTexts::In(Form form) const {
    return form == Form::kEdited ? edited : form == Form::kShown ? shown : raw;
}

ValueTexts ReadValue(const Room& room, ValueKind kind, const std::wstring& key) {
    if (kind == ValueKind::kFile) {
        com::Bstr text;
        com::Check(FindFile(room, key)->get_ValueText(text.Out()));
        return {Upper(key), text.Text(), text.Text(), text.Text()};
    }
    const auto found = FindPoint(room, kind, key);
    const auto read = [&](const wchar_t* member) { return com::Get(found.Get(), member).AsText(); };
    return {read(point::kName), read(point::kValue), read(point::kFormattedValue),
            read(point::kRawValue)};
}

void WriteValue(const Room& room, ValueKind kind, const std::wstring& key,
                const std::wstring& text) {
    if (kind == ValueKind::kFile) {
        com::Check(FindFile(room, key)->put_ValueText(com::Bstr(text).Get()));
    } else {
        com::Put(FindPoint(room, kind, key).Get(), point::kValue, com::Variant(text));
    }
}

std::vector<Entry> ReadEntries(const Room& room) {
    std::vector<Entry> entries;
    for (const auto& file : FilesOf(room)) {
        Entry entry{.identifier = IdentifierOf(file), .address = 0, .text = L"?"};
        com::Check(file->get_Address(&entry.address));
        com::Bstr text;
        if (SUCCEEDED(file->get_ValueText(text.Out()))) entry.text = text.Text();
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::wstring EntryName(long identifier) {
    const std::wstring digits = CodeText(static_cast<std::uint16_t>(identifier));
    const auto first = digits.find_first_not_of(L'0');
    return first == std::wstring::npos ? L"0" : digits.substr(first);
}

}  // namespace quorvex::bench
