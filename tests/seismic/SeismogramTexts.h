#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/SeismogramFile.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace xov::test {

/// The samples of a record.
inline std::vector<float> copiedSamples(const SeismogramRecord& record) {
  return {record.GetSacSeis(), record.GetSacSeis() + record.npts()};
}

/// The reference time, to the millisecond.
inline QString referenceText(const SeismogramRecord& record) {
  return record.mySeisReferenceTime()->nsDate().toString(Qt::ISODateWithMs);
}

/// The header's values in double precision.
inline SacFooter preciseOf(const SeismogramRecord& record) {
  return dynamic_cast<const SacSeismogram&>(record).preciseValues();
}

/// The only record of a file that is read without a note.
inline std::shared_ptr<SeismogramRecord> onlyRecord(const Result<SeismogramFile>& file) {
  EXPECT_TRUE(file) << file.error().toStdString();
  EXPECT_TRUE(file->notes.isEmpty()) << file->notes.join(u'\n').toStdString();
  EXPECT_EQ(file->records.size(), 1U);
  return file->records.empty() ? std::make_shared<SacSeismogram>() : file->records.front();
}

} // namespace xov::test
