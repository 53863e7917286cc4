#pragma once

#include "tools/screen-user/User.h"

namespace ScreenUser {

// Where the rows of a list widget of one column lie.
class ListRows {
public:
    // Where a click hits the row, whatever the length of its text, and what of the list is in sight.
    struct Place {
        Area row;
        Area visible;

        bool IsInSight() const { return row.Intersection(visible) == row; }
    };

    // Asks the program for what stays as it is while the list is scrolled. Throws UserError.
    ListRows(User& user, Widget const& list);

    // Where the row is after all that the user has done so far. Throws UserError when there is no such row.
    Place PlaceOf(std::size_t row) const;

private:
    User& m_user;
    Widget m_list;
    int m_rowHeight = 1;
    // Null when the program does not tell; then the rows are those that fit.
    std::optional<std::size_t> m_count;
};

} // namespace ScreenUser
