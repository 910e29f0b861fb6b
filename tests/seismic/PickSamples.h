#pragma once

#include "XOV_Graphics/seismic/SacHeader.h"
#include "XOV_Graphics/seismic/picks/Pick.h"

namespace xov::test {

/// A moment that the tests know to be one.
inline UtcNanoseconds moment(const char* text) { return parseUtcNanoseconds(QString::fromLatin1(text)).value(); }

/// A pick at the station TLY of the network II.
inline Pick tlyPick(const char* phase, const char* time, const char* channel = "BHZ") {
  Pick pick;
  pick.id = QStringLiteral("smi:local/pick/%1-%2").arg(QLatin1String(phase), QLatin1String(channel));
  pick.phase = QString::fromLatin1(phase);
  pick.time = moment(time);
  pick.channel = {QStringLiteral("II"), QStringLiteral("TLY"), QStringLiteral("00"), QString::fromLatin1(channel)};
  return pick;
}

/// The header of a record a second a sample of that station, which counts from `start`; null for an unknown time.
inline SacHeader tlyHeader(const char* channel, const char* start) {
  SacHeader header;
  header.kstnm = "TLY";
  header.knetwk = "II";
  header.khole = "00";
  header.kcmpnm = channel;
  header.delta = 1;
  header.b = 0;
  if (start != nullptr) setReferenceTime(header, *parseUtcTime(QString::fromLatin1(start)));
  return header;
}

/// A pick of which everything is known.
inline Pick fullPick() {
  Pick pick = tlyPick("pP", "2011-03-11T05:52:31.123456789Z");
  pick.lowerSeconds = 0.25;
  pick.upperSeconds = 0.5;
  pick.polarity = PickPolarity::Negative;
  pick.onset = PickOnset::Emergent;
  pick.mode = PickMode::Manual;
  pick.comment = QStringLiteral("weak, \"noisy\" & small <onset>");
  return pick;
}

} // namespace xov::test
