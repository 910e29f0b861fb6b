#include "apps/xov/inputs/RecordCache.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/prepare/RecordWindow.h"
#include "apps/xov/terminal/Listener.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <limits>

namespace xov::cli {
namespace {

constexpr std::size_t kBytesOfSample = sizeof(float);

std::shared_ptr<SacSeismogram> traceOf(int samples) {
  SacHeader header;
  header.delta = 1;
  header.b = 0;
  return std::make_shared<SacSeismogram>(header, std::vector<float>(std::size_t(samples), 1.F));
}

RecordCache::Entry entryOf(int samples) { return {{{traceOf(samples)}, {QStringLiteral("a")}}, {}}; }

class Hearing : public Listener {
public:
  void said(const QString& text) override { texts.append(text); }
  void advanced(const QString&, std::int64_t, std::int64_t) override {}
  QStringList texts;
};

TEST(RecordCache, letsGoWhatWasUsedLongestAgo) {
  RecordCache cache(100 * kBytesOfSample);
  cache.keep("a", entryOf(40));
  cache.keep("b", entryOf(40));
  EXPECT_EQ(cache.bytes(), 80 * kBytesOfSample);
  EXPECT_TRUE(cache.find("a")) << "which makes b the one used longest ago";
  cache.keep("c", entryOf(40));
  EXPECT_EQ(cache.bytes(), 80 * kBytesOfSample);
  EXPECT_TRUE(cache.find("a"));
  EXPECT_FALSE(cache.find("b"));
  EXPECT_TRUE(cache.find("c"));
}

TEST(RecordCache, keepsNothingLargerThanItself) {
  RecordCache cache(100 * kBytesOfSample);
  cache.keep("a", entryOf(40));
  cache.keep("b", entryOf(101));
  EXPECT_FALSE(cache.find("b"));
  EXPECT_TRUE(cache.find("a")) << "which need not go for it";
}

TEST(RecordCache, keepsNoWindows) {
  RecordCache cache(1000000);
  const auto window = windowOf(traceOf(40), 0, std::numeric_limits<double>::infinity());
  ASSERT_TRUE(window);
  cache.keep("a", {{{*window}, {QString()}}, {}});
  EXPECT_FALSE(cache.find("a"));
}

TEST(RecordCache, makesOnceAndSaysAgainWhatThereWasToSay) {
  RecordCache cache(1000000);
  Hearing hearing;
  const RecordCacheScope caching(&cache);
  const ListenerScope listening(&hearing);
  int made = 0;
  const auto make = [&] {
    ++made;
    complain(QStringLiteral("a: damaged"));
    return entryOf(40).records;
  };
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ(cachedRecords("a", make).records.size(), 1U);
  EXPECT_EQ(made, 1);
  EXPECT_EQ(hearing.texts, (QStringList{"a: damaged", "a: damaged"}));
  cachedRecords({}, make);
  EXPECT_EQ(made, 2) << "what has no name cannot be known";
}

TEST(RecordCache, keepsNothingOfWhatFailed) {
  RecordCache cache(1000000);
  const RecordCacheScope caching(&cache);
  int made = 0;
  const auto make = [&made] {
    ++made;
    Records records = entryOf(40).records;
    records.status = ExitCode::Failed;
    return records;
  };
  cachedRecords("a", make);
  cachedRecords("a", make);
  EXPECT_EQ(made, 2);
}

TEST(RecordCache, tellsFilesApartByTheirTimes) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("a");
  EXPECT_EQ(fileStamp(path), "") << "there is none";
  EXPECT_EQ(fileStamp(folder.path()), "") << "no file";
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("x");
  file.flush();
  const QString before = fileStamp(path);
  EXPECT_FALSE(before.isEmpty());
  ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2020, 1, 1), QTime(0, 0)), QFileDevice::FileModificationTime));
  EXPECT_NE(fileStamp(path), before);
  EXPECT_NE(originOf({"a", "b"}), originOf({"ab"}));
  EXPECT_NE(originOf({"a", ""}), originOf({"", "a"}));
}

} // namespace
} // namespace xov::cli
