#pragma once

#include "simulator/bus/RequestEntry.h"

#include <QList>
#include <QString>

namespace simulator::ctl {

/// The requests that have not ended, in columns separated by tabs like those of the copies.
QString requestsAsText(const QList<RequestEntry>& requests);

/// The same as one array of objects, one a line.
QString requestsAsJson(const QList<RequestEntry>& requests);

} // namespace simulator::ctl
