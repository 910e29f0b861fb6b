#include "XOV_Graphics/seismic/io/mseed/MiniSeedNotes.h"

#include "XOV_Graphics/base/InputFile.h"

namespace xov {

namespace {

constexpr qsizetype kMostNamedChannels = 8; // in a note
constexpr qsizetype kLongestName = 40;      // there; identifiers of miniSEED 3 may be longer

QString placeText(const LossTally& losses) {
  const QString place = "the first at byte " + QString::number(losses.firstOffset);
  return losses.firstProblem.isEmpty() ? place : place + ": " + losses.firstProblem;
}

QString counted(qint64 count, const char* singular, const char* plural) {
  return QString::number(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? singular : plural);
}

QStringList lossNotes(const MiniSeedIndex& index, const QString& name) {
  QStringList notes;
  if (const LossTally& damaged = index.damagedRecords; damaged.count > 0)
    notes.append(name + ": " + QString::number(damaged.count) + " of " +
                 counted(index.recordCount, "record", "records") + " left out, " + placeText(damaged));
  if (const LossTally& doubtful = index.doubtfulRecords; doubtful.count > 0)
    notes.append(name + ": " + QString::number(doubtful.count) + " of " +
                 counted(index.recordCount, "record", "records") + " kept that may be damaged, " +
                 placeText(doubtful));
  if (const LossTally& stray = index.strayBytes; stray.count > 0)
    notes.append(name + ": " + counted(stray.count, "byte", "bytes") + " between records left out, " +
                 placeText(stray));
  if (index.repeatedCount > 0)
    notes.append(name + ": " + counted(index.repeatedCount, "record", "records") +
                 " left out that the file holds twice");
  return notes;
}

QString selectionNote(const MiniSeedIndex& index, const QString& name) {
  QStringList names;
  for (const ChannelCodes& codes : index.passedOver) {
    if (names.size() == kMostNamedChannels) {
      names.append(QStringLiteral("..."));
      break;
    }
    names.append(channelName(codes).left(kLongestName));
  }
  return name + ": no channel is selected of " + names.join(QStringLiteral(", "));
}

} // namespace

QStringList miniSeedNotes(const MiniSeedIndex& index, bool isEmpty, const QString& name) {
  QStringList notes = lossNotes(index, name);
  if (isEmpty) notes.append(selectionNote(index, name));
  return notes;
}

bool isPassedOver(const MiniSeedIndex& index) { return index.channels.empty() && !index.passedOver.empty(); }

Status indexStatus(const MiniSeedIndex& index, const QIODevice& device, const QString& name) {
  if (Status status = readingStatus(device, name); !status) return status;
  if (!index.isReadable) return Error{name + ": the file has become shorter while it was read"};
  return {};
}

Error nothingRead(const MiniSeedIndex& index, const QString& name) {
  if (index.recordCount == 0) return Error{name + ": found no record of miniSEED"};
  const QString count = counted(index.recordCount, "record", "records");
  if (index.damagedRecords.count == 0) return Error{name + ": found no samples in " + count};
  return Error{name + ": found nothing to read in " + count + "; damaged " +
               QString::number(index.damagedRecords.count) + ", " + placeText(index.damagedRecords)};
}

} // namespace xov
