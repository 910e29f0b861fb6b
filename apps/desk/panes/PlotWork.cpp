#include "apps/desk/panes/PlotWork.h"

#include "apps/xov/inputs/RecordCache.h"
#include "apps/xov/terminal/LittleMemory.h"

#include <XOV_Graphics/base/FileName.h>
#include <exception>
#include <utility>

namespace xov::desk {

namespace {

constexpr std::size_t kCacheBytes = std::size_t(512) << 20;

// Of all panes.
cli::RecordCache& recordCache() {
  static cli::RecordCache cache(kCacheBytes);
  return cache;
}

// Thrown through a command that nobody waits for any more.
struct Released {};

} // namespace

PlotWork::PlotWork(CommandRunner run, const QStringList& words) : run_(std::move(run)) {
  for (const QString& word : words)
    words_.push_back(fileNameBytes(word).toStdString());
}

void PlotWork::run() {
  cli::prepareForLittleMemory(); // the work before may have had it
  const cli::ListenerScope listening(this);
  const cli::PlotReceiverScope receiving(this);
  const cli::RecordCacheScope caching(&recordCache());
  try {
    run_(words_);
  } catch (const Released&) {
    return;
  } catch (const std::bad_alloc&) {
    Q_EMIT heard(PlotMaker::tr("not enough memory"));
  } catch (const std::exception& exception) {
    Q_EMIT heard(QString::fromUtf8(exception.what()));
  }
  if (!isReleased_) Q_EMIT ended();
}

void PlotWork::take(const cli::OfferedPlots& plots) {
  if (isReleased_) return;
  offered_ = &plots;
  Q_EMIT offered();
  released_.acquire();
  offered_ = nullptr;
}

void PlotWork::release() {
  isReleased_ = true;
  released_.release();
}

std::size_t PlotWork::pages() const {
  const cli::OfferedPlots* const plots = offered_;
  return plots != nullptr ? plots->pages : 0;
}

std::unique_ptr<XOVView> PlotWork::make(std::size_t page, const QSize& size) {
  const cli::OfferedPlots* const plots = offered_;
  if (plots == nullptr || page >= plots->pages) return nullptr;
  const cli::ListenerScope listening(this);
  try {
    return plots->make(page, size);
  } catch (const std::exception& exception) {
    Q_EMIT heard(QString::fromUtf8(exception.what()));
    return nullptr;
  }
}

void PlotWork::said(const QString& text) { Q_EMIT heard(text); }

void PlotWork::advanced(const QString& what, std::int64_t done, std::int64_t total) {
  if (isReleased_) throw Released();
  Q_EMIT advancedTo(what, done, total);
}

} // namespace xov::desk
