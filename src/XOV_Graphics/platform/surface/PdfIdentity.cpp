#include "XOV_Graphics/platform/surface/PdfIdentity.h"

#include "XOV_Graphics/platform/surface/PdfTable.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace xov {

namespace {

/// A value between `before` and the first of the characters `ends`.
struct FixedValue {
  const char* before;
  const char* ends;
  const char* value;
};

constexpr char kDate[] = "2000-01-01T00:00:00Z";
constexpr char kUuid[] = "uuid:00000000-0000-0000-0000-000000000000";

// Metadata give values as elements or as attributes.
constexpr FixedValue kFixed[] = {
    {"/CreationDate (D:", ")", "20000101000000Z"},
    {"/ModDate (D:", ")", "20000101000000Z"},
    {"<xmp:CreateDate>", "<", kDate},
    {"xmp:CreateDate=\"", "\"", kDate},
    {"<xmp:ModifyDate>", "<", kDate},
    {"xmp:ModifyDate=\"", "\"", kDate},
    {"<xmp:MetadataDate>", "<", kDate},
    {"xmp:MetadataDate=\"", "\"", kDate},
    {"<xmpMM:DocumentID>", "<", kUuid},
    {"xmpMM:DocumentID=\"", "\"", kUuid},
    {"<xmpMM:InstanceID>", "<", kUuid},
    {"xmpMM:InstanceID=\"", "\"", kUuid},
};

constexpr qsizetype kLongestValue = 200;

void addValues(const QByteArray& pdf, const FixedValue& fixed, std::vector<PdfChange>& changes) {
  const QByteArray before(fixed.before);
  for (qsizetype at = pdf.indexOf(before); at >= 0; at = pdf.indexOf(before, at)) {
    at += before.size();
    qsizetype end = at;
    while (end < pdf.size() && end - at < kLongestValue && !QByteArrayView(fixed.ends).contains(pdf[end]))
      ++end;
    if (end < pdf.size() && end - at < kLongestValue) changes.push_back({{at, end}, fixed.value});
  }
}

// The two hexadecimal strings behind /ID near the end of the file.
void addIdentifiers(const QByteArray& pdf, std::vector<PdfChange>& changes) {
  qsizetype at = pdf.lastIndexOf("/ID");
  if (at < 0) return;
  const qsizetype end = pdf.indexOf(']', at);
  if (end - at > kLongestValue) return;
  for (; at < end; ++at) {
    if (pdf[at] != '<') continue;
    qsizetype behind = at + 1;
    while (behind < end && std::isxdigit(uchar(pdf[behind])) != 0)
      ++behind;
    changes.push_back({{at + 1, behind}, QByteArray(behind - at - 1, '0')});
    at = behind;
  }
}

/// Where the length of the stream that holds a byte is written; nothing outside of streams.
std::optional<ByteRange> lengthOfStreamAt(const QByteArray& pdf, const PdfTable& table, qsizetype at) {
  const qsizetype stream = pdf.lastIndexOf("\nstream\n", at);
  if (stream < 0 || pdf.lastIndexOf("endstream", at) > stream) return std::nullopt;
  ByteRange digits;
  const auto length = numberAfter(pdf, "/Length ", pdf.lastIndexOf("/Length ", stream), &digits);
  if (!length) return std::nullopt;
  if (!QByteArrayView(pdf).sliced(digits.end).startsWith(" 0 R")) return digits;
  const auto place = table.placeOf(*length);
  if (!place || !numberAfter(pdf, QByteArray::number(*length) + " 0 obj\n", *place, &digits)) return std::nullopt;
  return digits;
}

// Streams that changes make longer or shorter say so.
void addLengths(const QByteArray& pdf, const PdfTable& table, std::vector<PdfChange>& changes) {
  std::map<qsizetype, std::pair<ByteRange, qsizetype>> lengths; // by their place, with how much they grow
  for (const PdfChange& change : changes) {
    const auto length = lengthOfStreamAt(pdf, table, change.place.begin);
    if (!length) continue;
    lengths.try_emplace(length->begin, *length, 0).first->second.second += change.bytes.size() - change.place.size();
  }
  for (const auto& [begin, length] : lengths) {
    const auto& [digits, growth] = length;
    if (growth == 0) continue;
    changes.push_back({digits, QByteArray::number(pdf.sliced(begin, digits.size()).toLongLong() + growth)});
  }
}

} // namespace

QByteArray withFixedIdentity(const QByteArray& pdf) {
  std::vector<PdfChange> changes;
  for (const FixedValue& fixed : kFixed)
    addValues(pdf, fixed, changes);
  QByteArray result = pdf;
  if (const auto table = PdfTable::parse(pdf)) {
    std::erase_if(changes, [&](const PdfChange& change) { return change.place.end > table->begin(); });
    addLengths(pdf, *table, changes);
    result = table->withChanges(pdf, changes);
    changes.clear();
  }
  addIdentifiers(result, changes);
  for (const PdfChange& change : changes) {
    if (change.place.size() == change.bytes.size())
      std::copy(change.bytes.begin(), change.bytes.end(), result.begin() + change.place.begin);
  }
  return result;
}

} // namespace xov
