#include "parameter_file.h"

#include <filesystem>
#include <optional>
#include <vector>

#include "com/error.h"
#include "network_file.h"
#include "text.h"

namespace quorvex {

namespace {

// How the two kinds of points stand in the file.
struct Layout {
    PointKind kind;
    const wchar_t* total;    // section of the number of entries
    const wchar_t* section;  // prefix of an entry's section
    const wchar_t* key;      // of an entry's index
};
constexpr Layout kLayouts[] = {
    {PointKind::kVariable, L"NCIs", L"NCI_", L"Index"},
    {PointKind::kProperty, L"CPs", L"CP_", L"Address"},
};

std::string Narrow(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    std::string narrow(static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), length,
                                                                    nullptr, 0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(),
                        static_cast<int>(narrow.size()), nullptr, nullptr);
    return narrow;
}

// Reading trims blanks and takes one pair of quotes off, so a value that has them gets a pair of
// its own.
std::wstring Kept(std::wstring_view value) {
    const auto edge = [](wchar_t c) { return c == L' ' || c == L'\t' || c == L'"' || c == L'\''; };
    if (value.empty() || (!edge(value.front()) && !edge(value.back()))) return std::wstring(value);
    return L'"' + std::wstring(value) + L'"';
}

class Writer {
public:
    void Section(const std::wstring& name) {
        m_text += (m_text.empty() ? L"[" : L"\r\n[") + name + L"]\r\n";
    }
    void Key(std::wstring_view key, std::wstring_view value) {
        m_text += std::wstring(key) + L"=" + Kept(value) + L"\r\n";
    }
    std::string Content() const { return Narrow(m_text); }

private:
    std::wstring m_text;
};

void WritePoints(Writer& writer, RoomController& controller, const Layout& layout) {
    PointTable& points = controller.Points(layout.kind);
    std::vector<const DataPoint*> chosen;
    for (std::size_t i = 0; i < points.Size(); ++i)
        if (layout.kind == PointKind::kProperty || points.At(i).configuration)
            chosen.push_back(&points.At(i));
    writer.Section(layout.total);
    writer.Key(L"TotalNumber", std::to_wstring(chosen.size()));
    for (std::size_t n = 0; n < chosen.size(); ++n) {
        const DataPoint& point = *chosen[n];
        writer.Section(layout.section + std::to_wstring(n));
        writer.Key(layout.key, std::to_wstring(point.index));
        writer.Key(L"Value", ValueText(*point.type, point.raw));
        writer.Key(L"Name", point.name);
        writer.Key(L"Mark", L"1");
    }
}

class Reader {
public:
    explicit Reader(std::wstring path) : m_path(std::move(path)) {}

    std::wstring Key(const std::wstring& section, const wchar_t* key) const {
        std::wstring value(256, L'\0');
        for (;;) {
            const DWORD length =
                GetPrivateProfileStringW(section.c_str(), key, L"", value.data(),
                                         static_cast<DWORD>(value.size()), m_path.c_str());
            if (length + 1 < value.size()) {
                value.resize(length);
                return value;
            }
            value.resize(value.size() * 2);
        }
    }

private:
    std::wstring m_path;
};

struct Change {
    PointKind kind;
    std::size_t position;
    Bytes raw;
};

std::optional<Change> ReadEntry(const Reader& reader, RoomController& controller,
                                const Layout& layout, std::size_t number) {
    const std::wstring section = layout.section + std::to_wstring(number);
    PointTable& points = controller.Points(layout.kind);
    const std::size_t position = points.Find(reader.Key(section, layout.key));
    if (position == PointTable::npos || points.At(position).output) return std::nullopt;
    auto raw = BytesFromValueText(*points.At(position).type, reader.Key(section, L"Value"));
    if (!raw) return std::nullopt;
    return Change{layout.kind, position, std::move(*raw)};
}

std::optional<std::vector<Change>> ReadChanges(const Reader& reader, RoomController& controller) {
    std::vector<Change> changes;
    for (const Layout& layout : kLayouts) {
        const std::wstring total = reader.Key(layout.total, L"TotalNumber");
        if (total.empty()) continue;
        if (total.size() > 6 || total.find_first_not_of(L"0123456789") != std::wstring::npos)
            return std::nullopt;
        for (std::size_t n = 0; n < std::stoul(total); ++n) {
            auto change = ReadEntry(reader, controller, layout, n);
            if (!change) return std::nullopt;
            changes.push_back(std::move(*change));
        }
    }
    return changes;
}

// A name without a folder would mean the Windows folder.
std::wstring FullPath(const std::wstring& path) {
    std::error_code failure;
    return std::filesystem::absolute(path, failure).wstring();
}

}  // namespace

long ExportParameters(RoomController& controller, const std::wstring& path) {
    if (!controller.Answers()) return kParameterNoAnswer;
    Writer writer;
    writer.Section(L"GEN_INFO");
    writer.Key(L"ProgramId", controller.programId);
    for (const Layout& layout : kLayouts) WritePoints(writer, controller, layout);
    try {
        ReplaceFile(path, writer.Content());
    } catch (const quillon::com::Error&) {
        return kParameterFileFault;
    }
    return kParametersDone;
}

long DownloadParameters(RoomController& controller, const std::wstring& path) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure)) return kParameterFileFault;
    const Reader reader(FullPath(path));
    if (Upper(reader.Key(L"GEN_INFO", L"ProgramId")) != controller.programId)
        return kParameterOtherProgram;
    const auto changes = ReadChanges(reader, controller);
    if (!changes) return kParameterBadEntry;
    if (!controller.Answers()) return kParameterNoAnswer;
    for (const Change& change : *changes)
        controller.WritePoint(change.kind, change.position, change.raw);
    return kParametersDone;
}

}  // namespace quorvex
