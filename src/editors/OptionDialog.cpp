#include "editors/OptionDialog.h"

#include <algorithm>

#include "com/error.h"
#include "com/late.h"
#include "editors/editor_choice.h"
#include "host_members.h"
#include "plugin/field_text.h"
#include "window/resource.h"

namespace quillon {

namespace {

// Distances from frame to buttons, in dialog units.
constexpr RECT kInside{8, 10, 6, 5};

com::Ptr<IDispatch> FieldOf(const com::Ptr<IDispatch>& fields, std::int32_t number) {
    return com::Get(fields.Get(), host::points::kItem, {com::Variant(number)}).AsObject();
}

// Empty where the point has none. A host may answer a plain point's fields with nothing, or with an
// error; a structure's that cannot be had are no reason to take its value for a code.
com::Ptr<IDispatch> FirstFieldOf(const DataPoint& point) {
    try {
        const com::Ptr<IDispatch> fields = point.Fields();
        return fields ? FieldOf(fields, 1) : nullptr;
    } catch (const com::Error&) {
        if (ChooseEditor(point.SNVType().GenType()) == EditorKind::kStructure) throw;
        com::Swallow();
        return nullptr;
    }
}

// Doubled, so that none becomes the underline of an access key.
std::wstring WithAmpersandsShown(std::wstring text) {
    for (std::size_t at = text.find(L'&'); at != std::wstring::npos; at = text.find(L'&', at + 2))
        text.insert(at, 1, L'&');
    return text;
}

RECT RectIn(HWND parent, HWND control) {
    RECT rect{};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

SIZE WorkAreaAt(HWND window) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return {info.rcWork.right - info.rcWork.left, info.rcWork.bottom - info.rcWork.top};
}

void Move(HWND control, const RECT& rect) {
    SetWindowPos(control, nullptr, rect.left, rect.top, rect.right - rect.left,
                 rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

OptionDialog::OptionDialog(OptionSet set)
    : ValueEditor(IDD_OPTIONS, kErrorInCpValue),
      m_set(std::move(set)),
      m_buttons([this] { EnableOk(); }) {}

void OptionDialog::Load() {
    m_name = Point().Name();
    m_current = m_set.PositionOf(ReadValue());
}

OptionValue OptionDialog::ReadValue() {
    if (m_set.Shape() == PointShape::kTwoFields) {
        const com::Ptr<IDispatch> fields = Point().Fields();
        m_level = DataPoint(FieldOf(fields, 1));
        m_state = DataPoint(FieldOf(fields, 2));
        m_openingLevel = m_level.Value();
        return {m_openingLevel, m_state.Value()};
    }
    m_level = Point();
    m_openingLevel = OpeningValue();
    if (m_set.Shape() == PointShape::kPlainOrFirstField) {
        if (const com::Ptr<IDispatch> field = FirstFieldOf(Point())) {
            m_level = DataPoint(field);
            m_openingLevel = m_level.Value();
        }
    }
    return {m_openingLevel, {}};
}

std::optional<std::wstring> OptionDialog::TextToWrite() {
    const auto position = m_buttons.Checked();
    if (!position) return std::nullopt;
    return m_set.Encode(*position).level;
}

// A level that was taken without its state would leave the device half written: where the state is
// refused, the level goes back.
void OptionDialog::Write(const std::wstring& text) {
    if (m_set.Shape() != PointShape::kTwoFields) {
        m_level.SetValue(text);
        return;
    }
    const std::wstring state = m_set.Encode(*m_buttons.Checked()).state;
    m_level.SetValue(text);
    try {
        m_state.SetValue(state);
    } catch (...) {
        if (m_openingLevel != kUnread) com::Quietly([&] { m_level.SetValue(m_openingLevel); });
        throw;
    }
}

bool OptionDialog::OnInit() {
    SetItemText(IDC_FRAME1, WithAmpersandsShown(m_name));
    if (!m_buttons.Create(Handle(), m_set.Options())) {
        End(IDCANCEL);
        return true;
    }
    Arrange();
    if (m_current) m_buttons.Check(*m_current);
    EnableOk();
    return !m_buttons.TakeFocus();
}

// Frame and dialog grow by what the buttons need beyond the designed frame, as far as the screen
// goes; OK and Cancel keep to the right edge.
void OptionDialog::Arrange() {
    RECT inside = kInside;
    MapDialogRect(Handle(), &inside);
    RECT dialog{};
    GetWindowRect(Handle(), &dialog);
    RECT frame = RectIn(Handle(), Item(IDC_FRAME1));
    const SIZE screen = WorkAreaAt(Handle());
    const SIZE needed = m_buttons.NeededSize();
    const auto growth = [](LONG wanted, LONG designed, LONG most) {
        return std::max(std::min(wanted - designed, most), LONG{0});
    };
    const LONG down = growth(needed.cy + inside.top + inside.bottom, frame.bottom - frame.top,
                             screen.cy - (dialog.bottom - dialog.top));
    const bool scrolls = needed.cy + inside.top + inside.bottom > frame.bottom - frame.top + down;
    const LONG bar = scrolls ? GetSystemMetrics(SM_CXVSCROLL) : 0;
    const LONG wider = growth(needed.cx + bar + inside.left + inside.right,
                              frame.right - frame.left, screen.cx - (dialog.right - dialog.left));
    frame.right += wider;
    frame.bottom += down;
    Move(Item(IDC_FRAME1), frame);
    for (const int id : {IDOK, IDCANCEL}) {
        RECT button = RectIn(Handle(), Item(id));
        OffsetRect(&button, wider, 0);
        Move(Item(id), button);
    }
    Move(Handle(), {dialog.left - wider / 2, dialog.top - down / 2,
                    dialog.right + wider - wider / 2, dialog.bottom + down - down / 2});
    SendMessageW(Handle(), DM_REPOSITION, 0, 0);
    // Behind the frame in the order of Tab, before OK.
    SetWindowPos(m_buttons.Handle(), Item(IDC_FRAME1), 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_buttons.Place({frame.left + inside.left, frame.top + inside.top, frame.right - inside.right,
                     frame.bottom - inside.bottom});
    ShowWindow(m_buttons.Handle(), SW_SHOWNA);
}

void OptionDialog::EnableOk() {
    EnableWindow(Item(IDOK), m_buttons.Checked().has_value());
}

}  // namespace quillon
