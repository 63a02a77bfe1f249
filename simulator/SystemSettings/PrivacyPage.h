#pragma once

#include "simulator/bus/CopyEntry.h"
#include "simulator/bus/RequestEntry.h"

#include <QList>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace simulator::settings {

enum class Standing : std::uint8_t { preparing, waiting, enabled, disabled, dying };

/// One copy of an extension as a person sees it.
struct ExtensionContent {
    qlonglong number = 0; ///< tells the copy from every other for good
    QString identifier;
    QString name;
    QString version; ///< "2.1/2105"
    Standing standing = Standing::preparing;
    QString status;
    bool isCamera = false;

    bool operator==(const ExtensionContent&) const = default;
};

struct SectionContent {
    QString title;
    QString textIfEmpty;
    std::vector<ExtensionContent> extensions;
};

/// The lists of the page. The last is shown only if it is not empty.
struct PageContent {
    SectionContent cameras;
    SectionContent drivers;
    SectionContent others;
};

/// Sorts the copies into the lists, each in the order given.
PageContent pageOf(const QList<CopyEntry>& copies);

/// The administrator's question about one extension.
struct QuestionContent {
    QString identifier;
    QString name;
    QString asker; ///< the application's name; empty if it is the person who asked

    bool operator==(const QuestionContent&) const = default;
};

/// The oldest question that is open, if there is one.
std::optional<QuestionContent> questionOf(const QList<RequestEntry>& requests, const QList<CopyEntry>& copies);

} // namespace simulator::settings
