#include "XOV_Graphics/platform/surface/PdfCheck.h"

#include "XOV_Graphics/platform/surface/Inflate.h"
#include "XOV_Graphics/platform/surface/PdfTable.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace xov {

namespace {

const QByteArray kStream = QByteArrayLiteral("\nstream\n");

std::optional<qsizetype> numberBehind(QByteArrayView dictionary, const char* key) {
  return numberAfter(dictionary, key, dictionary.indexOf(key));
}

/// How long a stream is to be when it is unpacked, where its dictionary tells: of fonts and of pictures.
std::optional<qsizetype> lengthToBe(QByteArrayView dictionary) {
  if (const auto length = numberBehind(dictionary, "/Length1 ")) return length;
  const auto width = numberBehind(dictionary, "/Width ");
  const auto height = numberBehind(dictionary, "/Height ");
  const auto bits = numberBehind(dictionary, "/BitsPerComponent ");
  const bool isRgb = dictionary.contains("/ColorSpace /DeviceRGB");
  if (!width || !height || !bits || !(isRgb || dictionary.contains("/ColorSpace /DeviceGray"))) return {};
  constexpr qsizetype kBitsAByte = 8;
  return (*width * *bits * (isRgb ? 3 : 1) + kBitsAByte - 1) / kBitsAByte * *height;
}

/// Goes through the objects of a file.
class Check {
public:
  explicit Check(const QByteArray& file) : file_(file), table_(PdfTable::parse(file)) {}

  QString fault() {
    if (!table_) return QStringLiteral("there is no table of its objects");
    if (!QByteArrayView(file_).trimmed().endsWith("%%EOF")) return QStringLiteral("it has no end");
    std::vector<qsizetype> ends;
    for (qsizetype number = 1; const auto place = table_->placeOf(number); ++number)
      ends.push_back(*place);
    ends.push_back(table_->begin());
    std::sort(ends.begin(), ends.end());
    for (qsizetype number = 1; const auto place = table_->placeOf(number); ++number) {
      if (*place == 0) continue; // of a number that is not in use
      const qsizetype end = *std::upper_bound(ends.begin(), ends.end() - 1, *place);
      if (!isSound(number, QByteArrayView(file_).sliced(*place, end - *place)))
        return QStringLiteral("object %1 is not whole").arg(number);
    }
    if (pages_ != 1 || !file_.contains("\n/Count 1\n")) return QStringLiteral("it has not one page");
    // A page ends with the state that it began with.
    const bool isRestored = std::find(restored_.begin(), restored_.end(), content_) != restored_.end();
    return isRestored ? QString() : QStringLiteral("its page is not whole");
  }

private:
  bool isSound(qsizetype number, QByteArrayView object) {
    if (!object.startsWith(QByteArray::number(number) + " 0 obj") || !object.trimmed().endsWith("endobj"))
      return false;
    const qsizetype stream = object.indexOf(kStream);
    if (stream >= 0) return isSoundStream(number, object.first(stream + 1), object.sliced(stream + kStream.size()));
    if (!object.contains("\n/Type /Page\n")) return true;
    ++pages_;
    const auto content = numberBehind(object, "/Contents ");
    content_ = content.value_or(0);
    return content.has_value();
  }

  // The number itself, or the object that is it.
  std::optional<qsizetype> lengthOf(QByteArrayView dictionary) const {
    ByteRange digits;
    const auto said = numberAfter(dictionary, "/Length ", dictionary.indexOf("/Length "), &digits);
    if (!said || !dictionary.sliced(digits.end).startsWith(" 0 R")) return said;
    const auto place = table_->placeOf(*said);
    return place ? numberAfter(file_, QByteArray::number(*said) + " 0 obj\n", *place) : std::nullopt;
  }

  bool isSoundStream(qsizetype number, QByteArrayView dictionary, QByteArrayView rest) {
    const auto length = lengthOf(dictionary);
    if (!length || *length > rest.size() || !rest.sliced(*length).trimmed().startsWith("endstream")) return false;
    const QByteArrayView stream = rest.first(*length);
    if (dictionary.contains("/DCTDecode")) return stream.startsWith("\xff\xd8") && stream.endsWith("\xff\xd9");
    if (!dictionary.contains("/FlateDecode")) return true;
    const auto unpacked = unpackedZlib(stream);
    if (unpacked && QByteArrayView(*unpacked).trimmed().endsWith('Q')) restored_.push_back(number);
    return unpacked && unpacked->size() == lengthToBe(dictionary).value_or(unpacked->size());
  }

  const QByteArray& file_;
  std::optional<PdfTable> table_;
  int pages_ = 0;
  qsizetype content_ = 0;           // of the page
  std::vector<qsizetype> restored_; // streams that end by restoring a state
};

} // namespace

QString pdfFault(const QByteArray& file) { return Check(file).fault(); }

} // namespace xov
