#pragma once

#include "simulator/bus/CopyEntry.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace simulator::ctl {

/// The full names of the categories, in the order of the list.
const QStringList& categories();

/// Their last parts, such as "cmio".
QStringList shortCategories();

/// The category's full name, given that or its last part ("cmio"); empty if there is no such category.
QString categoryNamed(const QString& word);

/// The copies of one category, or all of them if it is empty, in the order given.
QList<CopyEntry> copiesOf(const QList<CopyEntry>& copies, const QString& category);

/// The list as it is printed, with a line end after each line. Expects the copies in the order of ListCopies.
QString copiesAsText(const QList<CopyEntry>& copies);

/// The same as one array of objects, one a line.
QString copiesAsJson(const QList<CopyEntry>& copies);

/// Whether any copy of the extension is in that condition, or none is there if the condition is "absent".
bool isInCondition(const QList<CopyEntry>& copies, const QString& identifier, const QString& condition);

} // namespace simulator::ctl
