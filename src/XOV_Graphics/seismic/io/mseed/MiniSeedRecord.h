#pragma once

#include "XOV_Graphics/seismic/ChannelPatterns.h"

#include <QByteArrayView>
#include <QSysInfo>

#include <cstdint>
#include <string>

namespace xov {

/// A miniSEED 2 record is 2^7 to 2^20 bytes long: a fixed header of 48 bytes, a chain of blockettes, and samples. In
/// the fixed header, by byte:
///
///      0  sequence number, six digits          30  number of samples
///      6  D, R, Q or M                         32  sample rate factor, 34 multiplier
///      8  station, 13 location,                36  activity flags: bit 1 when the correction is applied
///         15 channel, 18 network               40  time correction in 0.1 ms
///     20  start: year, day of the year,        44  where the samples begin
///         hour, minute, second, -, 0.1 ms      46  where the first blockette begins, 0 for none
///
/// A blockette starts with its type and the place of the next one (0 after the last), two bytes each. Blockette 1000
/// tells the encoding at byte 4, the byte order of the samples at 5 (0 little-endian) and log2 of the record's length
/// at 6; without it, as before it was thought of, a record is Steim1 and ends where the next one begins. Blockette
/// 100 has a sample rate that refines the header's (a float at byte 4), blockette 1001 the microseconds of the start
/// (a signed byte at 5). The header is in either byte order, which the year and day give away.
///
/// Source: SEED Reference Manual, version 2.4 (FDSN, 2012), chapter 8 and appendix G.

/// How samples are stored, by the numbers of blockette 1000.
enum class MiniSeedEncoding : std::uint8_t {
  Text = 0,
  Int16 = 1,
  Int32 = 3,
  Float32 = 4,
  Float64 = 5,
  Steim1 = 10,
  Steim2 = 11,
  Geoscope24 = 12,
  Geoscope16Gain3 = 13,
  Geoscope16Gain4 = 14,
  Cdsn = 16,
  Sro = 30,
  Dwwssn = 32,
};

inline constexpr qsizetype kMiniSeedHeaderBytes = 48;
inline constexpr qsizetype kLongestMiniSeedRecord = qsizetype(1) << 20;
/// Further than this the blockettes cannot lie: their places are numbers of two bytes.
inline constexpr qsizetype kMiniSeedChainBytes = (qsizetype(1) << 16) + 8;

/// Where the samples of a record lie and how they are stored.
struct SampleFormat {
  int length = 0;     ///< of the record in bytes
  int dataOffset = 0; ///< of the samples in the record
  MiniSeedEncoding encoding = MiniSeedEncoding::Text;
  bool isBigEndian = true;
  bool isStated = false; ///< by blockette 1000; else it is the usual format
  bool isProven = true;  ///< false where the record has a check value that is not that of its bytes
};

/// What the header of a record says, all of it checked.
struct MiniSeedRecord {
  int version = 2;
  /// In version 2 station 5, location 2, channel 3, network 2, padded with blanks; in version 3 the identifier.
  std::string source;
  std::int64_t startUs = 0; ///< time of the first sample, microseconds since 1970
  double rateHz = 0;        ///< above 0 and finite when there are samples
  int sampleCount = 0;      ///< as many fit into the record, unless they are text
  SampleFormat format;
};

/// The codes without padding.
ChannelCodes channelCodes(const MiniSeedRecord& record);

/// What was found where a record may begin.
struct MiniSeedFinding {
  enum class Kind : std::uint8_t {
    Nothing, ///< no record begins here
    Damaged, ///< a record that cannot be read; `record` has its length where that is known, else 0
    Record,
  };
  Kind kind = Kind::Nothing;
  MiniSeedRecord record;
  QString problem; ///< of a damaged record
};

/// Whether `bytes` begin as a record does: sequence number, quality, codes and a time that all can be.
bool beginsMiniSeedRecord(QByteArrayView bytes);

/// What is wrong with the time of a record whose header is sound but for it: "hour at byte 24: found 25, expected 0
/// to 23". Empty where `bytes` do not begin with such a header.
QString impossibleTime(QByteArrayView bytes);

/// Reads and checks the header at the start of `bytes`, which are either the rest of the file or so many that the
/// blockettes must lie in them; `remaining` is how many bytes the file has from here on.
MiniSeedFinding findMiniSeedRecord(QByteArrayView bytes, qint64 remaining);

} // namespace xov
