// One room controller: what its network file says of it, and how it behaves. All device objects
// that are bound to it share it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/catalogue.h"
#include "room_life.h"

namespace quorvex {

// A device file entry. The address is its place in device memory, 0 when it has none.
struct FileEntry {
    std::wstring id;      // hexadecimal, as in the network file: "FFFA", "1"
    long identifier = 0;  // the id as a signed 16-bit number: "FFFA" is -6
    long address = 0;
    Bytes value;
};

// A network variable or configuration property.
struct DataPoint {
    long index = 0;
    std::wstring name;
    const Type* type = nullptr;
    bool output = false;
    bool configuration = false;
    std::wstring selfDocumentation;
    Bytes raw;             // always of the type's length
    std::wstring minimum;  // edit text; empty: no limit
    std::wstring maximum;
    std::size_t blockOffset = 0;  // where its bytes lie among those of all points, joined in order
};

// The points of one kind, in the order of the network file, each index once.
class PointTable {
public:
    // False when the index is taken.
    bool Add(DataPoint point);
    std::size_t Size() const { return m_points.size(); }
    DataPoint& At(std::size_t position) { return m_points[position]; }
    const DataPoint& At(std::size_t position) const { return m_points[position]; }
    // The position of the point whose key this is; npos when there is none. A key is the index in
    // decimal, without sign or leading zeros.
    std::size_t Find(std::wstring_view key) const;

    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

private:
    std::vector<DataPoint> m_points;
    std::unordered_map<long, std::size_t> m_positions;
    std::size_t m_blockLength = 0;
};

enum class PointKind { kVariable, kProperty };

struct LogicalAddress {
    std::wstring domainId;
    short subnet = 0;
    short node = 0;
    std::wstring key;
};

// What only lives as long as the process and is kept for whoever asks for it.
struct Session {
    std::wstring pollingState;  // empty: none was put, the state counts
    std::wstring programIdSettingsPath;
    std::wstring variableTable;       // WriteSNVTTable
    std::wstring fixedTable;          // WriteNVFixedStruct
    std::wstring configurationTable;  // WriteNVConfigStruct
    long variableNumber = 0;          // WriteNVNum
    long engineeringUnits = 0;
    bool explored = false;
    std::map<short, LogicalAddress> addresses;  // by domain index, 0 or 1
    std::wstring lastName;                      // what the host was last told by ChangedName, ...
    std::wstring lastStatus;
    std::wstring lastTransmitError;
    long changedPoints = 0;
    long resets = 0;
    long winks = 0;
};

// What lives around the unit; made when it is first asked for.
struct Surroundings {
    RoomLife life;
    AnalogInput analog;
};

class RoomController {
public:
    std::wstring neuron;  // 12 hexadecimal digits, upper case
    std::wstring name;
    std::wstring displayName;
    std::wstring programId;
    std::wstring selfIdentification;
    std::wstring state;  // two hexadecimal digits, upper case; empty: absent
    std::wstring userCpFile;
    std::wstring manufacturer;
    std::wstring deviceClass;
    std::uint8_t model = 0;
    Session session;
    std::wstring stateWhenPlugged;  // before the plug was pulled
    std::optional<Surroundings> surroundings;

    // Building it up; false when the identifier or index is taken.
    bool AddFile(FileEntry entry);
    bool AddPoint(PointKind kind, DataPoint point) { return Points(kind).Add(std::move(point)); }

    bool IsPresent() const { return !state.empty(); }
    // Present and not silenced.
    bool Answers() const;

    const std::vector<FileEntry>& Files() const { return m_files; }
    // By the signed identifier, whether the device answers or not; nullptr when there is none.
    FileEntry* FindFile(long identifier);
    PointTable& Points(PointKind kind) {
        return kind == PointKind::kVariable ? m_variables : m_properties;
    }

    // State changes; false, and nothing done, when the device does not answer or is in a state from
    // which there is no such way.
    bool GoSoftOffLine();
    bool GoHardOffLine();
    bool GoOnLine();
    bool GoConfigured();
    bool GoUnConfigured();
    bool GoAppless();
    // Ends soft off line, but no other state.
    bool Reset();
    bool Wink();
    // Ends the counting of resets, winks and changed points; false when the device does not answer.
    bool ClearStatus();
    void ClearStatistics();
    // A new application: clears entry FFFA. False when the device does not answer.
    bool LoadApplication();

    // Everything below refuses (kNoAnswer) while the device does not answer.
    const Bytes& ReadFile(std::size_t position) const;
    void WriteFile(std::size_t position, Bytes value);
    // `raw` must have the type's length.
    void WritePoint(PointKind kind, std::size_t position, const Bytes& raw);
    // Memory is what the file entries with an address lay over it, and zero elsewhere until
    // written.
    Bytes ReadMemory(long address, std::size_t length) const;
    void WriteMemory(long address, const Bytes& bytes);

private:
    void RequireAnswer() const;
    bool MayRun() const;
    void PropertiesFromBlock(const Bytes& block);
    FileEntry* EntryAt(long address);

    std::vector<FileEntry> m_files;
    PointTable m_variables;
    PointTable m_properties;
    std::map<long, std::uint8_t> m_memory;
};

}  // namespace quorvex
