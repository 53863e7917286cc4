// The pointer's events and the questions about widgets reach a program in the order in which they were made,
// so an answer that came after a movement shows what the movement has done. Where only the display is asked
// there is no such order, and the answer is waited for.

#include "tools/screen-user/User.h"

#include "tools/screen-user/Connection.h"
#include "tools/screen-user/EditresClient.h"
#include "tools/screen-user/Hands.h"
#include "tools/screen-user/ListRows.h"
#include "tools/screen-user/Windows.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <thread>

namespace ScreenUser {

namespace {

constexpr std::chrono::milliseconds cPollInterval{20};
constexpr int cDragSteps = 8;
// The button that drags a scroll bar's thumb to the pointer. Programs give the others meanings of their own.
constexpr unsigned cThumbButton = 2;

// The types of resources that programs know how to write as a text. They warn on their standard error, or
// wherever their warnings go, when they are asked for another one.
std::set<std::string, std::less<>> const& ReadableTypes() {
    static auto const* const types =
        new std::set<std::string, std::less<>>{"Boolean", "Bool",  "Cardinal", "Dimension", "Int",
                                               "Justify", "Pixel", "Position", "String",    "Widget"};
    return *types;
}

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string NameOf(Widget const& widget) {
    return "The widget " + Quoted(widget.name) + " of class " + widget.className;
}

std::string NameOf(Point point) {
    return std::to_string(point.x) + "," + std::to_string(point.y);
}

Point MiddleOf(Area const& area) {
    return {area.x + area.width / 2, area.y + area.height / 2};
}

// Asks `look` until it gives something, or throws when it has not by the deadline.
template <class Look>
auto WaitFor(Look look, Deadline deadline, std::string const& complaint) {
    for (;;) {
        if (auto found = look()) return *found;
        if (std::chrono::steady_clock::now() >= deadline) throw UserError(complaint);
        std::this_thread::sleep_for(cPollInterval);
    }
}

std::string TitlesText(std::vector<std::string> const& titles) {
    if (titles.empty()) return "there is no window with a title";
    std::string text = "there is";
    for (std::string const& title : titles) text += (&title == &titles.front() ? " " : ", ") + Quoted(title);
    return text;
}

} // namespace

User::User(std::string const& display, std::chrono::milliseconds patience)
    : m_displayName(display), m_patience(patience), m_connection(std::make_unique<Connection>(display)) {
    char const* const variable = std::getenv("DISPLAY");
    if (m_displayName.empty() && variable) m_displayName = variable;
}

User::User(User&&) noexcept = default;
User& User::operator=(User&&) noexcept = default;
User::~User() = default;

std::chrono::steady_clock::time_point User::PatienceEnd() const {
    return std::chrono::steady_clock::now() + m_patience;
}

std::vector<WindowID> User::FindWindows(std::string_view title) {
    std::vector<WindowID> windows = ShownTopLevelWindows(*m_connection);
    std::erase_if(windows, [&](WindowID window) { return Title(window) != title; });
    return windows;
}

std::optional<WindowID> User::FindWindow(std::string_view title) {
    std::vector<WindowID> const windows = FindWindows(title);
    if (windows.empty()) return std::nullopt;
    return windows.front();
}

WindowID User::WaitForWindow(std::string_view title) {
    try {
        return WaitFor([&] { return FindWindow(title); }, PatienceEnd(), "");
    } catch (UserError const& error) {
        if (*error.what()) throw;
    }
    std::vector<std::string> titles;
    for (WindowID const window : ShownTopLevelWindows(*m_connection))
        if (std::string const other = Title(window); !other.empty()) titles.push_back(other);
    throw UserError("No window " + Quoted(title) + " came onto the screen; " + TitlesText(titles) + ".");
}

void User::WaitUntilGone(std::string_view title) {
    auto const look = [&] { return FindWindow(title) ? std::nullopt : std::optional(true); };
    WaitFor(look, PatienceEnd(), "The window " + Quoted(title) + " stays on the screen.");
}

std::string User::Title(WindowID window) {
    return TitleOf(*m_connection, window);
}

WidgetTree User::Widgets(WindowID shell) {
    WidgetTree tree = Editres::Client(*m_connection).Tree(shell, PatienceEnd());
    for (Widget& widget : tree) {
        if (widget.window == cNoWindow) continue;
        auto const placement = PlacementOf(*m_connection, widget.window);
        if (!placement) continue;
        widget.area = placement->area;
        widget.borderWidth = placement->borderWidth;
        widget.mapped = IsViewable(widget.window);
    }
    return tree;
}

Widget User::Find(WindowID shell, std::string_view path) {
    auto const look = [&]() -> std::optional<Widget> {
        WidgetTree const tree = Widgets(shell);
        Widget const* const widget = FindByPath(tree, path);
        return widget ? std::optional(*widget) : std::nullopt;
    };
    return WaitFor(look, PatienceEnd(), "The window has no widget " + Quoted(path) + ".");
}

Widget User::FindClass(WindowID shell, std::string_view className, std::size_t index) {
    auto const look = [&]() -> std::optional<Widget> {
        std::vector<Widget> const widgets = FindByClass(Widgets(shell), className);
        return index < widgets.size() ? std::optional(widgets[index]) : std::nullopt;
    };
    return WaitFor(look, PatienceEnd(),
                   "The window has no " + std::to_string(index + 1) + " widgets of class " +
                       Quoted(className) + ".");
}

Widget User::Again(Widget const& widget) {
    return Current(Widgets(widget.shell), widget);
}

bool User::TellsValues(Widget const& widget) {
    try {
        Resources(widget);
        return true;
    } catch (RefusedError const&) {
        return false;
    }
}

std::vector<ResourceName> User::Resources(Widget const& widget) {
    try {
        return Editres::Client(*m_connection).Resources(widget.shell, widget.identity, PatienceEnd());
    } catch (RefusedError const&) {
        Again(widget);
        throw RefusedError(NameOf(widget) +
                           " tells no values in this run of its program; run it without address "
                           "randomization, as setarch --addr-no-randomize does.");
    }
}

std::optional<std::string> User::Value(Widget const& widget, std::string_view resource) {
    std::vector<ResourceName> const resources = Resources(widget);
    bool const readable = std::any_of(resources.begin(), resources.end(), [&](ResourceName const& known) {
        return known.name == resource && ReadableTypes().contains(known.type);
    });
    if (!readable) return std::nullopt;
    return Editres::Client(*m_connection).Value(widget.shell, widget.identity, resource, PatienceEnd());
}

bool User::IsSensitive(Widget const& widget) {
    return Value(widget, "sensitive") == "true" && Value(widget, "ancestorSensitive") == "true";
}

Area User::VisibleArea(Widget const& widget) {
    return VisibleAreaOf(*m_connection, widget.window);
}

std::optional<Area> User::AreaOf(WindowID window) {
    auto const placement = PlacementOf(*m_connection, window);
    return placement ? std::optional(placement->area) : std::nullopt;
}

bool User::IsViewable(WindowID window) {
    return ScreenUser::IsViewable(*m_connection, window);
}

std::vector<WindowID> User::WindowsIn(WindowID window) {
    return ScreenUser::WindowsIn(*m_connection, window);
}

Area User::WaitUntilInSight(Widget const& widget) {
    auto const look = [&]() -> std::optional<Area> {
        Area const visible = VisibleArea(widget);
        return visible.IsEmpty() ? std::nullopt : std::optional(visible);
    };
    return WaitFor(look, PatienceEnd(), NameOf(widget) + " is not in sight.");
}

void User::Click(Widget const& widget, unsigned button) {
    ClickInside(widget, MiddleOf(WaitUntilInSight(widget)), button);
}

void User::Click(Widget const& widget, Point inside, unsigned button) {
    WaitUntilInSight(widget);
    auto const area = AreaOf(widget.window);
    if (!area) throw UserError(NameOf(widget) + " has gone.");
    ClickInside(widget, {area->x + inside.x, area->y + inside.y}, button);
}

void User::ClickInside(Widget const& widget, Point point, unsigned button) {
    if (!VisibleArea(widget).Contains(point))
        throw UserError(NameOf(widget) + " is not in sight at " + NameOf(point) + ".");
    if (!IsOnTopAt(*m_connection, widget.window, point))
        throw UserError("Another window lies over the widget " + Quoted(widget.name) + " at " +
                        NameOf(point) + ".");
    ClickAt(point, button);
}

std::size_t User::RowsOf(Widget const& list) {
    std::string const text = Value(list, "numberStrings").value_or("");
    std::size_t rows = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), rows);
    if (error != std::errc() || end != text.data() + text.size())
        throw UserError(NameOf(list) + " is no list.");
    return rows;
}

