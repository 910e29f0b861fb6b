#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SacText.h"
#include "XOV_Graphics/seismic/Undefined.h"

#include <QDateTime>

#include <cstddef>
#include <cstdint>

namespace xov {

/// Values of SacHeader::iftype: what a SAC file holds.
inline constexpr std::int32_t kSacTimeSeries = 1;
/// A spectrum: real and imaginary parts.
inline constexpr std::int32_t kSacRealImaginary = 2;
/// A spectrum: amplitudes and phases.
inline constexpr std::int32_t kSacAmplitudePhase = 3;
/// Points with an x of their own.
inline constexpr std::int32_t kSacXY = 4;
/// Values over x and y.
inline constexpr std::int32_t kSacXYZ = 51;

/// Values of SacHeader::idep: what the samples are, with the format's own units.
inline constexpr std::int32_t kSacUnknownKind = 5;
inline constexpr std::int32_t kSacDisplacement = 6; ///< nm
inline constexpr std::int32_t kSacVelocity = 7;     ///< nm/s
inline constexpr std::int32_t kSacAcceleration = 8; ///< nm/s²
inline constexpr std::int32_t kSacVolts = 50;       ///< velocity

/// An integer of the header that is not set.
inline constexpr std::int32_t kSacUndefinedInteger = -12345;

/// The header block of a trace in the binary layout of the SAC format: 70 four-byte floats, 40 four-byte integers and
/// 192 bytes of text, 632 bytes in all, under the format's own names. A new header has every field unset.
///
/// Source: SAC User's Guide, "SAC Data File Format" (IRIS/EarthScope Data Services). Fields named unused and internal
/// are written back as they were read.
struct XOV_EXPORT SacHeader {
  // Floats. Times are seconds relative to the reference time.
  float delta = kUndefinedValue;  ///< sample interval in seconds
  float depmin = kUndefinedValue; ///< smallest sample
  float depmax = kUndefinedValue; ///< largest sample
  float scale = kUndefinedValue;  ///< factor from samples to the dependent variable
  float odelta = kUndefinedValue; ///< observed sample interval
  float b = kUndefinedValue;      ///< time of the first sample
  float e = kUndefinedValue;      ///< time of the last sample
  float o = kUndefinedValue;      ///< origin time of the event
  float a = kUndefinedValue;      ///< first arrival
  float fmt = kUndefinedValue;    ///< internal
  float t0 = kUndefinedValue;     ///< picks T0 to T9
  float t1 = kUndefinedValue;
  float t2 = kUndefinedValue;
  float t3 = kUndefinedValue;
  float t4 = kUndefinedValue;
  float t5 = kUndefinedValue;
  float t6 = kUndefinedValue;
  float t7 = kUndefinedValue;
  float t8 = kUndefinedValue;
  float t9 = kUndefinedValue;
  float f = kUndefinedValue;     ///< end of the signal
  float resp0 = kUndefinedValue; ///< instrument response parameters
  float resp1 = kUndefinedValue;
  float resp2 = kUndefinedValue;
  float resp3 = kUndefinedValue;
  float resp4 = kUndefinedValue;
  float resp5 = kUndefinedValue;
  float resp6 = kUndefinedValue;
  float resp7 = kUndefinedValue;
  float resp8 = kUndefinedValue;
  float resp9 = kUndefinedValue;
  float stla = kUndefinedValue;  ///< station latitude in degrees, north positive
  float stlo = kUndefinedValue;  ///< station longitude in degrees, east positive
  float stel = kUndefinedValue;  ///< station elevation in m
  float stdp = kUndefinedValue;  ///< station depth below the surface in m
  float evla = kUndefinedValue;  ///< event latitude in degrees, north positive
  float evlo = kUndefinedValue;  ///< event longitude in degrees, east positive
  float evel = kUndefinedValue;  ///< event elevation in m
  float evdp = kUndefinedValue;  ///< event depth in km; files with metres exist
  float mag = kUndefinedValue;   ///< event magnitude
  float user0 = kUndefinedValue; ///< the user's own values
  float user1 = kUndefinedValue;
  float user2 = kUndefinedValue;
  float user3 = kUndefinedValue;
  float user4 = kUndefinedValue;
  float user5 = kUndefinedValue;
  float user6 = kUndefinedValue;
  float user7 = kUndefinedValue;
  float user8 = kUndefinedValue;
  float user9 = kUndefinedValue;
  float dist = kUndefinedValue;     ///< distance from event to station in km
  float az = kUndefinedValue;       ///< azimuth from event to station in degrees
  float baz = kUndefinedValue;      ///< azimuth from station to event in degrees
  float gcarc = kUndefinedValue;    ///< distance from event to station in degrees
  float sb = kUndefinedValue;       ///< original time of the first sample
  float sdelta = kUndefinedValue;   ///< original sample interval
  float depmen = kUndefinedValue;   ///< mean of the samples
  float cmpaz = kUndefinedValue;    ///< component azimuth, degrees clockwise from north
  float cmpinc = kUndefinedValue;   ///< component inclination, degrees from upward vertical
  float xminimum = kUndefinedValue; ///< smallest x of values over x and y
  float xmaximum = kUndefinedValue; ///< largest x
  float yminimum = kUndefinedValue; ///< smallest y
  float ymaximum = kUndefinedValue; ///< largest y
  float unused6 = kUndefinedValue;  ///< no meaning; kept as it is read
  float unused7 = kUndefinedValue;  ///< as unused6
  float unused8 = kUndefinedValue;  ///< as unused6
  float unused9 = kUndefinedValue;  ///< as unused6
  float unused10 = kUndefinedValue; ///< as unused6
  float unused11 = kUndefinedValue; ///< as unused6
  float unused12 = kUndefinedValue; ///< as unused6

