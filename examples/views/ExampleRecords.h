#pragma once

#include <QDir>

#include <XOV_Graphics/seismic/io/Readers.h>
#include <cstdio>

/// The records of some files below a folder, in the order of their names; a file that is none is said so.
inline std::shared_ptr<xov::SeismogramArray> recordsIn(const QDir& folder, const QString& pattern) {
  auto records = std::make_shared<xov::SeismogramArray>();
  for (const QString& name : folder.entryList({pattern}, QDir::Files, QDir::Name)) {
    const auto file = xov::readSeismograms(folder.filePath(name));
    if (file)
      records->insert(records->end(), file->begin(), file->end());
    else
      std::fprintf(stderr, "%s\n", qPrintable(file.error()));
  }
  return records;
}
