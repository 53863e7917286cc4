#include "dialogs/ListRows.h"

#include "app/ToolkitCall.h"
#include "app/WidgetHelpers.h"

// First: the private headers stand on it.
#include <X11/IntrinsicP.h>

#include <X11/StringDefs.h>
#include <X11/Xaw/ListP.h>
#include <algorithm>

// m_pointers points into m_rows, one for one; the widget is given a part of it. Rows are counted over all
// rows, indices over the part that the widget has.

namespace {

// How high the list may get, in pixels: what a viewport can scroll, less what it shows at a time.
constexpr int cHighestList = 32000;

ListPart const& PartOf(Widget list) {
    return reinterpret_cast<ListRec*>(list)->list;
}

Widget BarOf(Widget viewport) {
    return XtNameToWidget(viewport, "vertical");
}

} // namespace

void ListRows::Attach(Widget viewport, Widget list) {
    m_viewport = viewport;
    m_list = list;
    m_known = false;
    m_first = 0;
    m_highlighted = -1;
    Widget const bar = BarOf(viewport);
    if (!bar) return;
    XtAddCallback(bar, XtNscrollProc, OnScroll, this);
    XtAddCallback(bar, XtNjumpProc, OnScroll, this);
}

void ListRows::Show(std::vector<std::string> rows) {
    for (std::string& row : rows) row = CutForWidget(std::move(row));
    if (m_known && rows == m_rows) return;
    std::vector<char const*> pointers;
    pointers.reserve(rows.size());
    for (std::string const& row : rows) pointers.push_back(row.c_str());
    // The widget lets go of the former texts before they are freed.
    m_rows.swap(rows);
    m_pointers.swap(pointers);
    m_highlighted = -1;
    ShowSlice(std::min(m_first, std::max(0, Count() - SliceLimit())));
    m_known = true;
}

void ListRows::Highlight(int row) {
    m_highlighted = row;
    if (IsInSlice(row))
        XawListHighlight(m_list, row - m_first);
    else
        ShowSliceAround(row);
    ScrollSelectedItemIntoView(m_viewport, m_list);
}

void ListRows::Unhighlight() {
    m_highlighted = -1;
    XawListUnhighlight(m_list);
}

int ListRows::Highlighted() const {
    XawListReturnStruct* const current = XawListShowCurrent(m_list);
    int const index = current ? current->list_index : -1;
    XtFree(reinterpret_cast<char*>(current));
    return RowOf(index);
}

int ListRows::RowOf(int index) const {
    return index >= 0 && index < SliceSize() ? m_first + index : -1;
}

int ListRows::RowHeight() const {
    return std::max<int>(1, PartOf(m_list).row_height);
}

int ListRows::SliceLimit() const {
    return std::max(1, cHighestList / RowHeight());
}

int ListRows::SliceSize() const {
    return std::min(Count() - m_first, SliceLimit());
}

bool ListRows::IsInSlice(int row) const {
    return row >= m_first && row < m_first + SliceSize();
}

void ListRows::ShowSlice(int first) {
    m_first = first;
    int const size = SliceSize();
    XtUnmanageChild(m_list);
    XawListChange(m_list, size > 0 ? m_pointers.data() + first : nullptr, size, 0, True);
    XtManageChild(m_list);
    if (IsInSlice(m_highlighted)) XawListHighlight(m_list, m_highlighted - m_first);
}

void ListRows::ShowSliceAround(int row) {
    int const last = std::max(0, Count() - SliceLimit());
    ShowSlice(std::clamp(row - SliceLimit() / 2, 0, last));
}

// The user highlights rows of the slice without telling; a row outside it keeps its highlight.
void ListRows::NoteHighlight() {
    int const highlighted = Highlighted();
    if (highlighted >= 0 || IsInSlice(m_highlighted)) m_highlighted = highlighted;
}

// As if the user had dragged the bar.
void ListRows::ScrollTo(int row) {
    Widget const bar = BarOf(m_viewport);
    if (!bar || SliceSize() == 0) return;
    float top = static_cast<float>(row - m_first) / static_cast<float>(SliceSize());
    XtCallCallbacks(bar, XtNjumpProc, &top);
}

// Called when the viewport has moved the list. At either end of a slice that is not an end of the list, the
// slice moves on under the rows that are in view.
void ListRows::FollowBar() {
    int const hidden = -static_cast<int>(m_list->core.y);
    int const below =
        static_cast<int>(m_list->core.height) - hidden - static_cast<int>(m_viewport->core.height);
    bool const wantsNext = below < RowHeight() && m_first + SliceSize() < Count();
    bool const wantsPrevious = hidden < RowHeight() && m_first > 0;
    if (!wantsNext && !wantsPrevious) return;
    int const top = m_first + hidden / RowHeight();
    NoteHighlight();
    ShowSliceAround(top);
    ScrollTo(top);
}

void ListRows::OnScroll(Widget, XtPointer rows, XtPointer) {
    ListRows& self = *static_cast<ListRows*>(rows);
    if (self.m_following) return;
    self.m_following = true;
    ToolkitCall([&] { self.FollowBar(); });
    self.m_following = false;
}
