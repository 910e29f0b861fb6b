#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

#include <gtest/gtest.h>

namespace xov::test {

inline Result<EventFile> parsedEvents(const QByteArray& bytes) { return parseEvents(bytes, QStringLiteral("in")); }

/// The only event of a file that is read without a note.
inline HypocentreValues onlyEvent(const QByteArray& bytes) {
  const auto file = parsedEvents(bytes);
  EXPECT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->notes.isEmpty()) << file->notes.join(u'\n').toStdString();
  EXPECT_EQ(file->events.size(), 1U);
  return file->events.empty() ? HypocentreValues() : file->events.front()->values();
}

inline std::string timeText(const QDateTime& time) { return time.toString(Qt::ISODateWithMs).toStdString(); }

} // namespace xov::test
