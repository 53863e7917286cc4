// A list draws its rows below each other from its inner edge on, each as high as a line of text and the space
// between rows. How high a line is, the list does not tell; it is taken to be as high as in the labels and
// buttons of the window, whose font the list has unless somebody configures it otherwise. The edges and the
// space are taken to be the toolkit's own. A list that is higher than the viewport around it has exactly the
// height that its rows need, which checks all that.

#include "tools/screen-user/ListRows.h"

#include <algorithm>

namespace ScreenUser {

namespace {

// The toolkit's defaults for the space around the text of labels and buttons, and around the rows of lists.
constexpr int cEdge = 2;
// The toolkit's default for the space between rows.
constexpr int cRowSpacing = 2;
// How far right of the inner edge a row is clicked: within its first letter. To the right of the longest row
// a list takes clicks for those of another column, which is none.
constexpr int cInsideFirstLetter = 3;

// The least height of the window's labels and buttons, which is that of a single line.
int LabelHeightIn(WidgetTree const& tree) {
    std::optional<int> lowest;
    for (Widget const& widget : tree) {
        bool const hasLabel = widget.className == "Label" || widget.className == "Command";
        if (!hasLabel || widget.window == cNoWindow) continue;
        if (!lowest || widget.area.height < *lowest) lowest = widget.area.height;
    }
    if (!lowest || *lowest <= 2 * cEdge)
        throw UserError("The window has no label or button that tells how high a row of its lists is.");
    return *lowest;
}

bool MayBeStretched(WidgetTree const& tree, Widget const& list) {
    auto const parent = std::find_if(tree.begin(), tree.end(), [&](Widget const& widget) {
        return widget.className == "Viewport" && LiesIn(tree, list, widget);
    });
    return parent != tree.end() && list.area.height <= parent->area.height;
}

int RowHeightIn(WidgetTree const& tree, Widget const& list) {
    int const height = LabelHeightIn(tree) - 2 * cEdge + cRowSpacing;
    if (!MayBeStretched(tree, list) && (list.area.height - 2 * cEdge) % height != 0)
        throw UserError("The list has another font than the window's labels, so its rows cannot be told.");
    return height;
}

} // namespace

ListRows::ListRows(User& user, Widget const& list) : m_user(user), m_list(list) {
    WidgetTree const tree = user.Widgets(list.shell);
    m_rowHeight = RowHeightIn(tree, Current(tree, list));
    if (user.TellsValues(list)) m_count = user.RowsOf(list);
}

ListRows::Place ListRows::PlaceOf(std::size_t row) const {
    Area const area = m_user.Again(m_list).area;
    int const fitting = std::max(area.height - 2 * cEdge, 0) / m_rowHeight;
    std::size_t const rows = m_count.value_or(static_cast<std::size_t>(fitting));
    if (row >= rows)
        throw UserError("The list has no row " + std::to_string(row) + "; it has " + std::to_string(rows) +
                        ", counted from 0.");
    return {{area.x + cEdge + cInsideFirstLetter, area.y + cEdge + static_cast<int>(row) * m_rowHeight, 1,
             m_rowHeight},
            m_user.VisibleArea(m_list)};
}

} // namespace ScreenUser
