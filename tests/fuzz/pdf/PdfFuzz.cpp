// Whatever the bytes are, what is not a document as Qt writes it is refused, and of one that is taken for such a
// document every part lies inside. The first byte chooses between a content to be put into a page and a whole file.

#include "XOV_Graphics/platform/surface/PdfFile.h"
#include "XOV_Graphics/platform/surface/PdfIdentity.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "XOV_Graphics/platform/surface/PdfPages.h"
#include "tests/fuzz/Application.h"
#include "tests/fuzz/Claims.h"

#include <QBuffer>

#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void takeApart(const QByteArray& document) {
  (void)withFixedIdentity(document); // what is no document of Qt's may have one identity inside another
  QBuffer device;
  device.open(QIODevice::WriteOnly);
  PdfPages pages(device);
  const PdfPages::Outcome outcome = pages.add(document);
  require(outcome != PdfPages::Outcome::Failed, "memory takes a page");
  if (outcome == PdfPages::Outcome::Written) require(pages.finish(), "memory takes the end");
  if (const auto file = PdfFile::parse(document)) (void)file->withContent("0 0 m\n");
}

const QByteArray& smallPage() {
  static const QByteArray page = pdfPage(QRectF(0, 0, 10, 10), [](GraphicsContext&) {});
  return page;
}

void putIn(const QByteArray& content) {
  if (content.isEmpty()) return; // a page without operators is not looked into again
  const auto page = PdfFile::parse(smallPage());
  require(page.has_value(), "a page is known");
  const auto again = PdfFile::parse(page->withContent(content));
  require(again && again->content() == content, "a content is read back as it is written");
  (void)withFixedIdentity(page->withContent(content));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::beginApplication();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, qsizetype(size) - 1);
  if (data[0] == 0)
    putIn(bytes);
  else
    takeApart(bytes);
  return 0;
}
