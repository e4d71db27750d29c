#include <algorithm>

#include "com/text.h"
#include "commands.h"
#include "values.h"

namespace quorvex::bench::commands {
namespace {

std::wstring Quoted(std::wstring_view text) {
    return L"\"" + std::wstring(text) + L"\"";
}

// What comes behind "expect KIND" must be from `fewest` to `most` words.
void RequireWords(const Words& words, std::size_t fewest, std::size_t most) {
    const std::size_t count = words.size() - 1;
    if (count < fewest || count > most) {
        throw Failure{L"usage: " + std::wstring(FindCommand(L"expect")->usage)};
    }
}

// The Neuron ID of the device at that place of the words; empty when there is no such word.
std::wstring NeuronAt(Session& session, const Words& words, std::size_t place) {
    return words.size() > place ? session.GetHost().Find(words[place]).neuron : std::wstring();
}

// The newest report, which no expectation may have looked at before.
void ExpectReport(Session& session, const Words& words) {
    RequireWords(words, 1, 2);
    const HRESULT code = ParseCode(words[1]);
    const std::wstring neuron = NeuronAt(session, words, 2);
    auto& reports = session.GetHost().Reports();
    if (reports.empty() || reports.back().seen) {
        throw Failure{L"expected report " + CodeText(code) + L", the host was told nothing"};
    }
    Report& report = reports.back();
    report.seen = true;
    const bool other = !neuron.empty() && report.neuron != neuron;
    if (report.code != code || other) {
        throw Failure{L"expected report " + CodeText(code) + L", the host was told " +
                      CodeText(report.code) + L" for " + session.GetHost().NameOf(report.neuron)};
    }
}

void ExpectText(Session& session, const Words& words) {
    RequireWords(words, 4, 4);
    const Form form = words[0] == L"value" ? Form::kEdited
                      : words[0] == L"raw" ? Form::kRaw
                                           : Form::kShown;
    const Room& room = session.GetHost().Find(words[1]);
    const ValueTexts texts = ReadValue(room, ValueKindOf(words[2]), words[3]);
    if (texts.In(form) != words[4]) {
        throw Failure{L"expected " + room.name + L" " + texts.name + L" to be " + Quoted(words[4]) +
                      L", it is " + Quoted(texts.In(form))};
    }
}

void ExpectState(Session& session, const Words& words) {
    RequireWords(words, 2, 2);
    const Room& room = session.GetHost().Find(words[1]);
    com::Bstr state;
    com::Check(room.device->get_State(state.Out()));
    if (state.View() != words[2]) {
        throw Failure{L"expected " + room.name + L" to be in state " + Quoted(words[2]) +
                      L", it is in " + Quoted(StateText(state.View()))};
    }
}

// Any box not looked at so far whose text holds the given one.
void ExpectBox(Session& session, const Words& words) {
    RequireWords(words, 1, 1);
    auto& boxes = session.Boxes().Seen();
    const auto found = std::find_if(boxes.begin(), boxes.end(), [&](const Box& box) {
        return !box.seen && box.text.find(words[1]) != std::wstring::npos;
    });
    if (found == boxes.end()) throw Failure{L"expected a message box with " + Quoted(words[1])};
    found->seen = true;
}

void ExpectEvent(Session& session, const Words& words) {
    RequireWords(words, 1, 2);
    const std::wstring neuron = NeuronAt(session, words, 2);
    auto& events = session.GetHost().Events();
    const auto found = std::find_if(events.begin(), events.end(), [&](const Event& event) {
        return !event.seen && event.name == words[1] && (neuron.empty() || event.neuron == neuron);
    });
    if (found == events.end()) throw Failure{L"expected an event " + words[1]};
    found->seen = true;
}

void ExpectCalls(Session& session, const Words& words) {
    RequireWords(words, 2, 2);
    long calls = 0;
    com::Check(session.GetHost().Simulator().Count(com::Bstr(words[1]).Get(), &calls));
    if (calls != ParseNumber(words[2], 0)) {
        throw Failure{L"expected " + words[2] + L" calls of " + words[1] + L", there were " +
                      std::to_wstring(calls)};
    }
}

void ExpectMisuse(Session& session, const Words& words) {
    RequireWords(words, 1, 1);
    session.ExpectMisuse(words[1]);
}

template <class Things>
bool AllSeen(const Things& things) {
    return std::all_of(things.begin(), things.end(), [](const auto& thing) { return thing.seen; });
}

// None that no expectation has looked at.
void ExpectNone(Session& session, const Words& words) {
    RequireWords(words, 1, 1);
    const bool none = words[1] == L"report" ? AllSeen(session.GetHost().Reports())
                      : words[1] == L"box"  ? AllSeen(session.Boxes().Seen())
                      : words[1] == L"event"
                          ? AllSeen(session.GetHost().Events())
                          : throw Failure{Quoted(words[1]) + L" is none of report, box, event"};
    if (!none) throw Failure{L"expected no " + words[1] + L", there is one"};
}

constexpr std::pair<std::wstring_view, void (*)(Session&, const Words&)> kExpectations[] = {
    {L"report", ExpectReport}, {L"value", ExpectText},  {L"shown", ExpectText},
    {L"raw", ExpectText},      {L"state", ExpectState}, {L"box", ExpectBox},
    {L"event", ExpectEvent},   {L"calls", ExpectCalls}, {L"misuse", ExpectMisuse},
    {L"no", ExpectNone},
};

}  // namespace

void Expect(Session& session, const Words& words) {
    for (const auto& [name, expectation] : kExpectations) {
        if (name == words[0]) return expectation(session, words);
    }
    throw Failure{Quoted(words[0]) + L" is nothing that can be expected"};
}

void Fails(Session& session, const Words& words) {
    // A command that does not exist would fail in any case, which is never what is meant.
    if (const auto error = UsageError(words); !error.empty()) throw Failure{error};
    try {
        session.Run(words);
    } catch (const Failure& failure) {
        Print(L"Failed as expected: " + failure.text);
        return;
    }
    throw Failure{L"expected \"" + words[0] + L"\" to fail"};
}

}  // namespace quorvex::bench::commands
