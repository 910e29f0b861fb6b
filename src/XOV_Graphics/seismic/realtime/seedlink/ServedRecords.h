#pragma once

#include "XOV_Graphics/base/Result.h"

#include <QByteArray>

#include <cstdint>
#include <vector>

namespace xov {

/// A miniSEED record that a server has.
struct ServedRecord {
  QByteArray station; ///< "GE_WLF"
  QByteArray location;
  QByteArray channel;
  char format = '2'; ///< of miniSEED
  std::int64_t startUs = 0;
  std::int64_t endUs = 0; ///< when it was complete
  QByteArray bytes;
};

/// The records of a miniSEED file, as they stand there; text records are left out.
Result<std::vector<ServedRecord>> readServedRecords(const QString& path);

/// Text as records of miniSEED 2 of 512 bytes each, as protocol 3.1 sends information.
std::vector<QByteArray> textRecords(const QByteArray& text);

/// What such records say; empty where one holds no text.
QByteArray recordText(QByteArrayView record);

/// Which stations and channels there are between `first` and `last`, as the answers to INFO: XML of protocol 3.1 and
/// JSON of protocol 4.0.
QByteArray streamsAsXml(const std::vector<ServedRecord>& records, std::size_t count);
QByteArray streamsAsJson(const std::vector<ServedRecord>& records, std::size_t count);

} // namespace xov
