#pragma once

#include "simulator/bus/Types.h"

#include <QList>
#include <QSet>
#include <QString>

#include <array>
#include <optional>
#include <vector>

// What System Settings shows, made of what the service lists. Plain values, without a widget.

namespace simulator::settings {

/// One copy of an extension as a person sees it.
struct ExtensionContent {
    /// Tells the copy from every other for good.
    qlonglong number = 0;
    QString identifier;
    QString name;
    /// "2.1/2105"
    QString version;
    /// The service's word: "waiting", "enabled" and so on.
    QString condition;
    /// The words for a person.
    QString status;
    bool isCamera = false;

    bool operator==(const ExtensionContent&) const = default;
};

/// A list under its title, with a text in its place if it is empty.
struct SectionContent {
    QString title;
    QString textIfEmpty;
    std::vector<ExtensionContent> extensions;
};

/// Cameras, drivers, and the others.
using PageContent = std::array<SectionContent, 3>;

/// Sorts the copies into the lists, each in the order given.
PageContent pageOf(const QList<CopyEntry>& copies);

/// What waits for a person: each copy that needs approval, and each request about which someone is asked.
QSet<QString> decisionsOf(const QList<CopyEntry>& copies, const QList<RequestEntry>& requests);

/// The administrator's question about one extension.
struct QuestionContent {
    /// Tells the question from every other.
    qlonglong number = 0;
    QString identifier;
    QString name;
    /// The application's name; empty if it is the person who asked.
    QString asker;
    /// How many more wait for this one.
    qsizetype following = 0;

    bool operator==(const QuestionContent&) const = default;
};

/// The oldest question that is open, if there is one.
std::optional<QuestionContent> questionOf(const QList<RequestEntry>& requests, const QList<CopyEntry>& copies);

} // namespace simulator::settings
