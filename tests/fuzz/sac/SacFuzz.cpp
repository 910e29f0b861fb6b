// Whatever the bytes are, the SAC reader gives a trace or one line of error, and every trace that it gives can be
// written in each form and read back with the same samples.

#include "XOV_Graphics/seismic/io/sac/SacReader.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"

#include <QBuffer>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace xov;

namespace {

void require(bool holds, const char* claim, const QString& detail = {}) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s (%s)\n", claim, qPrintable(detail));
  std::abort();
}

/// Sends every message that a view may send.
void sendAllMessages(SacSeismogram& trace) {
  trace.ComputeExtrema();
  require(std::isfinite(trace.smin()) && trace.smin() <= trace.smax(), "the extremes are finite and in order");
  require(trace.absMax() >= 0, "the largest absolute value is not negative");
  require(trace.delta() > 0 && std::isfinite(trace.delta()), "the interval is finite and above zero");
  require(std::isfinite(trace.b()) && std::isfinite(trace.e()), "start and end are finite");
  for (int key = -1; key <= 12; ++key) {
    (void)trace.timePickKey(key);
    require(!trace.pickLabelWithKey(key).isEmpty(), "a pick label is never empty");
  }
  const auto time = trace.mySeisReferenceTime();
  time->updateNSDate();
  require((*time->YMDcString() == 0) == !time->nsDate().isValid(), "a known time has a date");
  (void)trace.labelString();
  (void)trace.oTimeString();
  (void)trace.flinnEngdahlString();
  (void)trace.kuser0();
  (void)(trace.gcarc() + trace.azimuth() + trace.backazimuth() + trace.evdp());
}

bool sameSamples(const SacSeismogram& left, const SacSeismogram& right) {
  if (left.npts() != right.npts()) return false;
  for (int i = 0; i < left.npts(); ++i) {
    const float a = left.GetSacSeis()[i];
    const float b = right.GetSacSeis()[i];
    // The alphanumeric form does not keep the bits of a NaN, and cuts some negative numbers to eight digits.
    const bool near = std::abs(a - b) <= std::abs(a) * 1e-7F;
    if (std::bit_cast<std::uint32_t>(a) != std::bit_cast<std::uint32_t>(b) && !near &&
        !(std::isnan(a) && std::isnan(b)))
      return false;
  }
  return true;
}

void writeAndReadBack(const SacSeismogram& trace, const SacWriteOptions& options) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  const Status status = writeSac(trace, buffer, QStringLiteral("out"), options);
  require(bool(status), "a trace that was read can be written", status.error());
  const auto back = parseSac(buffer.data(), QStringLiteral("back"));
  require(bool(back), "a trace that was written can be read", back.error());
  require(sameSamples(trace, **back), "the samples come back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto result =
      parseSac(QByteArrayView(reinterpret_cast<const char*>(data), qsizetype(size)), QStringLiteral("in"));
  if (!result) {
    require(result.error().startsWith(QStringLiteral("in: ")), "an error names the file", result.error());
    require(!result.error().contains(QLatin1Char('\n')), "an error is one line", result.error());
    return 0;
  }
  sendAllMessages(**result);
  using Form = SacWriteOptions::Form;
  for (const Form form : {Form::BinaryVersion6, Form::BinaryVersion7, Form::Alphanumeric}) {
    writeAndReadBack(**result, {form, QSysInfo::LittleEndian});
    writeAndReadBack(**result, {form, QSysInfo::BigEndian});
  }
  return 0;
}
