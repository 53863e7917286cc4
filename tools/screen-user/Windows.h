#pragma once

#include "tools/screen-user/Connection.h"

#include <string>
#include <vector>

// What the display tells about windows. A window that has gone meanwhile is no error: it has no title, no
// place and no windows in it.
namespace ScreenUser {

struct Placement {
    Area area;
    int borderWidth = 0;
};

std::vector<WindowID> WindowsIn(Connection& connection, WindowID window);
// In UTF-8 if the window says so or has a Latin-1 title, else in the bytes that it has; empty for no title.
std::string TitleOf(Connection& connection, WindowID window);
// The programs' own top-level windows that are on the screen, at least in part, without the frames around
// them.
std::vector<WindowID> ShownTopLevelWindows(Connection& connection);

std::optional<Placement> PlacementOf(Connection& connection, WindowID window);
// Whether the window and all windows around it are mapped.
bool IsViewable(Connection& connection, WindowID window);
// The part of the window that lies within all windows around it and within the screen; empty when it is not
// viewable.
Area VisibleAreaOf(Connection& connection, WindowID window);
// Whether the topmost window at that point of the screen is this one or lies in it.
bool IsOnTopAt(Connection& connection, WindowID window, Point point);

// Asks for the window to stand above the others; a window manager has the last word.
void RaiseWindow(Connection& connection, WindowID window);
// Sends the window the message of a close box; false when it does not take part in that protocol.
bool AskToClose(Connection& connection, WindowID window);

} // namespace ScreenUser
