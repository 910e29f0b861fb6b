#include "XOV_Graphics/seismic/io/sac/SacWriter.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/seismic/io/sac/SacAlphanumeric.h"
#include "XOV_Graphics/seismic/io/sac/SacBinary.h"
#include "XOV_Graphics/seismic/io/sac/SacChecks.h"

#include <cmath>

namespace xov {

namespace {

using Form = SacWriteOptions::Form;

/// Sets the extremes and the mean of the finite samples; leaves them unset when there are none.
void describeSamples(std::span<const float> samples, SacHeader& header) {
  double sum = 0;
  std::size_t count = 0;
  for (const float sample : samples) {
    if (!std::isfinite(sample)) continue;
    sum += double(sample);
    ++count;
  }
  const Extrema extrema = finiteExtrema(samples);
  header.depmin = count > 0 ? extrema.min : kUndefinedValue;
  header.depmax = count > 0 ? extrema.max : kUndefinedValue;
  header.depmen = count > 0 ? float(sum / double(count)) : kUndefinedValue;
}

SacHeader headerToWrite(const SacSeismogram& trace, Form form) {
  SacHeader header = *trace.GetSacHeader();
  header.nvhdr = form == Form::BinaryVersion7 ? kSacVersion7 : kSacVersion6;
  header.iftype = kSacTimeSeries;
  header.leven = 1;
  describeSamples(trace.samples().first(std::size_t(trace.npts())), header);
  return header;
}

Status writeDevice(const SacSeismogram& trace, QIODevice& device, const QString& name,
                   const SacWriteOptions& options) {
  const SacHeader header = headerToWrite(trace, options.form);
  if (Status status = checkSacTimes(header.delta, "delta", header.b, "b", name); !status) return status;
  const std::span<const float> samples = trace.samples().first(std::size_t(trace.npts()));
  if (options.form == Form::Alphanumeric) return writeSacAlphanumeric(device, header, samples, name);
  return writeSacBinary(device, header, samples, trace.preciseValues(), options.byteOrder, name);
}

} // namespace

Status writeSac(const SacSeismogram& trace, const QString& path, const SacWriteOptions& options) noexcept {
  return guarded(path, [&]() -> Status {
    Status contents;
    QString fault;
    const auto write = [&](QIODevice& device) {
      contents = writeDevice(trace, device, path, options);
      return bool(contents);
    };
    if (writeFileAtomically(path, write, &fault)) return {};
    return contents ? Status(Error{fault}) : contents;
  });
}

Status writeSac(const SacSeismogram& trace, QIODevice& device, const QString& name,
                const SacWriteOptions& options) noexcept {
  return guarded(name, [&] { return writeDevice(trace, device, name, options); });
}

} // namespace xov
