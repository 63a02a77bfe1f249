#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <variant>

namespace simulator::ctl {

enum class Form : std::uint8_t { text, json };

/// Help for one verb, or for all of them if the verb is empty.
struct ShowHelp {
    QString verb;
};

/// The list of copies; a category's full name, or empty for every category.
struct ListCopies {
    QString category;
    Form form = Form::text;
};

struct ListRequests {
    Form form = Form::text;
};

/// What a person does about one extension.
enum class Deed : std::uint8_t { allow, deny, authorize, refuse, disable, enable };

struct ActOn {
    Deed deed = Deed::allow;
    QString identifier;
};

struct Restart {};

struct Reset {};

struct Install {
    QString identifier;
    QString shortVersion;
    QString version;
    QString condition;
};

struct Uninstall {
    QString team;
    QString identifier;
};

/// Waits until any copy is in that condition, or until none is there if the condition is "absent".
struct WaitFor {
    QString identifier;
    QString condition;
    qint64 timeout = 0; ///< in milliseconds
};

/// Sets the folders in which an application must lie, or shows them.
struct Applications {
    QStringList folders; ///< relative to the current folder, or absolute
};

/// Sets developer mode, or shows it.
struct DeveloperMode {
    std::optional<bool> on;
};

/// Sets the management profile from a file, takes it away, or shows it.
struct Profile {
    enum class Purpose : std::uint8_t { show, set, remove };

    Purpose purpose = Purpose::show;
    QString file;
};

struct Advance {
    qint64 milliseconds = 0;
};

/// Orders a fault for the next request; the words are those of OrderFault.
struct OrderFault {
    QString kind;
    QString fault;
    QString domain;
    qlonglong code = 0;
    QString description;
    qint64 milliseconds = 0;
};

/// Shows every switch (no name), shows one (no value), or sets it.
struct Switch {
    QString name;
    QString value;
};

struct Watch {};

/// Plays a scenario on a Mac in this process, or on the service.
struct Play {
    QString file;
    bool onBus = false;
};

using Command = std::variant<ShowHelp, ListCopies, ListRequests, ActOn, Restart, Reset, Install, Uninstall, WaitFor,
                             Applications, DeveloperMode, Profile, Advance, OrderFault, Switch, Watch, Play>;

} // namespace simulator::ctl