  // Integers. The reference time is UTC.
  std::int32_t nzyear = kSacUndefinedInteger;   ///< year
  std::int32_t nzjday = kSacUndefinedInteger;   ///< day of the year, 1 = 1 January
  std::int32_t nzhour = kSacUndefinedInteger;   ///< 0 to 23
  std::int32_t nzmin = kSacUndefinedInteger;    ///< 0 to 59
  std::int32_t nzsec = kSacUndefinedInteger;    ///< 0 to 59
  std::int32_t nzmsec = kSacUndefinedInteger;   ///< milliseconds
  std::int32_t nvhdr = kSacUndefinedInteger;    ///< header version: 6, or 7 with a footer of doubles
  std::int32_t norid = kSacUndefinedInteger;    ///< origin ID
  std::int32_t nevid = kSacUndefinedInteger;    ///< event ID
  std::int32_t npts = kSacUndefinedInteger;     ///< number of samples
  std::int32_t nspts = kSacUndefinedInteger;    ///< internal
  std::int32_t nwfid = kSacUndefinedInteger;    ///< waveform ID
  std::int32_t nxsize = kSacUndefinedInteger;   ///< width of a spectral file
  std::int32_t nysize = kSacUndefinedInteger;   ///< height of a spectral file
  std::int32_t unused15 = kSacUndefinedInteger; ///< no meaning
  std::int32_t iftype = kSacUndefinedInteger;   ///< type of file, kSacTimeSeries to kSacXYZ
  std::int32_t idep = kSacUndefinedInteger;     ///< type of the dependent variable, kSacUnknownKind to kSacVolts
  std::int32_t iztype = kSacUndefinedInteger;   ///< what the reference time is
  std::int32_t unused16 = kSacUndefinedInteger; ///< no meaning
  std::int32_t iinst = kSacUndefinedInteger;    ///< type of instrument
  std::int32_t istreg = kSacUndefinedInteger;   ///< region of the station
  std::int32_t ievreg = kSacUndefinedInteger;   ///< region of the event
  std::int32_t ievtyp = kSacUndefinedInteger;   ///< type of event
  std::int32_t iqual = kSacUndefinedInteger;    ///< quality of the data
  std::int32_t isynth = kSacUndefinedInteger;   ///< synthetic flag
  std::int32_t imagtyp = kSacUndefinedInteger;  ///< type of magnitude
  std::int32_t imagsrc = kSacUndefinedInteger;  ///< source of the magnitude
  std::int32_t ibody = kSacUndefinedInteger;    ///< body that the coordinates refer to
  std::int32_t unused20 = kSacUndefinedInteger; ///< no meaning
  std::int32_t unused21 = kSacUndefinedInteger; ///< no meaning
  std::int32_t unused22 = kSacUndefinedInteger; ///< no meaning
  std::int32_t unused23 = kSacUndefinedInteger; ///< no meaning
  std::int32_t unused24 = kSacUndefinedInteger; ///< no meaning
  std::int32_t unused25 = kSacUndefinedInteger; ///< no meaning
  std::int32_t unused26 = kSacUndefinedInteger; ///< no meaning
  std::int32_t leven = kSacUndefinedInteger;    ///< 1 when the samples are evenly spaced, 0 when not
  std::int32_t lpspol = kSacUndefinedInteger;   ///< 1 when the component has positive polarity
  std::int32_t lovrok = kSacUndefinedInteger;   ///< 1 when the file may be overwritten
  std::int32_t lcalda = kSacUndefinedInteger;   ///< 1 when dist, az, baz and gcarc follow from the coordinates
  std::int32_t unused27 = kSacUndefinedInteger; ///< no meaning

