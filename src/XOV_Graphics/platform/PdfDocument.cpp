#include "XOV_Graphics/platform/PdfDocument.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/platform/surface/PdfPages.h"

namespace xov {

namespace {

QString whyNoPage(const View& view) {
  return view.exportError().isEmpty() ? QStringLiteral("the view is empty or cannot be drawn") : view.exportError();
}

// Each page in its turn. What is wrong with the pages goes into `problem`; the rest is the device's.
bool writePages(QIODevice& device, const PdfPageSource& pageAt, QString& problem) {
  PdfPages document(device);
  std::int64_t page = 0;
  for (View* view = pageAt(page); view != nullptr; view = pageAt(++page)) {
    const QByteArray drawn = view->dataWithPDFInsideRect(view->bounds());
    const PdfPages::Outcome outcome = drawn.isEmpty() ? PdfPages::Outcome::NoPage : document.add(drawn);
    if (outcome == PdfPages::Outcome::NoPage)
      problem = QStringLiteral("page %1: %2").arg(page + 1).arg(whyNoPage(*view));
    if (outcome != PdfPages::Outcome::Written) return false;
  }
  if (page == 0) problem = QStringLiteral("there is no page to write");
  return page > 0 && document.finish();
}

} // namespace

bool writePDFPages(const QString& path, const PdfPageSource& pageAt, QString* error) {
  const Status status = guarded(path, [&]() -> Status {
    QString problem;
    QString why;
    if (writeFileAtomically(
            path, [&](QIODevice& device) { return writePages(device, pageAt, problem); }, &why))
      return {};
    return Error{problem.isEmpty() ? why : QStringLiteral("%1: %2").arg(path, problem)};
  });
  return succeeded(status, error);
}

bool writePDFPages(const QString& path, std::span<View* const> views, QString* error) {
  return writePDFPages(
      path,
      [views](std::int64_t page) { return page < std::int64_t(views.size()) ? views[std::size_t(page)] : nullptr; },
      error);
}

} // namespace xov
