#pragma once

#include "tests/windows/DialogTest.h"

#include <string>
#include <utility>
#include <vector>

// What the tests of all small dialogs look at. Each expects something of the one shell on the display.
class SmallDialogTest : public DialogTest {
protected:
    // The parts, each a name and a class, are all that its form has. The process-wide flag
    // `international` stands in each.
    static void ExpectParts(std::vector<std::pair<std::string, std::string>> const& parts);
    // Each first part stands right below the second one.
    static void ExpectBelow(std::vector<std::pair<std::string, std::string>> const& parts);
    // A pane of running text, so large, that scrolls and has no caret.
    static void ExpectPane(Widget pane, long width);
    // A line of text without a border, at the left.
    static void ExpectLine(Widget line);
    // In the middle of the screen, and wired to its close box.
    static void ExpectPlaced();
};
