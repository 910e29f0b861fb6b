#include "apps/xov/inputs/RecordCache.h"

#include "apps/xov/terminal/Listener.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFileInfo>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <algorithm>

namespace xov::cli {

namespace {

// Keeps what is said, and passes it on.
class Overhearing : public Listener {
public:
  explicit Overhearing(Listener* heard) : heard_(heard) {}

  void said(const QString& text) override {
    texts_.append(text);
    const ListenerScope listening(heard_);
    complain(text);
  }
  void advanced(const QString& what, std::int64_t done, std::int64_t total) override {
    if (heard_ != nullptr) heard_->advanced(what, done, total);
  }
  const QStringList& texts() const { return texts_; }

private:
  Listener* heard_;
  QStringList texts_;
};

// Of all records; nothing where one of them is not held as a whole.
std::optional<std::size_t> bytesOf(const SeismogramArray& records) {
  std::size_t bytes = 0;
  for (const auto& record : records) {
    const auto* const trace = dynamic_cast<const SacSeismogram*>(record.get());
    if (trace == nullptr || trace->borrowedSamples().source != nullptr) return {};
    bytes += std::size_t(trace->npts()) * sizeof(float);
  }
  return bytes;
}

} // namespace

std::optional<RecordCache::Entry> RecordCache::find(const QByteArray& origin) {
  const QMutexLocker lock(&mutex_);
  const auto kept = std::ranges::find(kept_, origin, &Kept::origin);
  if (kept == kept_.end()) return {};
  kept_.splice(kept_.begin(), kept_, kept);
  return kept->entry;
}

void RecordCache::keep(const QByteArray& origin, const Entry& entry) {
  const std::optional<std::size_t> bytes = bytesOf(entry.records.records);
  if (!bytes || *bytes > most_) return;
  std::list<Kept> gone; // is let go without holding up others
  const QMutexLocker lock(&mutex_);
  if (std::ranges::find(kept_, origin, &Kept::origin) != kept_.end()) return;
  kept_.push_front({origin, entry, *bytes});
  bytes_ += *bytes;
  while (bytes_ > most_) {
    bytes_ -= kept_.back().bytes;
    gone.splice(gone.begin(), kept_, std::prev(kept_.end()));
  }
}

std::size_t RecordCache::bytes() const {
  const QMutexLocker lock(&mutex_);
  return bytes_;
}

QByteArray originOf(const QStringList& texts) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  for (const QString& text : texts) {
    hash.addData(QByteArray::number(text.size()) + ' ');
    hash.addData(text.toUtf8());
  }
  return hash.result();
}

QString fileStamp(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile()) return {};
  return QStringLiteral("%1 %2 %3")
      .arg(file.size())
      .arg(file.lastModified().toMSecsSinceEpoch())
      .arg(file.absoluteFilePath());
}

Records cachedRecords(const QByteArray& origin, const std::function<Records()>& make) {
  RecordCache* const cache = currentRecordCache();
  if (cache == nullptr || origin.isEmpty()) return make();
  if (const auto found = cache->find(origin)) {
    for (const QString& text : found->said)
      complain(text);
    return found->records;
  }
  Overhearing overhearing(currentListener());
  RecordCache::Entry made;
  {
    const ListenerScope listening(&overhearing);
    made.records = make();
  }
  made.records.origin = origin;
  made.said = overhearing.texts();
  if (made.records.status == ExitCode::Ok) cache->keep(origin, made);
  return made.records;
}

} // namespace xov::cli
