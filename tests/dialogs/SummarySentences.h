#pragma once

#include <array>

// What the summaries say for each key, written out. A key is a sum: 1 save work, 2 deadline, 4 restart, 8
// shutdown, 16 near, 32 runs by itself. Each comment tells the common part of four keys, which differ in the
// lowest two bits. A near deadline is four and a half minutes away, any other two hours.

// clang-format off

inline constexpr std::array<char const*, 64> cActionSentences = {
    // 0: nothing
    "",
    "You should save your work before taking this action.",
    "You must take this action within 2 hours.",
    "You should save your work before taking this action.  You must take this action within 2 hours.",
    // 4: restart
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  You must take this action within 2 hours.",
    "You should save your work before taking this action, as it will require a system restart.  You must take this action within 2 hours.",
    // 8: shutdown
    "This action will require a system shutdown.",
    "You should save your work before taking this action, as it will require a system shutdown.",
    "This action will require a system shutdown.  You must take this action within 2 hours.",
    "You should save your work before taking this action, as it will require a system shutdown.  You must take this action within 2 hours.",
    // 12: restart, shutdown
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  You must take this action within 2 hours.",
    "You should save your work before taking this action, as it will require a system restart.  You must take this action within 2 hours.",
    // 16: near
    "",
    "You should save your work before taking this action.",
    "You must take this action now.",
    "You should save your work before taking this action.  You must take this action now.",
    // 20: restart, near
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  You must take this action now.",
    "You should save your work before taking this action, as it will require a system restart.  You must take this action now.",
    // 24: shutdown, near
    "This action will require a system shutdown.",
    "You should save your work before taking this action, as it will require a system shutdown.",
    "This action will require a system shutdown.  You must take this action now.",
    "You should save your work before taking this action, as it will require a system shutdown.  You must take this action now.",
    // 28: restart, shutdown, near
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  You must take this action now.",
    "You should save your work before taking this action, as it will require a system restart.  You must take this action now.",
    // 32: forced
    "",
    "You should save your work before taking this action.",
    "This action will run automatically in 2 hours.",
    "You should save your work before taking this action.  This action will run automatically in 2 hours.",
    // 36: restart, forced
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  This action will run automatically in 2 hours.",
    "You should save your work before taking this action, as it will require a system restart.  This action will run automatically in 2 hours.",
    // 40: shutdown, forced
    "This action will require a system shutdown.",
    "You should save your work before taking this action, as it will require a system shutdown.",
    "This action will require a system shutdown.  This action will run automatically in 2 hours.",
    "You should save your work before taking this action, as it will require a system shutdown.  This action will run automatically in 2 hours.",
    // 44: restart, shutdown, forced
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  This action will run automatically in 2 hours.",
    "You should save your work before taking this action, as it will require a system restart.  This action will run automatically in 2 hours.",
    // 48: near, forced
    "",
    "You should save your work before taking this action.",
    "This action will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking this action.  This action will run automatically in 4 minutes, 30 seconds.",
    // 52: restart, near, forced
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  This action will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking this action, as it will require a system restart.  This action will run automatically in 4 minutes, 30 seconds.",
    // 56: shutdown, near, forced
    "This action will require a system shutdown.",
    "You should save your work before taking this action, as it will require a system shutdown.",
    "This action will require a system shutdown.  This action will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking this action, as it will require a system shutdown.  This action will run automatically in 4 minutes, 30 seconds.",
    // 60: restart, shutdown, near, forced
    "This action will require a system restart.",
    "You should save your work before taking this action, as it will require a system restart.",
    "This action will require a system restart.  This action will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking this action, as it will require a system restart.  This action will run automatically in 4 minutes, 30 seconds.",
};

