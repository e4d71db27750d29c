#include "room_controller.h"

#include <algorithm>

#include "calls.h"
#include "refusal.h"

namespace quorvex {

namespace {

constexpr std::wstring_view kUnconfigured = L"02";
constexpr std::wstring_view kApplicationless = L"03";
constexpr std::wstring_view kOnLine = L"04";
constexpr std::wstring_view kHardOffLine = L"06";
constexpr std::wstring_view kSoftOffLine = L"0C";

constexpr long kIdentityEntry = -6;  // FFFA
constexpr long kPropertyBlockEntry = 1;

}  // namespace

bool PointTable::Add(DataPoint point) {
    if (!m_positions.emplace(point.index, m_points.size()).second) return false;
    point.blockOffset = m_blockLength;
    m_blockLength += point.raw.size();
    m_points.push_back(std::move(point));
    return true;
}

std::size_t PointTable::Find(std::wstring_view key) const {
    if (key.empty() || key.size() > 9 || (key.size() > 1 && key[0] == L'0')) return npos;
    long index = 0;
    for (const wchar_t c : key) {
        if (c < L'0' || c > L'9') return npos;
        index = index * 10 + (c - L'0');
    }
    const auto found = m_positions.find(index);
    return found == m_positions.end() ? npos : found->second;
}

bool RoomController::AddFile(FileEntry entry) {
    for (const FileEntry& other : m_files)
        if (other.identifier == entry.identifier) return false;
    m_files.push_back(std::move(entry));
    return true;
}

FileEntry* RoomController::FindFile(long identifier) {
    const auto found = std::find_if(m_files.begin(), m_files.end(), [&](const FileEntry& entry) {
        return entry.identifier == identifier;
    });
    return found == m_files.end() ? nullptr : &*found;
}

bool RoomController::Answers() const {
    return IsPresent() && !Calls::Process().IsSilent(neuron);
}

void RoomController::RequireAnswer() const {
    if (!Answers()) Refuse(kNoAnswer, L"Device " + neuron + L" does not answer");
}

// With an application and a configuration: only then on line and off line mean anything.
bool RoomController::MayRun() const {
    return Answers() && state != kUnconfigured && state != kApplicationless;
}

bool RoomController::GoSoftOffLine() {
    if (!MayRun() || state == kHardOffLine) return false;
    state = kSoftOffLine;
    return true;
}

bool RoomController::GoHardOffLine() {
    if (!MayRun()) return false;
    state = kHardOffLine;
    return true;
}

bool RoomController::GoOnLine() {
    if (!MayRun()) return false;
    state = kOnLine;
    return true;
}

bool RoomController::GoConfigured() {
    if (!Answers() || state == kApplicationless) return false;
    state = kOnLine;
    return true;
}

bool RoomController::GoUnConfigured() {
    if (!Answers() || state == kApplicationless) return false;
    state = kUnconfigured;
    return true;
}

bool RoomController::GoAppless() {
    if (!Answers()) return false;
    state = kApplicationless;
    return true;
}

bool RoomController::Reset() {
    if (!Answers()) return false;
    ++session.resets;
    if (state == kSoftOffLine) state = kOnLine;
    return true;
}

bool RoomController::Wink() {
    if (!Answers()) return false;
    ++session.winks;
    return true;
}

bool RoomController::ClearStatus() {
    if (!Answers()) return false;
    ClearStatistics();
    return true;
}

void RoomController::ClearStatistics() {
    session.resets = 0;
    session.winks = 0;
    session.changedPoints = 0;
}

bool RoomController::LoadApplication() {
    if (!Answers()) return false;
    for (FileEntry& entry : m_files)
        if (entry.identifier == kIdentityEntry)
            std::fill(entry.value.begin(), entry.value.end(), std::uint8_t{0});
    if (state == kApplicationless) state = kUnconfigured;
    return true;
}

const Bytes& RoomController::ReadFile(std::size_t position) const {
    RequireAnswer();
    return m_files[position].value;
}

void RoomController::WriteFile(std::size_t position, Bytes value) {
    RequireAnswer();
    FileEntry& entry = m_files[position];
    entry.value = std::move(value);
    if (entry.identifier == kPropertyBlockEntry) PropertiesFromBlock(entry.value);
}

// The property block and the properties are the same bytes in the device: what is written to the
// one shows in the other, as far as the block reaches.
void RoomController::PropertiesFromBlock(const Bytes& block) {
    for (std::size_t i = 0; i < m_properties.Size(); ++i) {
        DataPoint& point = m_properties.At(i);
        if (point.blockOffset + point.raw.size() > block.size()) return;
        std::copy_n(block.begin() + static_cast<std::ptrdiff_t>(point.blockOffset),
                    point.raw.size(), point.raw.begin());
    }
}

void RoomController::WritePoint(PointKind kind, std::size_t position, const Bytes& raw) {
    RequireAnswer();
    DataPoint& point = Points(kind).At(position);
    point.raw = raw;
    Calls::Process().Writes().Add(neuron + L' ' + point.name + L' ' + RawText(raw));
    if (kind != PointKind::kProperty) return;
    for (FileEntry& entry : m_files)
        if (entry.identifier == kPropertyBlockEntry &&
            point.blockOffset + raw.size() <= entry.value.size())
            std::copy(raw.begin(), raw.end(),
                      entry.value.begin() + static_cast<std::ptrdiff_t>(point.blockOffset));
}

FileEntry* RoomController::EntryAt(long address) {
    for (FileEntry& entry : m_files)
        if (entry.address != 0 && address >= entry.address &&
            address - entry.address < static_cast<long>(entry.value.size()))
            return &entry;
    return nullptr;
}

Bytes RoomController::ReadMemory(long address, std::size_t length) const {
    RequireAnswer();
    Bytes bytes(length, 0);
    for (auto kept = m_memory.lower_bound(address);
         kept != m_memory.end() && kept->first - address < static_cast<long>(length); ++kept)
        bytes[static_cast<std::size_t>(kept->first - address)] = kept->second;
    // Of entries that overlap the first counts, so it is laid last.
    std::for_each(m_files.rbegin(), m_files.rend(), [&](const FileEntry& entry) {
        if (entry.address == 0) return;
        const long from = std::max(address, entry.address);
        const long to = std::min(address + static_cast<long>(length),
                                 entry.address + static_cast<long>(entry.value.size()));
        for (long at = from; at < to; ++at)
            bytes[static_cast<std::size_t>(at - address)] =
                entry.value[static_cast<std::size_t>(at - entry.address)];
    });
    return bytes;
}

void RoomController::WriteMemory(long address, const Bytes& bytes) {
    RequireAnswer();
    bool blockTouched = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const long at = address + static_cast<long>(i);
        if (FileEntry* entry = EntryAt(at)) {
            entry->value[static_cast<std::size_t>(at - entry->address)] = bytes[i];
            blockTouched |= entry->identifier == kPropertyBlockEntry;
        } else {
            m_memory[at] = bytes[i];
        }
    }
    if (!blockTouched) return;
    for (const FileEntry& entry : m_files)
        if (entry.identifier == kPropertyBlockEntry) PropertiesFromBlock(entry.value);
}

}  // namespace quorvex
