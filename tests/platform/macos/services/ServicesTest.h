#pragma once

#include "tests/macos/gnustep/ScriptedExtensions.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/services/MainQueue.h"

#import <Foundation/Foundation.h>

#include <gmock/gmock.h>

// For the tests in which a part of the system is played, and which a Mac cannot run.
