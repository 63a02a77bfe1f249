#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

// What stands in for the parts of the system that GNUstep lacks, as a test sees it.

namespace standin {

/// What went to the system's log, oldest first. Texts that are not marked public read "<private>".
std::vector<std::string>& loggedLines();

/// What assistive technology was asked to speak, oldest first.
std::vector<std::string>& announcements();

// Work waits in the main queue, or was put off to the end of a turn.

/// Runs the work that waits; false if there was none.
bool runMainQueue();
/// Whether none waits.
bool isAtRest();
/// Called after each piece of work.
void whenWorkIsDone(std::function<void()> told);

/// How many objects of each class were made and are alive, since the main function began.
std::map<std::string, long> liveObjects();

/// Has menus tell their delegates that they open and close, and whoever opens one by a key come back when it is closed.
/// Called once, before there is one.
void announceMenus();

/// The NSMenu that is open; null if there is none.
void* openMenu();

/// When a menu has closed next, and its delegate knows, but before what was chosen is told: acts, lets the main loop
/// turn once as it does while a menu is tracked, and then acts again.
void onceMenuHasClosed(std::function<void()> act, std::function<void()> then);

/// Has the main loop look again at its events when it has just read what the display sent. Called once, with a display.
void attendToDisplay();

/// Has the main loop look again at its events once it waits.
void endWait();

/// Keeps notices that would go to every program within this one. Called once, before there is an application.
void keepToOneself();

/// Makes whatever GNUstep writes about what goes wrong a failure of the test.
void failOnComplaints();

} // namespace standin
