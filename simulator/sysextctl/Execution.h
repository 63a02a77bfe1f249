#pragma once

#include "Simulator1Proxy.h"

#include "simulator/sysextctl/Command.h"

#include <QDBusConnection>
#include <QString>

namespace simulator::ctl {

/// Carries out commands against the service on a bus. Everything that does not come about is thrown as a
/// CommandFailure; what there is to say goes to standard output.
class Execution {
public:
    explicit Execution(QDBusConnection bus);

    void carryOut(const Command& command);

private:
    void run(const ShowHelp& command);
    void run(const ListCopies& command);
    void run(const ListRequests& command);
    void run(const ActOn& command);
    void run(const Restart& command);
    void run(const Reset& command);
    void run(const Install& command);
    void run(const Uninstall& command);
    void run(const WaitFor& command);
    void run(const Applications& command);
    void run(const DeveloperMode& command);
    void run(const Profile& command);
    void run(const Advance& command);
    void run(const OrderFault& command);
    void run(const Switch& command);
    void run(const Watch& command);
    void run(const Play& command);

    void showProfile();
    void setProfile(const QString& file);
    void showSwitches(const QString& name);

    QDBusConnection bus_;
    ComKelvraSimulator1ControlInterface control_;
};

} // namespace simulator::ctl
