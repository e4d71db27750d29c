#include "damage/ini_mutations.h"

#include <algorithm>
#include <vector>

namespace quillon::test {

namespace {

std::vector<std::size_t> PlacesOf(const std::string& text, char wanted) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] == wanted) places.push_back(i);
    return places;
}

std::size_t LineEnd(const std::string& text, std::size_t from) {
    return std::min(text.find_first_of("\r\n", from), text.size());
}

std::size_t LineBegin(const std::string& text, std::size_t from) {
    const std::size_t end = text.find_last_of("\r\n", from);
    return end == std::string::npos ? 0 : end + 1;
}

// Applies the change to the place of one such character; nothing when there is none.
template <class Change>
void ChangeAt(std::string& text, Random& random, char mark, Change change) {
    const auto places = PlacesOf(text, mark);
    if (!places.empty()) change(places[random.Below(places.size())]);
}

void ReplaceValue(std::string& text, Random& random) {
    ChangeAt(text, random, '=', [&](std::size_t equals) {
        const char* const kValues[] = {"",
                                       "Not Found",
                                       "\"\"",
                                       "\"",
                                       "/",
                                       " / only a remark",
                                       "..\\..\\outside",
                                       "C:\\windows\\win.ini",
                                       "\\\\server\\share\\file",
                                       "NUL",
                                       "COM1",
                                       "%s%n%s%n",
                                       "-1",
                                       "1e999",
                                       "FFFFFFFFFFFFFFFFFF",
                                       "27103EA80028011C2",
                                       "\\\\\\",
                                       "A=B=C",
                                       "\x01\x02\x7F\x80"};
        text.replace(equals + 1, LineEnd(text, equals) - equals - 1, random.Pick(kValues));
    });
}

void LongValue(std::string& text, Random& random) {
    ChangeAt(text, random, '=', [&](std::size_t equals) {
        const char kFillings[] = {'0', 'F', 'x', '\\', '"', ' '};
        const std::size_t lengths[] = {255, 256, 1023, 1024, 4096, 32'767, 65'536};
        text.insert(equals + 1, random.Pick(lengths), random.Pick(kFillings));
    });
}

void RenameKey(std::string& text, Random& random) {
    ChangeAt(text, random, '=', [&](std::size_t equals) {
        const char* const kKeys[] = {"0",     "1", "00", "TotalNumber",
                                     "Value", "",  ";",  "Key with blanks"};
        const std::size_t begin = LineBegin(text, equals);
        text.replace(begin, equals - begin, random.Pick(kKeys));
    });
}

void LoseEquals(std::string& text, Random& random) {
    ChangeAt(text, random, '=', [&](std::size_t equals) { text.erase(equals, 1); });
}

void RenameSection(std::string& text, Random& random) {
    ChangeAt(text, random, '[', [&](std::size_t open) {
        const char* const kNames[] = {"",   "Settings", "GEN_INFO", "NCI_0",   "CP_999999999",
                                      "[[", "]",        "CPs",      "MainView"};
        const std::size_t end = std::min(text.find(']', open), text.size());
        text.replace(open + 1, end - open - 1, random.Pick(kNames));
    });
}

void LoseBracket(std::string& text, Random& random) {
    ChangeAt(text, random, random.OneIn(2) ? '[' : ']',
             [&](std::size_t place) { text.erase(place, 1); });
}

// Up to the next section.
void DoubleSection(std::string& text, Random& random) {
    ChangeAt(text, random, '[', [&](std::size_t open) {
        const std::size_t end = std::min(text.find('[', open + 1), text.size());
        text.insert(random.OneIn(2) ? open : text.size(), text.substr(open, end - open));
    });
}

void RemoveSection(std::string& text, Random& random) {
    ChangeAt(text, random, '[', [&](std::size_t open) {
        const std::size_t end = std::min(text.find('[', open + 1), text.size());
        text.erase(open, end - open);
    });
}

void ManyKeys(std::string& text, Random& random) {
    ChangeAt(text, random, ']', [&](std::size_t close) {
        std::string keys = "\r\n";
        const std::size_t count = 90 + random.Below(30);
        for (std::size_t n = 0; n < count; ++n) {
            const std::string value = std::to_string(random.Below(60));
            keys += std::to_string(n) + "=" + value + "\r\n" + std::to_string(n) +
                    "Model=" + value + "\r\n";
        }
        text.insert(close + 1, keys);
    });
}

constexpr Mutation kIniMutations[] = {
    {"value replaced", ReplaceValue},
    {"long value", LongValue},
    {"key renamed", RenameKey},
    {"equals sign lost", LoseEquals},
    {"section renamed", RenameSection},
    {"bracket lost", LoseBracket},
    {"section doubled", DoubleSection},
    {"section removed", RemoveSection},
    {"many keys", ManyKeys},
};

}  // namespace

std::span<const Mutation> IniMutations() {
    return kIniMutations;
}

}  // namespace quillon::test
