#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

namespace simulator::tests {

/// An application that asks the service what the test says, as a process of its own: see asker.cpp.
class Asker {
public:
    Asker(const QString& program, const QProcessEnvironment& environment);
    ~Asker();
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    void tell(const QString& line);
    /// Handles events until it has printed this line; says whether it did.
    [[nodiscard]] bool hears(const QString& line);
    /// Every line so far but the greeting.
    QStringList lines();
    /// Every line that came since the last call of this, which is not to be mixed with the above.
    QStringList takeLines();
    /// Ends it without a goodbye.
    void kill();

private:
    QProcess process_;
    QByteArray output_;
};

} // namespace simulator::tests
