#include "editors/number_typing.h"

#include <algorithm>

namespace quillon {
namespace {

bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

std::size_t Digits(std::wstring_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsDigit));
}

// Characters going in one after the other between the head and the tail of a text, in constant time
// each: a pasted text may be long.
class Insertion {
public:
    Insertion(const NumberRules& rules, std::wstring_view text, Selection selection)
        : m_rules(rules),
          m_tail(text.substr(selection.to)),
          m_tailPoint(m_tail.find(rules.separator)),
          m_tailDigits(Digits(m_tail)),
          m_headEmpty(selection.from == 0),
          m_selected(selection.from != selection.to) {
        const std::wstring_view head = text.substr(0, selection.from);
        const std::size_t point = head.find(rules.separator);
        m_headPoint = point != std::wstring_view::npos;
        if (m_headPoint) m_headDecimals = Digits(head.substr(point + 1));
        if (TailPoint()) m_tailDecimals = Digits(m_tail.substr(m_tailPoint + 1));
    }

    // False: the character must not go in.
    bool Take(wchar_t character) {
        const bool taken = IsDigit(character)               ? TakeDigit()
                           : character == m_rules.separator ? TakeSeparator()
                           : character == L'-'              ? TakeMinus()
                                                            : false;
        if (taken) {
            m_headEmpty = false;
            m_selected = false;
        }
        return taken;
    }

private:
    bool TailPoint() const { return m_tailPoint != std::wstring_view::npos; }
    bool TailMinus() const { return m_tail.starts_with(L'-'); }

    bool TakeDigit() {
        if (m_headEmpty && TailMinus()) return false;
        const std::size_t decimals =
            m_headPoint ? m_headDecimals + 1 + m_tailDigits : m_tailDecimals;
        const bool hasPoint = m_headPoint || TailPoint();
        if (hasPoint && m_rules.decimals && decimals > *m_rules.decimals) return false;
        if (m_headPoint) ++m_headDecimals;
        return true;
    }

    bool TakeSeparator() {
        const bool replacesAll = m_selected && m_headEmpty;
        if (!m_tail.empty() || m_headPoint || (m_selected && !replacesAll)) return false;
        m_headPoint = true;
        return true;
    }

    bool TakeMinus() { return m_headEmpty && !TailMinus(); }

    const NumberRules& m_rules;
    std::wstring_view m_tail;
    std::size_t m_tailPoint;
    std::size_t m_tailDigits;
    std::size_t m_tailDecimals = 0;
    std::size_t m_headDecimals = 0;
    bool m_headPoint = false;
    bool m_headEmpty;
    bool m_selected;
};

KeyAnswer Backspace(std::wstring_view text, Selection selection) {
    if (text.empty()) return {};
    if (selection.from == selection.to) selection = {text.size() - 1, text.size()};
    const std::size_t left = text.size() - (selection.to - selection.from);
    return {.act = KeyAct::kEdit, .edit = {selection, {}, left}};
}

}  // namespace

NumberRules RulesOf(bool isFloat, int bCoef, wchar_t separator) {
    if (isFloat) return {separator, std::nullopt};
    return {separator, bCoef < 0 ? std::size_t{0} - static_cast<std::size_t>(bCoef) : 0};
}

KeyAnswer OnNumberKey(const NumberRules& rules, std::wstring_view text, Selection selection,
                      wchar_t key) {
    switch (key) {
        case kEscape:
            return {.act = KeyAct::kRestore};
        case kEnter:
            return {.act = KeyAct::kAccept};
        case kBackspace:
            return Backspace(text, selection);
        default:
            if (!Insertion(rules, text, selection).Take(key)) return {};
            return {.act = KeyAct::kEdit,
                    .edit = {selection, std::wstring(1, key), selection.from + 1}};
    }
}

std::optional<TextEdit> PasteNumber(const NumberRules& rules, std::wstring_view text,
                                    Selection selection, std::wstring_view pasted) {
    const std::wstring_view line = FirstLine(pasted);
    const std::wstring_view number =
        line.substr(std::min(line.find_first_not_of(L" \t"), line.size()));
    Insertion insertion(rules, text, selection);
    std::size_t taken = 0;
    while (taken < number.size() && insertion.Take(number[taken])) ++taken;
    if (taken == 0) return std::nullopt;
    return TextEdit{selection, std::wstring(number.substr(0, taken)), selection.from + taken};
}

}  // namespace quillon
