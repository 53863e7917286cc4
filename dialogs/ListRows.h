#pragma once

#include <X11/Intrinsic.h>
#include <string>
#include <vector>

// The rows of a list widget in a viewport. The widget keeps pointing at the texts that it is given: they are
// freed only once it has been given others.
//
// Any number of rows can be shown and reached. A window of the server cannot be scrolled by more than 32,767
// pixels, so a longer list is given to the widget in slices; dragging the bar to the end of one brings the
// next.
class ListRows {
public:
    ListRows() = default;
    ListRows(ListRows const&) = delete;
    ListRows& operator=(ListRows const&) = delete;

    // Tells of a new widget, which has no rows yet; the one before must have been destroyed. The viewport
    // must have been realized. This object must outlive the widget.
    void Attach(Widget viewport, Widget list);

    // Gives the widget these rows, with no row highlighted, unless it has just these rows already. What is
    // highlighted then stays: follow up with Highlight or Unhighlight.
    void Show(std::vector<std::string> rows);

    // Highlights a row that there is, and scrolls to it. A list that is insensitive does neither.
    void Highlight(int row);
    // Leaves no row highlighted.
    void Unhighlight();

    // The row that the user has highlighted, -1 for none. A list without rows shows its own name as a row,
    // which counts as none.
    int Highlighted() const;
    // The row for an index that the widget tells, -1 for none.
    int RowOf(int index) const;

    int Count() const { return static_cast<int>(m_rows.size()); }

private:
    static void OnScroll(Widget bar, XtPointer rows, XtPointer position);

    int RowHeight() const;
    int SliceLimit() const;
    int SliceSize() const;
    bool IsInSlice(int row) const;
    void ShowSlice(int first);
    void ShowSliceAround(int row);
    void NoteHighlight();
    void ScrollTo(int row);
    void FollowBar();

    Widget m_viewport = nullptr;
    Widget m_list = nullptr;
    // The widget shows m_rows, from row m_first on.
    bool m_known = false;
    bool m_following = false;
    int m_first = 0;
    // The highlighted row, also when the slice that the widget shows does not have it; -1 for none.
    int m_highlighted = -1;
    std::vector<std::string> m_rows;
    std::vector<char const*> m_pointers;
};
