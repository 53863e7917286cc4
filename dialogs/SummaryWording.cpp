#include "dialogs/SummaryWording.h"

// One sentence a line, so that what is seen on the screen can be searched for here.
// clang-format off

std::array<SummaryWording, cActionWordingRows> const cActionWording = {{
    // No deadline
    {"", false},
    {"You should save your work before taking this action.", false},
    {"This action will require a system restart.", false},
    {"You should save your work before taking this action, as it will require a system restart.", false},
    {"This action will require a system shutdown.", false},
    {"You should save your work before taking this action, as it will require a system shutdown.", false},
    // Within
    {"You must take this action within {DeadlineText}.", true},
    {"You should save your work before taking this action.  You must take this action within {DeadlineText}.", true},
    {"This action will require a system restart.  You must take this action within {DeadlineText}.", true},
    {"You should save your work before taking this action, as it will require a system restart.  You must take this action within {DeadlineText}.", true},
    {"This action will require a system shutdown.  You must take this action within {DeadlineText}.", true},
    {"You should save your work before taking this action, as it will require a system shutdown.  You must take this action within {DeadlineText}.", true},
    // Now
    {"You must take this action now.", false},
    {"You should save your work before taking this action.  You must take this action now.", false},
    {"This action will require a system restart.  You must take this action now.", false},
    {"You should save your work before taking this action, as it will require a system restart.  You must take this action now.", false},
    {"This action will require a system shutdown.  You must take this action now.", false},
    {"You should save your work before taking this action, as it will require a system shutdown.  You must take this action now.", false},
    // Automatic
    {"This action will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking this action.  This action will run automatically in {DeadlineText}.", true},
    {"This action will require a system restart.  This action will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking this action, as it will require a system restart.  This action will run automatically in {DeadlineText}.", true},
    {"This action will require a system shutdown.  This action will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking this action, as it will require a system shutdown.  This action will run automatically in {DeadlineText}.", true},
}};

std::array<SummaryWording, cCombinedWordingRows> const cCombinedWording = {{
    // Pending: no deadline
    {"", false},
    {"You should save your work before taking these actions.", false},
    {"The pending actions will require a system restart when they are complete.", false},
    {"You should save your work before taking these actions, as they will require a system restart when they are complete.", false},
    {"The pending actions will require a system shutdown when they are complete.", false},
    {"You should save your work before taking these actions, as they will require a system shutdown when they are complete.", false},
    // Pending: within
    {"There is at least one action you must take within {DeadlineText}.", true},
    {"You should save your work before taking these actions.  There is at least one action you must take within {DeadlineText}.", true},
    {"The pending actions will require a system restart when they are complete.  There is at least one action you must take within {DeadlineText}.", true},
    {"You should save your work before taking these actions, as they will require a system restart when they are complete.  There is at least one action you must take within {DeadlineText}.", true},
    {"The pending actions will require a system shutdown when they are complete.  There is at least one action you must take within {DeadlineText}.", true},
    {"You should save your work before taking these actions, as they will require a system shutdown when they are complete.  There is at least one action you must take within {DeadlineText}.", true},
    // Pending: now
    {"There is at least one action you must take now.", false},
    {"You should save your work before taking these actions.  There is at least one action you must take now.", false},
    {"The pending actions will require a system restart when they are complete.  There is at least one action you must take now.", false},
    {"You should save your work before taking these actions, as they will require a system restart when they are complete.  There is at least one action you must take now.", false},
    {"The pending actions will require a system shutdown when they are complete.  There is at least one action you must take now.", false},
    {"You should save your work before taking these actions, as they will require a system shutdown when they are complete.  There is at least one action you must take now.", false},
    // Pending: automatic
    {"At least one of these actions will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking these actions.  At least one of these actions will run automatically in {DeadlineText}.", true},
    {"The pending actions will require a system restart when they are complete.  At least one of these actions will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking these actions, as they will require a system restart when they are complete.  At least one of these actions will run automatically in {DeadlineText}.", true},
    {"The pending actions will require a system shutdown when they are complete.  At least one of these actions will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking these actions, as they will require a system shutdown when they are complete.  At least one of these actions will run automatically in {DeadlineText}.", true},
    // Selected: no deadline
    {"You should save your work before taking the selected actions.", false},
    {"The selected actions will require a system restart when they are complete.", false},
    {"You should save your work before taking the selected actions, as they will require a system restart when they are complete.", false},
    {"The selected actions will require a system shutdown when they are complete.", false},
    {"You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.", false},
    // Selected: within
    {"There is at least one selected action you must take within {DeadlineText}.", true},
    {"You should save your work before taking the selected actions.  There is at least one selected action you must take within {DeadlineText}.", true},
    {"The selected actions will require a system restart when they are complete.  There is at least one selected action you must take within {DeadlineText}.", true},
    {"You should save your work before taking the selected actions, as they will require a system restart when they are complete.  There is at least one selected action you must take within {DeadlineText}.", true},
    {"The selected actions will require a system shutdown when they are complete.  There is at least one selected action you must take within {DeadlineText}.", true},
    {"You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  There is at least one selected action you must take within {DeadlineText}.", true},
    // Selected: now
    {"There is at least one selected action you must take now.", false},
    {"You should save your work before taking the selected actions.  There is at least one selected action you must take now.", false},
    {"The selected actions will require a system restart when they are complete.  There is at least one selected action you must take now.", false},
    {"You should save your work before taking the selected actions, as they will require a system restart when they are complete.  There is at least one selected action you must take now.", false},
    {"The selected actions will require a system shutdown when they are complete.  There is at least one selected action you must take now.", false},
    {"You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  There is at least one selected action you must take now.", false},
    // Selected: automatic
    {"At least one of the selected actions will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking the selected actions.  At least one of the selected actions will run automatically in {DeadlineText}.", true},
    {"The selected actions will require a system restart when they are complete.  At least one of the selected actions will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking the selected actions, as they will require a system restart when they are complete.  At least one of the selected actions will run automatically in {DeadlineText}.", true},
    {"The selected actions will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in {DeadlineText}.", true},
    {"You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in {DeadlineText}.", true},
}};

// clang-format on
