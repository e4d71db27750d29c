// frmVantor: the edit command.
#include "com/late.h"
#include "editors/EditPoint.h"
#include "host_members.h"
#include "plugin/number_text.h"
#include "window/frmVantor.h"
#include "window/host_points.h"

namespace quillon {

namespace {

// The point of a row; empty when it is not to be edited. Throws com::Error, and NumberError for a
// property whose key is no number.
DataPoint EditablePoint(IDevice* device, const ListRow& row) {
    const std::wstring key = ItemKey(row.key);
    com::Ptr<IDispatch> points;
    if (row.tag == kNvTag) {
        com::Check(device->get_NetworkVariables(points.Out()));
        DataPoint point(FindPoint(points.Get(), com::Variant(key)));
        return point.NVDirection() == host::point::kOutput ? DataPoint() : point;
    }
    com::Check(device->get_ConfigProperties(points.Out()));
    const std::wstring number = DecimalText(RoundHalfEven(StrictNumber(key)));
    return DataPoint(FindPoint(points.Get(), com::Variant(number)));
}

}  // namespace

// Any failure of the host before an editor is there ends the command in silence. While the editor
// is up the lists can be built anew, and the window can go. Not while a command works through its
// points: its loop would wait for the editor.
void frmVantor::EditRow(HWND control) {
    RowList* const list = ListOf(control);
    const auto place = list ? list->Selected() : std::nullopt;
    if (!place || IsAtWork() || m_editing || !m_device) return;
    const auto self = KeepAlive();
    const com::Ptr<CDevice> hold = m_object;
    const ListRow row = list->Rows()[*place];
    m_editing = true;
    com::Quietly([&] {
        const DataPoint point = EditablePoint(com::Ptr<IDevice>(m_device).Get(), row);
        if (point && EditPoint(point, Handle()) && IsOpen())
            RefreshEditedRow(*list, *place, row.key, point);
    });
    m_editing = false;
}

// One reading at once, without waiting for a poll.
void frmVantor::RefreshEditedRow(RowList& list, std::size_t place, const std::wstring& key,
                                 const DataPoint& point) {
    const auto reading = com::Quietly(
        [&] { return std::optional(ReadLivePoint(point.Object().Get(), [&] { Thaw(); })); });
    if (!IsOpen()) return;
    const auto& rows = list.Rows();
    if (place >= rows.size() || rows[place].key != key) {
        const auto moved = list.PlaceOf(key);
        if (!moved) return;
        place = *moved;
    }
    ShowReading(list, place, reading);
}

// Of a value that may just have changed: one that could not be read is greyed, for what is shown
// may be older.
void frmVantor::ShowReading(RowList& list, std::size_t place,
                            const std::optional<LiveReading>& reading) {
    const bool read = com::Quietly([&] {
        if (!reading || reading->silent) return false;
        list.SetValue(place, reading->text);
        return true;
    });
    list.SetStale(place, !read);
    if (read && &list == &m_lvMonitor && place < m_monitorAge.size()) m_monitorAge[place].Read();
}

}  // namespace quillon
