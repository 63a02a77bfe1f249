#pragma once

#include <QString>

/// What the help says of a verb beyond its summary. Lines, each ended.
namespace simulator::ctl::details {

extern const char* const requests;
extern const char* const watch;
extern const char* const allow;
extern const char* const deny;
extern const char* const authorize;
extern const char* const refuse;
extern const char* const disable;
extern const char* const enable;
extern const char* const restart;
extern const char* const reset;
extern const char* const uninstall;
extern const char* const developer;
extern const char* const profile;

/// Every switch with its values, and how to set one.
QString ofSwitch();

/// How a scenario is written.
QString ofPlay();

} // namespace simulator::ctl::details
