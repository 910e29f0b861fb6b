#include "XOV_Graphics/platform/surface/PdfPages.h"

#include "XOV_Graphics/platform/surface/PdfTable.h"

#include <QIODevice>

#include <algorithm>
#include <optional>

namespace xov {

namespace {

// Objects of the whole: the information, the catalogue and the list of pages, then those of the pages.
constexpr qsizetype kInformation = 1;
constexpr qsizetype kCatalogue = 2;
constexpr qsizetype kPageList = 3;

constexpr char kReference[] = " 0 R";
constexpr qsizetype kPlaceDigits = 10; // in the table

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Which object stands behind a key.
std::optional<qsizetype> objectAt(QByteArrayView bytes, const char* key) {
  const QByteArray words = QByteArray(key) + ' ';
  return numberAfter(bytes, words, bytes.indexOf(words));
}

/// An object as it stands in a file.
struct PlacedObject {
  qsizetype number = 0;
  qsizetype place = 0;
};

/// In the order of their places, which are all behind the file's header.
std::vector<PlacedObject> objectsOf(const PdfTable& table) {
  std::vector<PlacedObject> objects;
  for (qsizetype number = 1; const auto place = table.placeOf(number); ++number) {
    if (*place > 0) objects.push_back({number, *place});
  }
  std::sort(objects.begin(), objects.end(),
            [](const PlacedObject& a, const PlacedObject& b) { return a.place < b.place; });
  return objects;
}

} // namespace

/// The objects of a document that the whole has once.
struct PdfPages::Roots {
  qsizetype information = 0;
  qsizetype catalogue = 0;
  qsizetype pageList = 0;
  qsizetype page = 0;

  static std::optional<Roots> of(QByteArrayView file, const PdfTable& table) {
    const QByteArrayView trailer = file.sliced(table.begin());
    Roots roots;
    roots.information = objectAt(trailer, "/Info").value_or(0);
    roots.catalogue = objectAt(trailer, "/Root").value_or(0);
    const auto catalogue = table.placeOf(roots.catalogue);
    if (!catalogue || !table.placeOf(roots.information)) return std::nullopt;
    roots.pageList = objectAt(file.sliced(*catalogue), "/Pages").value_or(0);
    const auto list = table.placeOf(roots.pageList);
    if (!list) return std::nullopt;
    const QByteArrayView pages = file.sliced(*list, std::max<qsizetype>(file.indexOf("endobj", *list) - *list, 0));
    const qsizetype kids = pages.indexOf("/Kids");
    if (kids < 0 || objectAt(pages, "/Count") != 1) return std::nullopt;
    qsizetype digits = pages.indexOf('[', kids) + 1;
    while (digits < pages.size() && !isDigit(pages[digits]))
      ++digits;
    roots.page = numberAfter(pages, {}, digits).value_or(0);
    return table.placeOf(roots.page) ? std::optional(roots) : std::nullopt;
  }
};

bool PdfPages::write(QByteArrayView bytes) {
  written_ += bytes.size();
  return device_.write(bytes.data(), bytes.size()) == bytes.size();
}

bool PdfPages::beginObject(qsizetype number) {
  places_.resize(std::max(places_.size(), std::size_t(number)));
  places_[std::size_t(number) - 1] = written_;
  return write(QByteArray::number(number) + " 0 obj\n");
}

qsizetype PdfPages::numberOf(qsizetype object) {
  const auto [known, isNew] = numbers_.try_emplace(object, qsizetype(places_.size()) + 1);
  if (isNew) places_.push_back(0);
  return known->second;
}

// With other numbers in its references. A stream has none, and is written as it is.
bool PdfPages::writeObject(QByteArrayView object, qsizetype number) {
  const qsizetype stream = object.indexOf("\nstream\n");
  const QByteArrayView words = stream < 0 ? object : object.first(stream);
  const qsizetype header = words.indexOf("obj\n") + qsizetype(sizeof "obj");
  if (!beginObject(number)) return false;
  QByteArray renumbered;
  qsizetype done = header;
  for (qsizetype at = words.indexOf(kReference, header); at >= 0; at = words.indexOf(kReference, at + 1)) {
    qsizetype digits = at;
    while (digits > done && isDigit(words[digits - 1]))
      --digits;
    if (digits == at) continue;
    renumbered += words.sliced(done, digits - done);
    renumbered += QByteArray::number(numberOf(words.sliced(digits, at - digits).toLongLong()));
    done = at;
  }
  return write(renumbered) && write(object.sliced(done));
}

PdfPages::Outcome PdfPages::add(const QByteArray& document) {
  const std::optional<PdfTable> table = PdfTable::parse(document);
  const std::optional<Roots> roots = table ? Roots::of(document, *table) : std::nullopt;
  if (!roots) return Outcome::NoPage;
  const QByteArrayView file(document);
  const std::vector<PlacedObject> objects = objectsOf(*table);
  const bool isFirst = pages_.empty();
  if (isFirst) {
    places_.assign(kPageList, 0);
    if (!write(file.first(objects.front().place))) return Outcome::Failed;
  }
  numbers_ = {{roots->information, kInformation}, {roots->catalogue, kCatalogue}, {roots->pageList, kPageList}};
  pages_.push_back(numberOf(roots->page));
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const auto [number, place] = objects[i];
    const qsizetype end = i + 1 < objects.size() ? objects[i + 1].place : table->begin();
    const bool isShared = number == roots->information || number == roots->catalogue;
    if (number == roots->pageList || (isShared && !isFirst)) continue;
    if (!writeObject(file.sliced(place, end - place), numberOf(number))) return Outcome::Failed;
  }
  return Outcome::Written;
}

bool PdfPages::finish() {
  QByteArray list = "<<\n/Type /Pages\n/Kids [\n";
  for (const qsizetype page : pages_)
    list += QByteArray::number(page) + " 0 R\n";
  list += "]\n/Count " + QByteArray::number(qsizetype(pages_.size())) + "\n>>\nendobj\n";
  if (!beginObject(kPageList) || !write(list)) return false;
  const QByteArray begin = QByteArray::number(written_);
  const QByteArray size = QByteArray::number(qsizetype(places_.size()) + 1);
  QByteArray table = "xref\n0 " + size + "\n0000000000 65535 f \n";
  for (const qsizetype place : places_)
    table += QByteArray::number(place).rightJustified(kPlaceDigits, '0') + " 00000 n \n";
  table += "trailer\n<<\n/Size " + size + "\n/Info " + QByteArray::number(kInformation) + " 0 R\n/Root " +
           QByteArray::number(kCatalogue) + " 0 R\n>>\nstartxref\n" + begin + "\n%%EOF\n";
  return write(table);
}

} // namespace xov
