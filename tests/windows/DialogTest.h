#pragma once

// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/ProcessState.h"

#include <X11/Intrinsic.h>
#include <functional>
#include <string>
#include <vector>

// Tests of dialogs in the process of the test, on a virtual display of its own: the toolkit is opened once,
// as the program opens it. The mouse is moved and pressed through the test extension, as a user would.
class DialogTest : public testing::Test {
protected:
    // Starts with no dialog, nothing pending and the state of a fresh process.
    DialogTest();
    ~DialogTest() override;

    // Serves X events until `condition` holds; false when it still does not after a long time.
    static bool ServeUntil(std::function<bool()> const& condition);
    // Serves everything that has happened so far.
    static void Settle();

    // The shells on the display, but for the hidden window.
    static std::vector<Widget> Shells();
    // The one shell; null when there is none. More than one is a failure.
    static Widget Shell();
    // A widget below the one shell, by its path such as "form.takeActions". Null when there is none.
    static Widget Find(std::string const& path);
    // The list in the viewport of that name.
    static Widget ListIn(std::string const& viewport);

    static std::string ClassOf(Widget widget);
    static long Number(Widget widget, char const* resource);
    static bool Flag(Widget widget, char const* resource);
    static std::string Text(Widget widget, char const* resource);
    static std::string Label(std::string const& path);
    static bool IsSensitive(std::string const& path);
    // The rows that a list shows, and the highlighted one; -1 for none.
    static std::vector<std::string> Rows(Widget list);
    static int Highlight(Widget list);

    // Presses and releases button 1 in the middle of a widget, or that far from its upper left corner.
    static void Click(Widget widget);
    static void ClickAt(Widget widget, int x, int y);
    static void ClickRow(Widget list, int row);
    static void PressAndRelease(Widget widget, unsigned int button, int x, int y);

    // Expects that a press of button 3 far down on a bar drags the thumb there instead of scrolling back.
    static void ExpectDragsThumb(Widget bar);
    // The atoms of WM_PROTOCOLS, by name.
    static std::vector<std::string> Protocols(Widget shell);

    // The commands queued since the last call, as "type ID minutes seconds".
    static std::vector<std::string> Commands();
};

// A resource of the display as long as it lives; afterwards it has another value.
class Resource {
public:
    Resource(std::string const& name, std::string const& value, std::string const& valueAfter);
    Resource(Resource const&) = delete;
    Resource& operator=(Resource const&) = delete;
    ~Resource();

private:
    void Put(std::string const& value);

    std::string m_name;
    std::string m_valueAfter;
};

// An action to be put on the list of pending ones.
struct Pending {
    unsigned long id = 1;
    std::string title = "Title";
    std::string description = "Description";
    // Seconds from `now`; nothing for no deadline.
    NullOr<long> deadline = NullOr<long>();
    Instant now = Instant::Now();
    bool cancellable = true;
    bool restart = false;
    bool forceRun = false;
    bool requestSave = false;
    bool hasPreview = false;
    std::string preActionMessage = "";
};
void Add(Pending const& pending);
