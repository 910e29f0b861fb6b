#include "apps/desk/settings/DeskSettings.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/WholeFile.h>
#include <algorithm>

namespace xov::desk {

namespace {

constexpr qint64 kLargestFile = 16 << 20;

constexpr char kGeometry[] = "geometry";
constexpr char kTools[] = "tools";
constexpr char kWorkspace[] = "workspace";
constexpr char kPanes[] = "panes";
constexpr char kNumber[] = "number";
constexpr char kPage[] = "page";
constexpr char kRequest[] = "request";
constexpr char kCurrent[] = "current";
constexpr char kRecent[] = "recent";
constexpr char kTheme[] = "theme";
constexpr char kDarkPlots[] = "darkPlots";
constexpr char kPicks[] = "picks";
constexpr char kPicking[] = "picking";
constexpr char kSampleMegabytes[] = "sampleMegabytes";

QByteArray sumOf(const QByteArray& bytes) {
  return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
}

// States of windows go to Qt, which takes them as they are: damaged ones may crash it. So a sum stands in front.
QString textOf(const QByteArray& bytes) { return QString::fromLatin1(sumOf(bytes) + ':' + bytes.toBase64()); }

// Empty where the sum is another one.
QByteArray bytesOf(const QJsonValue& value) {
  const QByteArray text = value.toString().toLatin1();
  const qsizetype colon = text.indexOf(':');
  const QByteArray bytes = QByteArray::fromBase64(text.mid(colon + 1));
  return text.left(std::max<qsizetype>(colon, 0)) == sumOf(bytes) ? bytes : QByteArray();
}

// A pane that names nothing to show, or whose number is taken, is none.
void addPane(std::vector<RememberedPane>& panes, const QJsonObject& object) {
  RememberedPane pane;
  pane.number = object[QLatin1String(kNumber)].toInt();
  pane.page = std::max(0, object[QLatin1String(kPage)].toInt());
  pane.request = PlotRequest::fromJson(object[QLatin1String(kRequest)].toObject());
  const bool isTaken = std::ranges::find(panes, pane.number, &RememberedPane::number) != panes.end();
  if (pane.number > 0 && !isTaken && !pane.request.kind.isEmpty() && panes.size() < DeskSettings::kMostPanes)
    panes.push_back(pane);
}

} // namespace

QByteArray DeskSettings::toJson() const {
  QJsonArray paneArray;
  for (const RememberedPane& pane : panes) {
    paneArray.append(QJsonObject{{QLatin1String(kNumber), pane.number},
                                 {QLatin1String(kPage), pane.page},
                                 {QLatin1String(kRequest), pane.request.toJson()}});
  }
  const QJsonObject object{{QLatin1String(kGeometry), textOf(geometry)},
                           {QLatin1String(kTools), textOf(tools)},
                           {QLatin1String(kWorkspace), textOf(workspace)},
                           {QLatin1String(kPanes), paneArray},
                           {QLatin1String(kCurrent), current},
                           {QLatin1String(kRecent), QJsonArray::fromStringList(recent)},
                           {QLatin1String(kTheme), theme},
                           {QLatin1String(kDarkPlots), darkPlots},
                           {QLatin1String(kPicks), picks},
                           {QLatin1String(kPicking), isPicking},
                           {QLatin1String(kSampleMegabytes), sampleMegabytes}};
  return QJsonDocument(object).toJson();
}

Result<DeskSettings> DeskSettings::fromJson(const QByteArray& text) {
  QJsonParseError problem;
  const QJsonDocument document = QJsonDocument::fromJson(text, &problem);
  if (!document.isObject()) {
    const QString what =
        problem.error == QJsonParseError::NoError ? QStringLiteral("no object") : problem.errorString();
    return Error{QStringLiteral("found %1 at byte %2, expected a JSON object").arg(what).arg(problem.offset)};
  }
  const QJsonObject object = document.object();
  DeskSettings settings;
  settings.geometry = bytesOf(object[QLatin1String(kGeometry)]);
  settings.tools = bytesOf(object[QLatin1String(kTools)]);
  settings.workspace = bytesOf(object[QLatin1String(kWorkspace)]);
  const QJsonArray paneArray = object[QLatin1String(kPanes)].toArray();
  for (const auto& pane : paneArray)
    addPane(settings.panes, pane.toObject());
  settings.current = object[QLatin1String(kCurrent)].toInt();
  const QJsonArray recentArray = object[QLatin1String(kRecent)].toArray();
  for (auto path = recentArray.end(); path != recentArray.begin();)
    settings.addRecent((*--path).toString());
  settings.theme = object[QLatin1String(kTheme)].toString();
  settings.darkPlots = object[QLatin1String(kDarkPlots)].toBool();
  settings.picks = object[QLatin1String(kPicks)].toString();
  settings.isPicking = object[QLatin1String(kPicking)].toBool();
  settings.sampleMegabytes = object[QLatin1String(kSampleMegabytes)].toInt(settings.sampleMegabytes);
  return settings;
}

void DeskSettings::addRecent(const QString& path) {
  if (path.isEmpty()) return;
  recent.removeAll(path);
  recent.prepend(path);
  while (recent.size() > kMostRecent)
    recent.removeLast();
}

QString settingsPath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/xov/desk.json");
}

DeskSettings readSettings(const QString& path, QString* note) {
  if (!QFile::exists(path)) return {};
  const Result<QByteArray> bytes = readWholeFile(path, kLargestFile);
  const Result<DeskSettings> settings = bytes ? DeskSettings::fromJson(*bytes) : Error{bytes.error()};
  if (settings) return *settings;
  const QString what = bytes ? path + QStringLiteral(": ") + settings.error() : settings.error();
  const QString kept = setFileAside(path);
  const QString where = kept.isEmpty() ? QStringLiteral("it cannot be kept beside new ones")
                                       : QStringLiteral("it is kept as %1").arg(kept);
  if (note != nullptr) *note = what + QStringLiteral("; ") + where;
  return {};
}

Status writeSettings(const DeskSettings& settings, const QString& path) {
  QString error;
  if (!QDir().mkpath(QFileInfo(path).path()))
    return Error{path + QStringLiteral(": the folder of the file cannot be made")};
  return writeFileAtomically(path, settings.toJson(), &error) ? Status() : Status(Error{error});
}

} // namespace xov::desk
