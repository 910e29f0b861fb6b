#include "apps/desk/panes/PlotMaker.h"

#include "apps/desk/panes/PlotWork.h"

#include <QPointer>
#include <QThread>

namespace xov::desk {

namespace {

// Those that are at work, for waitForAll(); main thread only.
std::vector<QPointer<QThread>>& workThreads() {
  static std::vector<QPointer<QThread>> threads;
  return threads;
}

} // namespace

PlotMaker::PlotMaker(const CommandRunner& run, const QStringList& words, QObject* parent)
    : QObject(parent),
      work_(std::make_shared<PlotWork>(run, words)) {
  connect(work_.get(), &PlotWork::heard, this, &PlotMaker::said);
  connect(work_.get(), &PlotWork::advancedTo, this, &PlotMaker::advanced);
  connect(work_.get(), &PlotWork::offered, this, &PlotMaker::ready);
  connect(work_.get(), &PlotWork::ended, this, &PlotMaker::failed);
  // The thread's object holds the work, and goes in the main thread, too.
  QThread* const thread = QThread::create([work = work_] { work->run(); });
  connect(thread, &QThread::finished, thread, &QThread::deleteLater);
  std::erase_if(workThreads(), [](const QPointer<QThread>& known) { return known.isNull(); });
  workThreads().emplace_back(thread);
  thread->start();
}

PlotMaker::~PlotMaker() { work_->release(); }

std::size_t PlotMaker::pages() const { return work_->pages(); }

std::unique_ptr<XOVView> PlotMaker::make(std::size_t page, const QSize& size) { return work_->make(page, size); }

void PlotMaker::waitForAll() {
  for (const QPointer<QThread>& thread : workThreads()) {
    if (thread.isNull()) continue;
    thread->wait();
    delete thread.data();
  }
  workThreads().clear();
}

} // namespace xov::desk
