#include "apps/desk/window/PicksTool.h"

#include "apps/desk/desktop/FileDialogs.h"
#include "apps/desk/panes/BoxRequests.h"
#include "apps/desk/picks/EventOfRecords.h"
#include "apps/desk/picks/PickPanel.h"
#include "apps/desk/window/MainWindow.h"

#include <QAction>
#include <QDockWidget>
#include <QMessageBox>
#include <QPointer>
#include <QStatusBar>

#include <XOV_Graphics/seismic/StationInventory.h>
#include <XOV_Graphics/seismic/arrivals/SeismicPhase.h>
#include <XOV_Graphics/views/seismic/PickEditor.h>
#include <algorithm>
#include <functional>

namespace xov::desk {

namespace {

constexpr int kPickMessageMs = 10000;
const QString kTools = QStringLiteral("tools");

} // namespace

PicksTool::PicksTool(MainWindow& window)
    : QObject(&window),
      window_(window),
      session_(new PickSession(window.undoStack(), this)),
      panel_(new PickPanel(session_->document())) {
  window.addToolDock(panel_, tr("Picks"), QStringLiteral("picksDock"), Qt::BottomDockWidgetArea)->hide();
  addActions();
  connect(session_, &PickSession::said, &window,
          [&window](const QString& text) { window.statusBar()->showMessage(text, kPickMessageMs); });
  session_->setEventSource([this] { return event(); });
  connect(panel_, &PickPanel::chosen, this, &PicksTool::choose);
  connect(&window, &MainWindow::paneOpened, this, &PicksTool::watch);
}

void PicksTool::addActions() {
  picking_ = window_.addAction(kTools, QStringLiteral("pickByHand"), tr("&Pick with Mouse and Keys"),
                               Qt::CTRL | Qt::Key_K, [] {});
  picking_->setCheckable(true);
  connect(picking_, &QAction::toggled, this, &PicksTool::setUpAll);
  expecting_ = window_.addAction(kTools, QStringLiteral("expectedArrivals"), tr("&Expected Arrivals"), {}, [] {});
  expecting_->setCheckable(true);
  connect(expecting_, &QAction::toggled, this, &PicksTool::setUpAll);
  expecting_->setEnabled(false);
  window_.addAction(kTools, QStringLiteral("openPicks"), tr("&Open Picks…"), {}, [this] { openPicks(); });
  window_.addAction(kTools, QStringLiteral("savePicks"), tr("&Save Picks"), Qt::CTRL | Qt::SHIFT | Qt::Key_S,
                    [this] { save(false); });
  window_.addAction(kTools, QStringLiteral("savePicksAs"), tr("Save Picks &As…"), {}, [this] { save(true); });
  window_.addAction(kTools, QStringLiteral("savePicksIntoCopies"), tr("Save Picks into &Copies of SAC Files…"), {},
                    [this] { saveIntoCopies(); });
}

// Later than others who look at the events of a view: what is on a pick is the editor's before it zooms or pans.
void PicksTool::watch(Pane* pane) {
  connect(
      pane, &Pane::viewMade, this,
      [this, shown = QPointer<Pane>(pane)] {
        if (shown) edit(shown->view());
      },
      Qt::QueuedConnection);
}

void PicksTool::edit(XOVView* view) {
  auto* const plot = qobject_cast<SeismogramView*>(view);
  if (plot == nullptr || plot->findChild<PickEditor*>() != nullptr) return;
  auto* const editor = new PickEditor(plot, &session_->document());
  setUp(*editor);
  connect(editor, &PickEditor::refused, session_, &PickSession::said);
  connect(editor, &PickEditor::currentPickChanged, panel_, &PickPanel::show);
  editors_.removeIf([](const QPointer<PickEditor>& one) { return one.isNull(); });
  editors_.append(editor);
}

// That of the records on which there are picks.
std::optional<HypocentreValues> PicksTool::event() const {
  SeismogramArray picked;
  for (const Pane* const pane : window_.panes()) {
    if (pane->view() == nullptr) continue;
    for (const auto& record : recordsOf(*pane->view())) {
      const ChannelCodes channel = channelCodesOf(*record);
      const auto isOfRecord = [&](const Pick& pick) { return isPickOf(pick, channel); };
      if (std::ranges::any_of(session_->document().picks(), isOfRecord)) picked.push_back(record);
    }
  }
  return eventOfRecords(picked);
}

void PicksTool::setUp(PickEditor& editor) const {
  editor.setEnabled(picking_->isChecked());
  std::vector<SeismicPhase> phases;
  for (const char* const name : {"P", "S"})
    if (const auto phase = phaseNamed(QString::fromLatin1(name))) phases.push_back(*phase);
  editor.setPredictedPhases(expecting_->isChecked() ? phases : std::vector<SeismicPhase>());
}

void PicksTool::setUpAll() {
  expecting_->setEnabled(picking_->isChecked());
  if (auto* const dock = window_.findChild<QDockWidget*>(QStringLiteral("picksDock")); picking_->isChecked()) {
    dock->show();
    dock->raise();
  }
  for (const QPointer<PickEditor>& editor : editors_)
    if (editor) setUp(*editor);
  // So that keys reach the plot at once.
  if (const Pane* const pane = window_.currentPane();
      picking_->isChecked() && pane != nullptr && pane->view() != nullptr)
    pane->view()->setFocus(Qt::OtherFocusReason);
}

void PicksTool::choose(const QString& id) {
  for (const QPointer<PickEditor>& editor : editors_)
    if (editor) editor->setCurrentPick(id);
}

void PicksTool::openPicks() {
  askForFiles(&window_, [this](const QStringList& paths) {
    for (const QString& path : paths)
      session_->open(path);
  });
}

void PicksTool::save(bool underNewName, const std::function<void()>& saved) {
  const auto write = [this, saved](const QString& path) {
    if (session_->save(path) && saved) saved();
  };
  if (!underNewName && !session_->path().isEmpty()) {
    write(session_->path());
    return;
  }
  askForNewFile(&window_, tr("Save Picks"), QStringLiteral("picks.xml"),
                {QStringLiteral("xml"), QStringLiteral("csv")},
                [write](const QStringList& paths) { write(paths.value(0)); });
}

void PicksTool::saveIntoCopies() {
  QStringList files;
  for (const Pane* const pane : window_.panes())
    files += pane->request().files;
  files.removeDuplicates();
  askForFolder(&window_, tr("Folder for Copies"),
               [this, files](const QStringList& folders) { session_->saveIntoCopies(files, folders.value(0)); });
}

bool PicksTool::mayClose() {
  if (!session_->isModified()) return true;
  if (window_.findChild<QMessageBox*>(QStringLiteral("unsavedPicks")) != nullptr) return false;
  auto* const box = new QMessageBox(QMessageBox::Question, tr("Picks"), tr("Save the picks before closing?"),
                                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
  box->setObjectName(QStringLiteral("unsavedPicks"));
  box->setAttribute(Qt::WA_DeleteOnClose);
  connect(box, &QMessageBox::finished, this, [this](int answer) {
    if (answer == QMessageBox::Save) {
      save(false, [this] { window_.close(); });
    } else if (answer == QMessageBox::Discard) {
      session_->giveUp();
      window_.close();
    }
  });
  box->open();
  return false;
}

} // namespace xov::desk
