#pragma once

#include <QByteArray>

#include <cstdint>
#include <map>
#include <vector>

class QIODevice;

namespace xov {

/// Puts documents of one page each, as pdfPage() makes them, into one document, page behind page. What has been
/// written is not kept, but for the place of each object. A page keeps its own fonts: a few kilobytes, as they hold
/// only the letters that it shows.
class PdfPages {
public:
  enum class Outcome : std::uint8_t {
    Written,
    NoPage, ///< the document is none of one page, or built in a way that this class does not know
    Failed, ///< the device does not take it
  };

  /// Writes to a device that is open, and stays so.
  explicit PdfPages(QIODevice& device) : device_(device) {}

  Outcome add(const QByteArray& document);

  /// Writes the list of pages and the table of objects. False when the device does not take it.
  bool finish();

private:
  struct Roots;
  bool beginObject(qsizetype number);
  bool write(QByteArrayView bytes);
  bool writeObject(QByteArrayView object, qsizetype number);
  qsizetype numberOf(qsizetype object);

  QIODevice& device_;
  qsizetype written_ = 0;                  ///< bytes
  std::vector<qsizetype> places_;          ///< of the objects of the whole, from 1 on
  std::vector<qsizetype> pages_;           ///< their objects
  std::map<qsizetype, qsizetype> numbers_; ///< in the whole, of the objects of the document at hand
};

} // namespace xov
