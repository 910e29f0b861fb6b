#include "apps/desk/live/ConnectDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkStations.h>
#include <map>

namespace xov::desk {

namespace {

constexpr double kLongestAnswerSeconds = 30;
constexpr QSize kConnectSize(460, 420);
constexpr qsizetype kMostStreamsListed = 20000; // a whole data centre's are slow to read through anyway

// "GE_WLF" of a stream, and "00BHZ".
QString stationOf(const SeedLinkStream& stream) { return stream.codes[0] + QLatin1Char('_') + stream.codes[1]; }
QString channelOf(const SeedLinkStream& stream) { return stream.codes[2] + stream.codes[3]; }

} // namespace

ConnectDialog::ConnectDialog(QWidget* parent)
    : QDialog(parent),
      server_(new QLineEdit),
      stations_(new QLineEdit),
      kind_(new QComboBox),
      today_(new QCheckBox(tr("&Begin with what the server has since midnight (UTC)"))),
      ask_(new QPushButton(tr("&List What the Server Has"))),
      streams_(new QListWidget),
      problem_(new QLabel),
      connect_(nullptr) {
  setObjectName(QStringLiteral("connectDialog"));
  setWindowTitle(tr("Connect to a SeedLink Server"));
  resize(kConnectSize);
  server_->setObjectName(QStringLiteral("connectServer"));
  server_->setPlaceholderText(QStringLiteral("localhost:18000"));
  stations_->setObjectName(QStringLiteral("connectStations"));
  stations_->setPlaceholderText(QStringLiteral("GE_WLF:BHZ,GR_*:HHZ"));
  kind_->setObjectName(QStringLiteral("connectKind"));
  kind_->addItem(tr("Live traces"), QStringLiteral("monitor"));
  kind_->addItem(tr("Drum of the day"), QStringLiteral("drum"));
  today_->setObjectName(QStringLiteral("connectToday"));
  ask_->setObjectName(QStringLiteral("connectAsk"));
  ask_->setAutoDefault(false);
  streams_->setObjectName(QStringLiteral("connectStreams"));
  streams_->setAccessibleName(tr("Streams of the server"));
  streams_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  streams_->setUniformItemSizes(true);
  problem_->setObjectName(QStringLiteral("connectProblem"));
  problem_->setTextFormat(Qt::PlainText);
  problem_->setWordWrap(true);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect_ = buttons->button(QDialogButtonBox::Ok);
  connect_->setText(tr("Connect"));
  auto* const form = new QFormLayout(this);
  form->addRow(tr("&Server:"), server_);
  form->addRow(tr("S&treams:"), stations_);
  form->addRow(tr("Show &as:"), kind_);
  form->addRow(QString(), today_);
  form->addRow(ask_);
  form->addRow(streams_);
  form->addRow(problem_);
  form->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &ConnectDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ConnectDialog::reject);
  connect(server_, &QLineEdit::textChanged, this, &ConnectDialog::check);
  connect(stations_, &QLineEdit::textChanged, this, &ConnectDialog::check);
  connect(ask_, &QPushButton::clicked, this, &ConnectDialog::ask);
  connect(streams_, &QListWidget::itemSelectionChanged, this, &ConnectDialog::choose);
  check();
}

ConnectDialog::~ConnectDialog() = default;

void ConnectDialog::setSource(const LiveSource& source) {
  server_->setText(source.server);
  stations_->setText(source.stations);
  today_->setChecked(source.beginsToday);
}

PlotRequest ConnectDialog::request() const {
  return requestForSource(kind_->currentData().toString(),
                          {server_->text().trimmed(), stations_->text().trimmed(), today_->isChecked()});
}

// What is written makes sense before anybody connects.
void ConnectDialog::check() {
  const auto address = parseSeedLinkAddress(server_->text().trimmed());
  const auto stations = parseSeedLinkStations(stations_->text().trimmed());
  ask_->setEnabled(bool(address) && !inquiry_);
  connect_->setEnabled(address && stations);
  QString problem;
  if (!address && !server_->text().isEmpty())
    problem = address.error();
  else if (!stations && !stations_->text().isEmpty())
    problem = stations.error();
  problem_->setText(problem);
}

void ConnectDialog::accept() {
  if (connect_->isEnabled()) QDialog::accept();
}

void ConnectDialog::ask() {
  const auto address = parseSeedLinkAddress(server_->text().trimmed());
  if (!address) return;
  streams_->clear();
  inquiry_ = std::make_unique<SeedLinkInquiry>(*address, kLongestAnswerSeconds, [this](const auto& streams) {
    // The inquiry must not go within its answer.
    QMetaObject::invokeMethod(
        this, [this, streams] { take(streams); }, Qt::QueuedConnection);
  });
  check();
  problem_->setText(tr("Asking the server…"));
}

void ConnectDialog::take(const Result<std::vector<SeedLinkStream>>& streams) {
  inquiry_.reset();
  check();
  if (!streams) return problem_->setText(streams.error());
  problem_->setText(tr("%n stream(s)", nullptr, int(streams->size())));
  for (const SeedLinkStream& stream : *streams) {
    if (streams_->count() >= kMostStreamsListed) break;
    auto* const item = new QListWidgetItem(stationOf(stream) + QLatin1Char(' ') + channelOf(stream), streams_);
    item->setData(Qt::UserRole, QStringList{stationOf(stream), channelOf(stream)});
  }
}

// "GE_WLF:BHN BHZ,GR_BFO:HHZ" of what is chosen in the list.
void ConnectDialog::choose() {
  std::map<QString, QStringList> chosen;
  for (const QListWidgetItem* const item : streams_->selectedItems()) {
    const QStringList names = item->data(Qt::UserRole).toStringList();
    chosen[names[0]].append(names[1]);
  }
  QStringList stations;
  for (const auto& [station, channels] : chosen)
    stations.append(station + QLatin1Char(':') + channels.join(QLatin1Char(' ')));
  if (!stations.isEmpty()) stations_->setText(stations.join(QLatin1Char(',')));
}

} // namespace xov::desk