  // Text.
  SacText<8> kstnm;  ///< station
  SacText<16> kevnm; ///< event
  SacText<8> khole;  ///< location code
  SacText<8> ko;     ///< label of o
  SacText<8> ka;     ///< label of a
  SacText<8> kt0;    ///< labels of t0 to t9
  SacText<8> kt1;
  SacText<8> kt2;
  SacText<8> kt3;
  SacText<8> kt4;
  SacText<8> kt5;
  SacText<8> kt6;
  SacText<8> kt7;
  SacText<8> kt8;
  SacText<8> kt9;
  SacText<8> kf;     ///< label of f
  SacText<8> kuser0; ///< the user's own texts
  SacText<8> kuser1;
  SacText<8> kuser2;
  SacText<8> kcmpnm; ///< component (channel)
  SacText<8> knetwk; ///< network
  SacText<8> kdatrd; ///< date the data was read
  SacText<8> kinst;  ///< instrument
};

static_assert(offsetof(SacHeader, delta) == 0);
static_assert(offsetof(SacHeader, b) == 20);
static_assert(offsetof(SacHeader, t0) == 40);
static_assert(offsetof(SacHeader, f) == 80);
static_assert(offsetof(SacHeader, stla) == 124);
static_assert(offsetof(SacHeader, user0) == 160);
static_assert(offsetof(SacHeader, gcarc) == 212);
static_assert(offsetof(SacHeader, depmen) == 224);
static_assert(offsetof(SacHeader, nzyear) == 280);
static_assert(offsetof(SacHeader, nzjday) == 284);
static_assert(offsetof(SacHeader, nzhour) == 288);
static_assert(offsetof(SacHeader, nzmin) == 292);
static_assert(offsetof(SacHeader, nzsec) == 296);
static_assert(offsetof(SacHeader, nzmsec) == 300);
static_assert(offsetof(SacHeader, nvhdr) == 304);
static_assert(offsetof(SacHeader, npts) == 316);
static_assert(offsetof(SacHeader, iftype) == 340);
static_assert(offsetof(SacHeader, leven) == 420);
static_assert(offsetof(SacHeader, kstnm) == 440);
static_assert(offsetof(SacHeader, kevnm) == 448);
static_assert(offsetof(SacHeader, ka) == 480);
static_assert(offsetof(SacHeader, kt0) == 488);
static_assert(offsetof(SacHeader, kf) == 568);
static_assert(offsetof(SacHeader, kcmpnm) == 600);
static_assert(offsetof(SacHeader, knetwk) == 608);
static_assert(sizeof(SacHeader) == 632);

/// The reference time in UTC, to the millisecond. Invalid unless year and day of the year are set and every field is
/// in its range (years 1 to 9999; second 60, a leap second, counts as the next minute). Hour, minute, second and
/// millisecond that are not set count as 0.
XOV_EXPORT QDateTime referenceTime(const SacHeader& header);

/// Sets nzyear to nzmsec to that moment, given in any zone; an invalid `time` unsets them.
XOV_EXPORT void setReferenceTime(SacHeader& header, const QDateTime& time);

} // namespace xov
