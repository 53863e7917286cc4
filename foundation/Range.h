#pragma once

// Half-open range of positions: from `begin` up to, but not including, `end`.
template <class T>
struct Range {
    T begin{};
    T end{};

    friend constexpr bool operator==(Range const&, Range const&) = default;
};
