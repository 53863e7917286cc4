#pragma once

#include "tools/screen-user/Connection.h"

// The display's own pointer and keyboard, moved by the XTEST extension. Each function returns when the
// display has carried it out and told the programs, which handle it in their own time. Throws UserError when
// the display has no such extension, when there is no such point or button, and when another program holds
// the pointer for long.
namespace ScreenUser {

using KeySymbol = std::uint32_t;

void MovePointer(Connection& connection, Point point);
void PressButton(Connection& connection, unsigned button);
void ReleaseButton(Connection& connection, unsigned button);
// Throws UserError when no key bears the symbol.
void StrikeKey(Connection& connection, KeySymbol symbol);

} // namespace ScreenUser
