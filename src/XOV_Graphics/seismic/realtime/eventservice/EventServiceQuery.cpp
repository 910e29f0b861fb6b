#include "XOV_Graphics/seismic/realtime/eventservice/EventServiceQuery.h"

#include <QUrlQuery>

namespace xov {

namespace {

constexpr char kService[] = "/fdsnws/event/1";
constexpr char kQuery[] = "/query";
constexpr char kQueryWithUser[] = "/queryauth";

// Parameters have short names, too.
constexpr char kStart[] = "starttime";
constexpr char kShortStart[] = "start";

QString serviceTime(const QDateTime& time) { return time.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")); }

bool hasItem(const QUrlQuery& items, const char* name, const char* shortName) {
  return items.hasQueryItem(QLatin1String(name)) || items.hasQueryItem(QLatin1String(shortName));
}

} // namespace

Result<QUrl> parseEventServiceAddress(const QString& text) {
  QUrl address(text.trimmed(), QUrl::StrictMode);
  const bool isWeb = address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
  if (!address.isValid() || !isWeb || address.host().isEmpty()) {
    // What stands there may hold a password.
    return Error{QStringLiteral("expected the address of an event service as https://host")};
  }
  QString path = address.path();
  while (path.endsWith('/'))
    path.chop(1);
  if (path.endsWith(QLatin1String(kService))) {
    path += QLatin1String(kQuery);
  } else if (!path.endsWith(QLatin1String(kQuery)) && !path.endsWith(QLatin1String(kQueryWithUser))) {
    path += QLatin1String(kService) + QLatin1String(kQuery);
  }
  address.setPath(path);
  address.setFragment({});
  return address;
}

QString shownAddress(const QUrl& address) {
  return address.toDisplayString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

QUrl queryAddress(const QUrl& service, const EventServiceQuery& query) {
  QUrlQuery items(service);
  const auto add = [&](const char* name, const char* shortName, const QString& value) {
    if (!hasItem(items, name, shortName)) items.addQueryItem(QLatin1String(name), value);
  };
  add(kStart, kShortStart, serviceTime(query.from));
  add("endtime", "end", serviceTime(query.to));
  add("format", "format", QStringLiteral("text"));
  if (query.updatedAfter.isValid()) add("updatedafter", "updatedafter", serviceTime(query.updatedAfter));
  QUrl address = service;
  address.setQuery(items);
  return address;
}

bool hasOwnStart(const QUrl& service) { return hasItem(QUrlQuery(service), kStart, kShortStart); }

} // namespace xov