void User::ClickRow(Widget const& list, std::size_t row) {
    ScrollToRow(list, row);
    ClickInside(list, MiddleOf(ListRows(*this, list).PlaceOf(row).row), 1);
}

void User::ScrollToRow(Widget const& list, std::size_t row) {
    WaitUntilInSight(list);
    ListRows const rows(*this, list);
    if (rows.PlaceOf(row).IsInSight()) return;
    DragThumb(ScrollBarFor(list), rows, row);
    if (!rows.PlaceOf(row).IsInSight())
        throw UserError("The scroll bar does not bring row " + std::to_string(row) + " into sight.");
}

Widget User::ScrollBarFor(Widget const& list) {
    WidgetTree const tree = Widgets(list.shell);
    for (std::size_t bar = 0; bar < tree.size(); ++bar) {
        if (tree[bar].name != "vertical" || !tree[bar].mapped || !tree[bar].parent) continue;
        if (LiesIn(tree, list, tree[*tree[bar].parent])) return tree[bar];
    }
    throw UserError(NameOf(list) + " has rows out of sight and no scroll bar.");
}

// Holds the thumb and halves the part of the bar in which it has to be let go, since only the program knows
// how far it scrolls for a place on the bar.
void User::DragThumb(Widget const& bar, ListRows const& rows, std::size_t row) {
    Area const area = WaitUntilInSight(bar);
    int low = area.y;
    int high = area.y + area.height - 1;
    int const middle = area.x + area.width / 2;
    MoveTo({middle, low});
    PressButton(*m_connection, cThumbButton);
    while (low <= high) {
        int const y = low + (high - low) / 2;
        MoveTo({middle, y});
        ListRows::Place const place = rows.PlaceOf(row);
        if (place.IsInSight()) break;
        if (place.row.y < place.visible.y)
            high = y - 1;
        else
            low = y + 1;
    }
    ReleaseButton(*m_connection, cThumbButton);
}