inline constexpr std::array<char const*, 64> cSelectedSentences = {
    // 0: nothing
    "",
    "You should save your work before taking the selected actions.",
    "There is at least one selected action you must take within 2 hours.",
    "You should save your work before taking the selected actions.  There is at least one selected action you must take within 2 hours.",
    // 4: restart
    "The selected actions will require a system restart when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.",
    "The selected actions will require a system restart when they are complete.  There is at least one selected action you must take within 2 hours.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.  There is at least one selected action you must take within 2 hours.",
    // 8: shutdown
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  There is at least one selected action you must take within 2 hours.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  There is at least one selected action you must take within 2 hours.",
    // 12: restart, shutdown
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  There is at least one selected action you must take within 2 hours.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  There is at least one selected action you must take within 2 hours.",
    // 16: near
    "",
    "You should save your work before taking the selected actions.",
    "There is at least one selected action you must take now.",
    "You should save your work before taking the selected actions.  There is at least one selected action you must take now.",
    // 20: restart, near
    "The selected actions will require a system restart when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.",
    "The selected actions will require a system restart when they are complete.  There is at least one selected action you must take now.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.  There is at least one selected action you must take now.",
    // 24: shutdown, near
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  There is at least one selected action you must take now.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  There is at least one selected action you must take now.",
    // 28: restart, shutdown, near
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  There is at least one selected action you must take now.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  There is at least one selected action you must take now.",
    // 32: forced
    "",
    "You should save your work before taking the selected actions.",
    "At least one of the selected actions will run automatically in 2 hours.",
    "You should save your work before taking the selected actions.  At least one of the selected actions will run automatically in 2 hours.",
    // 36: restart, forced
    "The selected actions will require a system restart when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.",
    "The selected actions will require a system restart when they are complete.  At least one of the selected actions will run automatically in 2 hours.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.  At least one of the selected actions will run automatically in 2 hours.",
    // 40: shutdown, forced
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 2 hours.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 2 hours.",
    // 44: restart, shutdown, forced
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 2 hours.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 2 hours.",
    // 48: near, forced
    "",
    "You should save your work before taking the selected actions.",
    "At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking the selected actions.  At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
    // 52: restart, near, forced
    "The selected actions will require a system restart when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.",
    "The selected actions will require a system restart when they are complete.  At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking the selected actions, as they will require a system restart when they are complete.  At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
    // 56: shutdown, near, forced
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
    // 60: restart, shutdown, near, forced
    "The selected actions will require a system shutdown when they are complete.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.",
    "The selected actions will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking the selected actions, as they will require a system shutdown when they are complete.  At least one of the selected actions will run automatically in 4 minutes, 30 seconds.",
};

inline constexpr std::array<char const*, 64> cPendingSentences = {
    // 0: nothing
    "",
    "You should save your work before taking these actions.",
    "There is at least one action you must take within 2 hours.",
    "You should save your work before taking these actions.  There is at least one action you must take within 2 hours.",
    // 4: restart
    "The pending actions will require a system restart when they are complete.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.",
    "The pending actions will require a system restart when they are complete.  There is at least one action you must take within 2 hours.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.  There is at least one action you must take within 2 hours.",
    // 8: shutdown
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  There is at least one action you must take within 2 hours.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  There is at least one action you must take within 2 hours.",
    // 12: restart, shutdown
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  There is at least one action you must take within 2 hours.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  There is at least one action you must take within 2 hours.",
    // 16: near
    "",
    "You should save your work before taking these actions.",
    "There is at least one action you must take now.",
    "You should save your work before taking these actions.  There is at least one action you must take now.",
    // 20: restart, near
    "The pending actions will require a system restart when they are complete.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.",
    "The pending actions will require a system restart when they are complete.  There is at least one action you must take now.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.  There is at least one action you must take now.",
    // 24: shutdown, near
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  There is at least one action you must take now.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  There is at least one action you must take now.",
    // 28: restart, shutdown, near
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  There is at least one action you must take now.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  There is at least one action you must take now.",
    // 32: forced
    "",
    "You should save your work before taking these actions.",
    "At least one of these actions will run automatically in 2 hours.",
    "You should save your work before taking these actions.  At least one of these actions will run automatically in 2 hours.",
    // 36: restart, forced
    "The pending actions will require a system restart when they are complete.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.",
    "The pending actions will require a system restart when they are complete.  At least one of these actions will run automatically in 2 hours.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.  At least one of these actions will run automatically in 2 hours.",
    // 40: shutdown, forced
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  At least one of these actions will run automatically in 2 hours.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  At least one of these actions will run automatically in 2 hours.",
    // 44: restart, shutdown, forced
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  At least one of these actions will run automatically in 2 hours.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  At least one of these actions will run automatically in 2 hours.",
    // 48: near, forced
    "",
    "You should save your work before taking these actions.",
    "At least one of these actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking these actions.  At least one of these actions will run automatically in 4 minutes, 30 seconds.",
    // 52: restart, near, forced
    "The pending actions will require a system restart when they are complete.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.",
    "The pending actions will require a system restart when they are complete.  At least one of these actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking these actions, as they will require a system restart when they are complete.  At least one of these actions will run automatically in 4 minutes, 30 seconds.",
    // 56: shutdown, near, forced
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  At least one of these actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  At least one of these actions will run automatically in 4 minutes, 30 seconds.",
    // 60: restart, shutdown, near, forced
    "The pending actions will require a system shutdown when they are complete.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.",
    "The pending actions will require a system shutdown when they are complete.  At least one of these actions will run automatically in 4 minutes, 30 seconds.",
    "You should save your work before taking these actions, as they will require a system shutdown when they are complete.  At least one of these actions will run automatically in 4 minutes, 30 seconds.",
};

// clang-format on
