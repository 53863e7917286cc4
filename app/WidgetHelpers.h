#pragma once

#include "text/AutoNullTerminated.h"

#include <X11/Intrinsic.h>
#include <memory>
#include <string>

// What all dialogs need around their widgets. Everything here belongs to the main thread.

// Puts a shell into the middle of the default screen. The shell is realized, so that it has its size. One
// that is larger than the screen hangs over equally on both sides: its position is negative. The answer of
// the window manager is not waited for: the shell knows its new position when the event that tells it has
// been served.
void CenterDialogOnDisplay(Widget shell);

// Scrolls `viewport` so that the selected row of `list`, its child, is the uppermost one shown, or as near to
// that as the end of the list allows: just as if the user had dragged the bar. Without a selection, without
// rows or without a vertical bar nothing happens. The selection must be a row that the list has.
void ScrollSelectedItemIntoView(Widget viewport, Widget list);

// Lets buttons 1 and 3 both drag the thumb of a scroll bar. Null is no scroll bar, and nothing is done.
void OverrideScrollbarTranslations(Widget scrollbar);

// The vertical scroll bar of a text pane; null when it has none, and when `textPane` is null or no text pane.
// A text pane is no parent to its bars in the toolkit's eyes, so that XtNameToWidget does not find them.
Widget TextScrollbar(Widget textPane);

// Lets the close box of a realized shell end the process: asks the window manager for WM_DELETE_WINDOW, and
// binds the message to the action "SystemMenuClose". Other translations of the shell stay.
void ListenForClose(Widget shell);

// Labels and titles in the encoding of the locale, which is what widgets take. None of the pointers that come
// back is null.

// The translation of `literal`, a UTF-8 text that is both a format without variables and the key of its
// translation. Throws what formatting throws, and UnixPlatform::WideToMultiByteConvertError for a text that
// the locale cannot spell.
std::unique_ptr<std::string> ControlLiteral(char const* literal);
// The text as it stands.
std::unique_ptr<std::string> ControlLiteral(AutoNullTerminated<Local8Bit> text);
// The bytes as they stand, neither translated nor converted.
std::unique_ptr<std::string> FunkyControlLiteral(char const* literal);

// What a label or a button can show of a text in the locale's encoding: the beginning, cut behind a whole
// character, of at most 2,000 characters and twice as many bytes. Shorter texts come back whole. For every
// text that comes from outside and goes into the `label` of a widget.
//
// A widget computes its width as the sum of its glyphs in 16 bits; a label of some 37,000 letters wraps
// around to a width of 0, which is fatal. 2,000 glyphs of 16 pixels, as wide as those of any script at the
// size of the dialogs, stay even below the 32,767 that fit into a coordinate. The bytes count as well,
// because a widget that is not `international` draws each byte as a glyph.
//
// Whoever puts several labels side by side gives each its share of the characters.
inline constexpr std::size_t cMostCharactersOfWidget = 2000;
std::string CutForWidget(std::string text, std::size_t mostCharacters = cMostCharactersOfWidget);
