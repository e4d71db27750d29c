#include "damage/byte_mutations.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace quillon::test {

namespace {

constexpr std::size_t kLongRun = 70'000;

char AnyByte(Random& random) {
    return static_cast<char>(random.Below(256));
}

void FlipBits(std::string& bytes, Random& random) {
    if (bytes.empty()) return;
    for (std::size_t flips = 1 + random.Below(8); flips > 0; --flips)
        bytes[random.Below(bytes.size())] ^= static_cast<char>(1u << random.Below(8));
}

void Cut(std::string& bytes, Random& random) {
    bytes.resize(random.Below(bytes.size() + 1));
}

void CutFront(std::string& bytes, Random& random) {
    bytes.erase(0, random.Below(bytes.size() + 1));
}

void Remove(std::string& bytes, Random& random) {
    const Stretch stretch = AnyStretch(bytes, random, 400);
    bytes.erase(stretch.begin, stretch.size);
}

void DoublePiece(std::string& bytes, Random& random) {
    const Stretch stretch = AnyStretch(bytes, random, bytes.size());
    const std::string piece = bytes.substr(stretch.begin, stretch.size);
    for (std::size_t times = 1 + random.Below(4); times > 0; --times)
        bytes.insert(stretch.begin, piece);
}

void SwapPieces(std::string& bytes, Random& random) {
    std::size_t cuts[4];
    for (std::size_t& cut : cuts) cut = random.Below(bytes.size() + 1);
    std::sort(std::begin(cuts), std::end(cuts));
    bytes = bytes.substr(0, cuts[0]) + bytes.substr(cuts[2], cuts[3] - cuts[2]) +
            bytes.substr(cuts[1], cuts[2] - cuts[1]) + bytes.substr(cuts[0], cuts[1] - cuts[0]) +
            bytes.substr(cuts[3]);
}

void InsertNuls(std::string& bytes, Random& random) {
    for (std::size_t places = 1 + random.Below(4); places > 0; --places)
        bytes.insert(random.Below(bytes.size() + 1), 1 + random.Below(300), '\0');
}

void InsertLongRun(std::string& bytes, Random& random) {
    const char kFillings[] = {'A', '0', 'F', ' ', '9', '\n', '%', '\xFF'};
    const std::size_t length = random.OneIn(4) ? kLongRun : 1 + random.Below(4000);
    bytes.insert(random.Below(bytes.size() + 1), length, random.Pick(kFillings));
}

void InsertNonsense(std::string& bytes, Random& random) {
    std::string nonsense(1 + random.Below(200), ' ');
    for (char& one : nonsense) one = AnyByte(random);
    bytes.insert(random.Below(bytes.size() + 1), nonsense);
}

// Each byte as a unit of 16 bits, the low half first or last.
std::string Widened(const std::string& bytes, bool lowFirst) {
    std::string wide;
    for (const char one : bytes) {
        wide += lowFirst ? one : '\0';
        wide += lowFirst ? '\0' : one;
    }
    return wide;
}

void OtherEncoding(std::string& bytes, Random& random) {
    switch (random.Below(4)) {
        case 0:
            bytes = "\xFF\xFE" + Widened(bytes, true);
            break;
        case 1:
            bytes = "\xFE\xFF" + Widened(bytes, false);
            break;
        case 2:
            bytes = Widened(bytes, random.OneIn(2));
            break;
        default:
            bytes.insert(random.Below(bytes.size() + 1),
                         "\xE9\xC3\x28\xF0\x9F\x98\x80\xED\xA0\x80");
    }
}

void ByteOrderMark(std::string& bytes, Random& random) {
    const char* const kMarks[] = {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"};
    bytes.insert(0, random.Pick(kMarks));
}

std::vector<Stretch> Numbers(const std::string& bytes) {
    std::vector<Stretch> numbers;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!std::isdigit(static_cast<unsigned char>(bytes[i]))) continue;
        const std::size_t begin = i;
        while (i < bytes.size() && std::isdigit(static_cast<unsigned char>(bytes[i]))) ++i;
        numbers.push_back({begin, i - begin});
    }
    return numbers;
}

void BlowUpNumber(std::string& bytes, Random& random) {
    const char* const kNumbers[] = {"2147483647",
                                    "2147483648",
                                    "-2147483649",
                                    "4294967296",
                                    "99999999999999999999999999",
                                    "-1",
                                    "1e308",
                                    "1e-999",
                                    "0x7FFFFFFF",
                                    "&HFFFF",
                                    "NaN",
                                    "1,5",
                                    "000000000000000000000000000001",
                                    "65536",
                                    ""};
    const auto numbers = Numbers(bytes);
    if (numbers.empty()) return;
    const Stretch& chosen = numbers[random.Below(numbers.size())];
    bytes.replace(chosen.begin, chosen.size, random.Pick(kNumbers));
}

void ShuffleLines(std::string& bytes, Random& random) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size() - 1) + 1;
        lines.push_back(bytes.substr(begin, end - begin));
        begin = end;
    }
    for (std::size_t i = lines.size(); i > 1; --i) std::swap(lines[i - 1], lines[random.Below(i)]);
    bytes.clear();
    for (const std::string& line : lines) bytes += line;
}

void OtherLineEnds(std::string& bytes, Random& random) {
    const char* const kEnds[] = {"\r", "\n", "\r\r\n", "\n\n", " ", "\x1A", "\x0B", ""};
    const std::string end = random.Pick(kEnds);
    std::string changed;
    for (const char one : bytes) {
        if (one == '\n')
            changed += end;
        else if (one != '\r')
            changed += one;
    }
    bytes = changed;
}

constexpr Mutation kByteMutations[] = {
    {"bits flipped", FlipBits},
    {"end cut off", Cut},
    {"beginning cut off", CutFront},
    {"piece lost", Remove},
    {"piece doubled", DoublePiece},
    {"pieces swapped", SwapPieces},
    {"NULs inserted", InsertNuls},
    {"long run inserted", InsertLongRun},
    {"nonsense inserted", InsertNonsense},
    {"other encoding", OtherEncoding},
    {"byte order mark", ByteOrderMark},
    {"number blown up", BlowUpNumber},
    {"lines shuffled", ShuffleLines},
    {"other line ends", OtherLineEnds},
};

const char* const kPlaceholders[] = {"nnnnnnnnnnnn", "YYWW"};

void BreakPlaceholder(std::string& bytes, Random& random) {
    const std::size_t place = bytes.find(random.Pick(kPlaceholders));
    if (place != std::string::npos) bytes[place + random.Below(4)] = AnyByte(random);
}

void MorePlaceholders(std::string& bytes, Random& random) {
    for (std::size_t times = 1 + random.Below(20); times > 0; --times)
        bytes.insert(random.Below(bytes.size() + 1), random.Pick(kPlaceholders));
}

// A label of 13,000 bytes is the longest.
void AtTheLimit(std::string& bytes, Random& random) {
    bytes.resize(12'998 + random.Below(5), ' ');
}

constexpr Mutation kPlaceholderMutations[] = {
    {"field broken", BreakPlaceholder},
    {"fields added", MorePlaceholders},
    {"length at the limit", AtTheLimit},
};

}  // namespace

Stretch AnyStretch(const std::string& bytes, Random& random, std::size_t most) {
    const std::size_t begin = random.Below(bytes.size() + 1);
    return {begin, random.Below(std::min(most, bytes.size() - begin) + 1)};
}

std::span<const Mutation> ByteMutations() {
    return kByteMutations;
}

std::span<const Mutation> PlaceholderMutations() {
    return kPlaceholderMutations;
}

}  // namespace quillon::test
