// Types, pastes and moves the caret in a numeric field as an operator could, and checks that its
// text stays a number being written.
#include "editors/numeric_field.h"

#include <algorithm>

#include "fuzz_support.h"

namespace quillon::fuzz {
namespace {

std::optional<float> ReadWithComma(std::wstring_view text) {
    std::wstring point(text);
    if (point.find(L'.') != std::wstring::npos) return std::nullopt;
    std::replace(point.begin(), point.end(), L',', L'.');
    const auto number = Attempt([&] { return StrictNumber(point); });
    if (!number) return std::nullopt;
    return static_cast<float>(*number);
}

class Operator {
public:
    Operator(const NumericField& field, std::wstring maximum)
        : m_field(field), m_maximum(std::move(maximum)) {
        Obey();
        Check();
    }

    void Press(wchar_t key) {
        const KeyAnswer answer = OnNumberKey(m_field.Rules(), m_text, m_selection, key);
        if (answer.act == KeyAct::kEdit) Do(answer.edit);
        Require(answer.act != KeyAct::kPass);
        Check();
    }
    void Paste(std::wstring_view pasted) {
        const auto edit = PasteNumber(m_field.Rules(), m_text, m_selection, pasted);
        if (edit) {
            Require(pasted.find(edit->text) != std::wstring_view::npos);
            Require(Typed(edit->text) == Applied(m_text, *edit));
            Do(*edit);
        }
        Check();
    }
    void Select(std::size_t one, std::size_t other) {
        one %= m_text.size() + 1;
        other %= m_text.size() + 1;
        m_selection = {std::min(one, other), std::max(one, other)};
    }
    // What Delete and cut do.
    void Cut() {
        Do({m_selection, {}, m_selection.from});
        Check();
    }

private:
    // What the same keys, one by one, would have made of the text.
    std::wstring Typed(std::wstring_view keys) const {
        std::wstring text = m_text;
        Selection selection = m_selection;
        for (const wchar_t key : keys) {
            const KeyAnswer answer = OnNumberKey(m_field.Rules(), text, selection, key);
            Require(answer.act == KeyAct::kEdit);
            text = Applied(text, answer.edit);
            selection = {answer.edit.caret, answer.edit.caret};
        }
        return text;
    }
    void Do(const TextEdit& edit) {
        Require(edit.range.from <= edit.range.to && edit.range.to <= m_text.size());
        m_text = Applied(m_text, edit);
        Require(edit.caret <= m_text.size());
        m_selection = {edit.caret, edit.caret};
        Obey();
    }
    void Obey() {
        if (!m_field.ExceedsMaximum(m_text)) return;
        m_text = m_maximum;
        m_selection = {};
    }
    void Check() const {
        const wchar_t separator = m_field.Rules().separator;
        Require(std::count(m_text.begin(), m_text.end(), separator) <= 1);
        // An exponent and its sign get in by the limit alone.
        if (m_maximum.find(L'e') == std::wstring::npos)
            Require(m_text.rfind(L'-') == std::wstring::npos || m_text.rfind(L'-') == 0);
        Require(m_text.find_first_not_of(std::wstring(L"-0123456789") + separator + m_maximum) ==
                std::wstring::npos);
        const std::size_t point = m_text.find(separator);
        if (point != std::wstring::npos && m_field.Rules().decimals)
            Require(m_text.size() - point - 1 <= *m_field.Rules().decimals);
        Require(!m_field.ExceedsMaximum(m_text));
        Require(m_field.CanAccept(m_text) ==
                (!m_text.empty() && m_text != std::wstring(1, separator)));
    }

    const NumericField& m_field;
    std::wstring m_maximum;
    std::wstring m_text;
    Selection m_selection;
};

void Step(Operator& operatorAtWork, std::wstring_view& steps) {
    const auto take = [&] {
        const wchar_t character = steps.empty() ? L'\0' : steps.front();
        steps.remove_prefix(std::min<std::size_t>(1, steps.size()));
        return character;
    };
    switch (const wchar_t step = take()) {
        case L's': {
            const auto one = static_cast<std::size_t>(take());
            operatorAtWork.Select(one, static_cast<std::size_t>(take()));
            break;
        }
        case L'p': {
            const std::size_t length =
                std::min<std::size_t>(static_cast<std::size_t>(take()) % 12, steps.size());
            operatorAtWork.Paste(steps.substr(0, length));
            steps.remove_prefix(length);
            break;
        }
        case L'x':
            operatorAtWork.Cut();
            break;
        default:
            operatorAtWork.Press(step);
            break;
    }
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon::fuzz;
    if (size < 2) return 0;
    const wchar_t* const maxima[] = {L"",      L"30",       L"-5",  L"0",     L"1.5",
                                     L"-0.25", L"16777216", L"2e1", L"5e-06", L"-3e1"};
    const wchar_t separator = data[0] & 1 ? L',' : L'.';
    quillon::NumericField::Point point;
    point.isFloat = (data[0] & 2) != 0;
    point.bCoef = -2 - ((data[0] >> 2) & 3);
    point.maximum = maxima[data[1] % std::size(maxima)];
    const std::wstring maximum = quillon::WithLocalSeparator(point.maximum, separator);
    const quillon::NumericField field(std::move(point), separator, ReadWithComma);
    Operator operatorAtWork(field, maximum);
    const std::wstring text = WideText(data + 2, size - 2);
    std::wstring_view steps = text;
    while (!steps.empty()) Step(operatorAtWork, steps);
    return 0;
}
