#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QDateTime>
#include <QUrl>

namespace xov {

/// The address of an FDSN event web service: "https://host", "https://host/fdsnws/event/1" or that of its query, with
/// parameters of it such as "?minmagnitude=4&format=xml". Refuses in one line what is none.
XOV_EXPORT Result<QUrl> parseEventServiceAddress(const QString& text);

/// An address as it may be shown and logged: without user, password and parameters, which may hold a token.
XOV_EXPORT QString shownAddress(const QUrl& address);

/// What a service is asked for. The parameters that the address has already stay as they are there.
///
/// Source: FDSN Web Service Specifications, version 1.2 (FDSN, 2019), fdsnws-event.
struct EventServiceQuery {
  QDateTime from;         ///< of origin times
  QDateTime to;           ///< the end of that time; invalid for none
  QDateTime updatedAfter; ///< only events that are new or changed since; invalid for all
};
/// The address that asks a service for the events of a query.
QUrl queryAddress(const QUrl& service, const EventServiceQuery& query);

/// Whether the address says itself from when on it wants events.
bool hasOwnStart(const QUrl& service);

} // namespace xov