void User::Raise(WindowID window) {
    RaiseWindow(*m_connection, window);
    auto const look = [&]() -> std::optional<bool> {
        auto const area = AreaOf(window);
        return area && IsOnTopAt(*m_connection, window, MiddleOf(*area)) ? std::optional(true) : std::nullopt;
    };
    WaitFor(look, PatienceEnd(), "The window " + Quoted(Title(window)) + " does not come in front.");
}

void User::MoveTo(Point point) {
    MovePointer(*m_connection, point);
}

void User::ClickAt(Point point, unsigned button) {
    MoveTo(point);
    PressButton(*m_connection, button);
    ReleaseButton(*m_connection, button);
}

void User::Drag(Point from, Point to, unsigned button) {
    MoveTo(from);
    PressButton(*m_connection, button);
    for (int step = 1; step <= cDragSteps; ++step)
        MoveTo({from.x + (to.x - from.x) * step / cDragSteps, from.y + (to.y - from.y) * step / cDragSteps});
    ReleaseButton(*m_connection, button);
}

void User::Press(KeySymbol key) {
    StrikeKey(*m_connection, key);
}

void User::Type(std::string_view text) {
    for (char const character : text) StrikeKey(*m_connection, static_cast<unsigned char>(character));
}

void User::CloseWindow(std::string_view title) {
    if (!AskToClose(*m_connection, WaitForWindow(title)))
        throw UserError("The window " + Quoted(title) + " does not let itself be closed by a message.");
}

} // namespace ScreenUser
