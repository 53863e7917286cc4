#include "tests/windows/SmallDialogTest.h"

#include <X11/StringDefs.h>
#include <X11/Xaw/AsciiText.h>
#include <X11/Xaw/Label.h>

void SmallDialogTest::ExpectParts(std::vector<std::pair<std::string, std::string>> const& parts) {
    EXPECT_EQ(ClassOf(Shell()), "ApplicationShell");
    Widget const form = Find("form");
    ASSERT_TRUE(form);
    EXPECT_EQ(ClassOf(form), "Form");
    EXPECT_EQ(Number(form, XtNnumChildren), static_cast<long>(parts.size()));
    for (auto const& [name, className] : parts) {
        Widget const part = Find("form." + name);
        ASSERT_TRUE(part) << name;
        EXPECT_EQ(ClassOf(part), className) << name;
        EXPECT_EQ(Flag(part, XtNinternational), international) << name;
    }
}

void SmallDialogTest::ExpectBelow(std::vector<std::pair<std::string, std::string>> const& parts) {
    for (auto const& [part, above] : parts)
        EXPECT_EQ(Number(Find("form." + part), "fromVert"), reinterpret_cast<long>(Find("form." + above)))
            << part;
}

void SmallDialogTest::ExpectPane(Widget pane, long width) {
    EXPECT_EQ(Number(pane, XtNwidth), width);
    EXPECT_EQ(Number(pane, XtNheight), 100);
    EXPECT_EQ(Number(pane, XtNtype), XawAsciiString);
    EXPECT_EQ(Number(pane, XtNscrollVertical), XawtextScrollAlways);
    EXPECT_EQ(Number(pane, XtNwrap), XawtextWrapWord);
    EXPECT_FALSE(Flag(pane, XtNdisplayCaret));
}

void SmallDialogTest::ExpectLine(Widget line) {
    EXPECT_EQ(Number(line, XtNborderWidth), 0);
    EXPECT_EQ(Number(line, XtNjustify), XtJustifyLeft);
}

void SmallDialogTest::ExpectPlaced() {
    Widget const shell = Shell();
    EXPECT_EQ(Number(shell, XtNx), (1024 - Number(shell, XtNwidth)) / 2);
    EXPECT_EQ(Number(shell, XtNy), (768 - Number(shell, XtNheight)) / 2);
    EXPECT_EQ(Protocols(shell), (std::vector<std::string>{"WM_DELETE_WINDOW"}));
}
