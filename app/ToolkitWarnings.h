#pragma once

#include <X11/Intrinsic.h>

// Warnings of the toolkit on their way to the client.

// The handler that was in force before OverrideWarningMsgHandler; null before that.
extern XtErrorMsgHandler defaultWarningMsgHandler;

// Puts WarningMsgHandler in force. Putting it in force again changes nothing.
void OverrideWarningMsgHandler(XtAppContext context);

// Tells the client of each warning while missingCharSets is not empty: a warning is then likely to be about a
// text that can't be drawn. The warning named "noFont" ends the process with status 0, after the client has
// been told twice: without any font there is nothing to show. Every other warning goes on to
// defaultWarningMsgHandler.
//
// The text for the client is "name (class)", with the missing character sets behind it where they are the
// reason; the default text and its parameters are not sent. It is always valid UTF-8: a "?" stands for each
// control character but tab, LF and CR, and, when the text is none of the locale's encoding, for each byte
// above 0x7F. A null name counts as empty. No exception escapes.
void WarningMsgHandler(String name, String type, String warningClass, String defaultText, String* parameters,
                       Cardinal* parameterCount);
