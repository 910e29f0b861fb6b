#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"

#include "tests/seismic/MiniSeed3Bytes.h"

#include <gtest/gtest.h>

using namespace xov;

TEST(Crc32c, hasTheValuesThatAreKnownOfIt) {
  // The check value of the catalogues, and those of RFC 3720, appendix B.4.
  EXPECT_EQ(crc32c("123456789"), 0xE3069283U);
  EXPECT_EQ(crc32c(QByteArray(32, '\0')), 0x8A9136AAU);
  EXPECT_EQ(crc32c(QByteArray(32, '\xFF')), 0x62A8AB43U);
  EXPECT_EQ(crc32c({}), 0U);
}

TEST(Crc32c, isTheDivisionBitByBitOfAnyNumberOfBytes) {
  QByteArray bytes;
  for (int i = 0; i < 70; ++i) {
    EXPECT_EQ(crc32c(bytes), test::bitwiseCrc32c(bytes)) << i;
    bytes += char(i * 37 + 11);
  }
}

TEST(Crc32c, goesOnWhereOtherBytesEnd) {
  const QByteArray bytes = "some thirty bytes, in two parts";
  for (qsizetype first = 0; first <= bytes.size(); ++first)
    EXPECT_EQ(crc32c(bytes.sliced(first), crc32c(bytes.first(first))), crc32c(bytes)) << first;
}
