// Whatever a text is, numbers, times, fields and addresses are read from it or not, and what was read is read again
// from what it is written as.

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/Headings.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/realtime/eventservice/EventServiceQuery.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkAddress.h"
#include "apps/xov/output/FileTemplate.h"
#include "apps/xov/output/PlotSize.h"
#include "apps/xov/prepare/PreparationStep.h"
#include "tests/fuzz/Claims.h"

#include <QSizeF>
#include <QUrl>

#include <cmath>
#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void requireLine(const QString& error) {
  require(!error.isEmpty() && !error.contains(QLatin1Char('\n')), "an error is one line", error);
}

template <typename Number>
void readNumbers(QByteArrayView text) {
  for (const OutOfRange outOfRange : {OutOfRange::Refused, OutOfRange::Nearest}) {
    QByteArrayView rest = text;
    const std::optional<Number> taken = takeNumber<Number>(rest, outOfRange);
    require(taken ? rest.size() < text.size() : rest.size() == text.size(), "a number is taken off, or nothing");
    const std::optional<Number> whole = toNumber<Number>(text, outOfRange);
    require(!whole || (taken && rest.isEmpty()), "a text that is a number is taken whole");
  }
}

void writeNumber(QByteArrayView text) {
  const auto number = toNumber<double>(text, OutOfRange::Nearest);
  if (!number) return;
  const float value = toSinglePrecision(*number);
  for (const Sign sign : {Sign::WhenNegative, Sign::BlankWhenPositive, Sign::Always}) {
    require(fixedText(value, 12, int(text.size() % 10), sign).size() >= 12, "a number is as wide as it shall be");
    require(!exponentText(value, int(text.size() % 10), sign).empty(), "a number has a text");
  }
  if (!std::isfinite(*number)) return;
  const auto near = toNumber<double>(numberText(*number).toLatin1());
  require(near && std::abs(*near - *number) <= std::abs(*number) * 1e-8, "nine digits are near");
}

void readTime(const QString& text) {
  if (const auto time = parseUtcTime(text)) {
    const auto again = parseUtcTime(utcText(*time));
    require(again && *again == *time, "a time is read back as it is written", text);
  }
  if (const auto time = parseUtcNanoseconds(text)) {
    const auto again = parseUtcNanoseconds(utcText(*time));
    require(again && *again == *time, "a moment is read back as it is written", text);
  }
}

void readFields(QByteArrayView text) {
  TextLines lines(text);
  while (const std::optional<QByteArrayView> line = lines.next()) {
    for (const char separator : {',', '|', '\t', kBlankSeparator}) {
      for (const QByteArrayView field : fieldsOf(*line, separator)) {
        require(fieldText(field).size() <= field.size() && headingKey(field).size() <= field.size(),
                "a field's text is no longer than the field");
      }
    }
  }
}

void readAddresses(const QString& text) {
  if (const auto address = parseSeedLinkAddress(text)) {
    require(!address->host.isEmpty() && address->port > 0, "an address has a host and a port", text);
  } else {
    requireLine(address.error());
  }
  if (const auto address = parseEventServiceAddress(text)) {
    require(address->isValid() && !address->host().isEmpty(), "an address has a host", text);
  } else {
    requireLine(address.error());
  }
  if (const auto patterns = ChannelPatterns::parse({text})) {
    (void)patterns->select({QStringLiteral("GE"), QStringLiteral("WLF"), {}, QStringLiteral("BHZ")});
  } else {
    requireLine(patterns.error());
  }
}

void readWords(const QString& text) {
  using Parser = Result<cli::PreparationStep> (*)(const QString&);
  constexpr Parser kParsers[] = {
      cli::parseStart,         cli::parseEnd,      cli::parseAround,         cli::parseFilter,
      cli::parseDetrend,       cli::parseTaper,    cli::parseNormalize,      cli::parseIntegrate,
      cli::parseDifferentiate, cli::parseDecimate, cli::parseRemoveResponse, cli::parseRotate};
  for (const Parser parse : kParsers) {
    if (const auto step = parse(text); !step) requireLine(step.error());
  }
  if (const auto length = cli::parsedLength(text)) require(std::isfinite(length->points), "a length is finite");
  if (const auto size = cli::parsedSize(text, text)) {
    require(size->width() >= cli::kSmallestSide && size->width() <= cli::kLargestSide, "a size is in range", text);
  } else {
    requireLine(size.error());
  }
  const QString name = QStringLiteral("station");
  if (const auto names = cli::FileTemplate::parse(text, {name})) {
    const QString filled = names->filledWith({{name, QStringLiteral("/a/../b")}});
    require(filled.count(QLatin1Char('/')) <= text.count(QLatin1Char('/')), "a field brings no folder along", text);
  } else {
    requireLine(names.error());
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  readNumbers<float>(bytes);
  readNumbers<double>(bytes);
  readNumbers<std::int32_t>(bytes);
  writeNumber(bytes);
  readFields(bytes);
  const QString text = QString::fromUtf8(bytes);
  constexpr qsizetype kLongestWord = 200;
  if (text.size() > kLongestWord || text.contains(QLatin1Char('\n'))) return 0;
  readTime(text);
  readAddresses(text);
  readWords(text);
  return 0;
}
