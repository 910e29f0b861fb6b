#pragma once

#include <QLoggingCategory>
#include <QStringList>

namespace xov::test {

/// Keeps what is said in the log while it lives.
class LogCatcher {
public:
  LogCatcher() : former_(qInstallMessageHandler(keep)) { lines().clear(); }
  ~LogCatcher() { qInstallMessageHandler(former_); }
  LogCatcher(const LogCatcher&) = delete;
  LogCatcher& operator=(const LogCatcher&) = delete;

  static QStringList& lines() {
    static QStringList all;
    return all;
  }

private:
  static void keep(QtMsgType, const QMessageLogContext& context, const QString& text) {
    lines() << QString::fromLatin1(context.category) + QStringLiteral(": ") + text;
  }

  QtMessageHandler former_;
};

} // namespace xov::test
