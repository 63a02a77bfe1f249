#pragma once

#include <QString>

#include <stdexcept>

namespace simulator::ctl {

/// What the program ends with.
namespace exitCode {
inline constexpr int done = 0;
inline constexpr int notDone = 1;       ///< understood, but it did not come about
inline constexpr int notUnderstood = 2; ///< an unknown verb, state, identifier or argument
} // namespace exitCode

/// Why a command line could not be understood or carried out: one line for a person, and what the program ends with.
class CommandFailure : public std::runtime_error {
public:
    CommandFailure(int code, const QString& line) : std::runtime_error{line.toStdString()}, code_{code} {}

    int code() const { return code_; }
    QString line() const { return QString::fromUtf8(what()); }

private:
    int code_;
};

} // namespace simulator::ctl
