#include "apps/xov/output/ScreenSaver.h"

#ifdef XOV_HAS_DBUS
#include <QString>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#endif

namespace xov::cli {

#ifdef XOV_HAS_DBUS

void keepScreenSaverAway() {
  // Without a session's bus Qt would try to start one.
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  const QString service = QStringLiteral("org.freedesktop.ScreenSaver");
  QDBusMessage call = QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/ScreenSaver"), service,
                                                     QStringLiteral("Inhibit"));
  call << QStringLiteral("xov") << QStringLiteral("a display on a wall");
  // It lasts as long as the connection, and so does that.
  QDBusConnection::sessionBus().send(call);
}

#else

void keepScreenSaverAway() {}

#endif

} // namespace xov::cli
