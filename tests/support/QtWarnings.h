#pragma once

namespace tests {

/// From here on every warning that Qt prints fails the test that is running. Called once, first in main.
void failOnQtWarnings();

/// The same, but for what the offscreen platform says of what it lacks itself.
void failOnQtWarningsOffscreen();

} // namespace tests
