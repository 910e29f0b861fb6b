#include "apps/desk/panes/Pane.h"

#include "apps/desk/panes/LiveRequests.h"
#include "apps/desk/panes/PaneKinds.h"
#include "apps/xov/output/PlotProperties.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <XOV_Graphics/views/image/xovFKImageView.h>
#include <algorithm>
#include <utility>

namespace xov::desk {

namespace {

constexpr int kBarWidth = 240;
constexpr qsizetype kMostMessages = 100; // what arrives may go on for months

// Whether each property of one request is one of the other, too, with the same value or another.
bool areAllIn(const QMap<QString, QString>& properties, const QMap<QString, QString>& others) {
  const QStringList names = properties.keys();
  return std::ranges::all_of(names, [&](const QString& name) { return others.contains(name); });
}

} // namespace

Pane::Pane(CommandRunner run, QWidget* parent)
    : QWidget(parent),
      run_(std::move(run)),
      layers_(new QStackedLayout(this)),
      waiting_(new QWidget),
      text_(new QLabel),
      bar_(new QProgressBar),
      cancel_(new QPushButton(tr("Cancel"))) {
  text_->setWordWrap(true);
  text_->setAlignment(Qt::AlignCenter);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setTextFormat(Qt::PlainText);
  text_->setObjectName(QStringLiteral("paneText"));
  bar_->setFixedWidth(kBarWidth);
  bar_->setAccessibleName(tr("Progress of reading"));
  cancel_->setObjectName(QStringLiteral("paneCancel"));
  connect(static_cast<QPushButton*>(cancel_), &QPushButton::clicked, this, &Pane::cancel);
  auto* const column = new QVBoxLayout(waiting_);
  column->addStretch();
  column->addWidget(text_);
  column->addWidget(bar_, 0, Qt::AlignHCenter);
  column->addWidget(cancel_, 0, Qt::AlignHCenter);
  column->addStretch();
  layers_->addWidget(waiting_);
}

Pane::~Pane() {
  if (view_) Q_EMIT viewGoing(view_.get());
}

void Pane::setRequest(const PlotRequest& request) {
  const PlotRequest before = std::exchange(request_, request);
  setAccessibleName(name());
  Q_EMIT requestChanged();
  if (!view_ || next_ || before.withoutProperties() != request_.withoutProperties()) return start();
  if (areAllIn(before.properties, request_.properties)) return writeProperties(*view_);
  if (std::unique_ptr<XOVView> made = make(*maker_, page_)) showView(std::move(made));
}

void Pane::start() {
  messages_.clear();
  text_->setText(tr("Reading…"));
  bar_->setRange(0, 0);
  bar_->show();
  cancel_->show();
  next_ = std::make_unique<PlotMaker>(run_, request_.withoutProperties().words());
  connect(next_.get(), &PlotMaker::said, this, &Pane::say);
  connect(next_.get(), &PlotMaker::advanced, this, &Pane::showAdvance);
  connect(next_.get(), &PlotMaker::ready, this, &Pane::takePlot);
  connect(next_.get(), &PlotMaker::failed, this, &Pane::showFailure);
  Q_EMIT busyChanged(true);
}

void Pane::cancel() {
  if (!next_) return;
  next_.reset();
  messages_.append(tr("Cancelled"));
  showFailure();
}

std::size_t Pane::pages() const { return maker_ ? maker_->pages() : 0; }

void Pane::takePlot() {
  const std::size_t page = page_ < next_->pages() ? page_ : 0;
  std::unique_ptr<XOVView> made = make(*next_, page);
  if (!made) return showFailure();
  page_ = page;
  // Where the same data are shown another way, the user looks at the same part of them.
  if (view_ && view_->metaObject() == made->metaObject() && view_->shownPart() && !made->shownPart()) {
    made->pictureOfRect(QRectF(0, 0, 1, 1));
    made->showPart(view_->shownPart());
  }
  const std::unique_ptr<PlotMaker> before = std::exchange(maker_, std::move(next_));
  Q_EMIT busyChanged(false);
  showView(std::move(made));
}

std::unique_ptr<XOVView> Pane::make(PlotMaker& maker, std::size_t page) {
  std::unique_ptr<XOVView> made = maker.make(page, size());
  if (made) writeProperties(*made);
  return made;
}

void Pane::writeProperties(XOVView& view) {
  for (const QString& assignment : request_.assignments()) {
    const Status written = cli::setPlotProperty(view, assignment);
    if (!written) say(written.error());
  }
}

PlotRequest Pane::requestAsShown() {
  PlotRequest shown = request_;
  if (!view_ || request_.kind == QLatin1String("monitor") || isLive(request_))
    return shown; // what plays or arrives has one view
  const std::unique_ptr<XOVView> usual = maker_->make(page_, view_->size());
  if (!usual) return shown;
  // Many a view computes its limits when it draws.
  for (XOVView* const view : {usual.get(), view_.get()})
    view->pictureOfRect(QRectF(0, 0, 1, 1));
  shown.properties.clear();
  if (const QString part = cli::shownPartText(*view_); !part.isEmpty()) {
    shown.properties[QLatin1String(cli::kShownPart)] = part;
    usual->showPart(view_->shownPart()); // a part changes limits and what keeps them
    usual->pictureOfRect(QRectF(0, 0, 1, 1));
  }
  for (const QMetaProperty& property : cli::plotProperties(*view_)) {
    // Limits are what the user has set, or follow from the part and the drawing.
    const bool isLimit = property.notifySignal().name() == "limitsChanged";
    if (isLimit && !request_.properties.contains(QLatin1String(property.name()))) continue;
    const QString text = cli::plotPropertyText(property, property.read(view_.get()));
    if (text != cli::plotPropertyText(property, property.read(usual.get())))
      shown.properties[QLatin1String(property.name())] = text;
  }
  return shown;
}

void Pane::say(const QString& text) {
  messages_.append(text);
  if (messages_.size() > kMostMessages) messages_.removeFirst();
  Q_EMIT said(text);
}

void Pane::showPage(std::size_t page) {
  if (!maker_ || page >= maker_->pages() || page == page_) return;
  std::unique_ptr<XOVView> made = make(*maker_, page);
  if (!made) return;
  page_ = page;
  showView(std::move(made));
}

// The view before goes while its maker is there.
void Pane::showView(std::unique_ptr<XOVView> view) {
  const bool hadFocus = hasFocus() || (view_ && view_->hasFocus());
  if (view_) Q_EMIT viewGoing(view_.get());
  layers_->addWidget(view.get());
  layers_->setCurrentWidget(view.get());
  view_ = std::move(view);
  fitLikeAxes();
  if (hadFocus) view_->setFocus();
  setFocusProxy(view_.get());
  Q_EMIT viewMade(view_.get());
  Q_EMIT pageChanged();
}

// Circles of constant slowness are those of both axes only where these have one scale.
void Pane::fitLikeAxes() {
  QMargins margins;
  if (auto* const map = qobject_cast<xovFKImageView*>(view_.get())) {
    map->computeRects();
    const QSizeF around = map->bounds().size() - map->iRect().size();
    const QSizeF room = QSizeF(size()) - around;
    const int beside = int(std::max(room.width() - room.height(), 0.0) / 2);
    const int above = int(std::max(room.height() - room.width(), 0.0) / 2);
    margins = {beside, above, beside, above};
  }
  setContentsMargins(margins); // a stacked layout has no margins of its own
}

void Pane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  fitLikeAxes();
}

void Pane::showFailure() {
  next_.reset();
  if (!view_) {
    text_->setText(messages_.isEmpty() ? tr("There is nothing to show.") : messages_.join(QLatin1Char('\n')));
    bar_->hide();
    cancel_->hide();
  }
  Q_EMIT busyChanged(false);
  Q_EMIT failed();
}

void Pane::showAdvance(const QString& what, qint64 done, qint64 total) {
  Q_UNUSED(what)
  constexpr int kSteps = 1000;
  bar_->setRange(0, kSteps);
  bar_->setValue(total > 0 ? int(double(done) / double(total) * kSteps) : 0);
}

QString Pane::name() const {
  const PaneKind* const kind = paneKindOf(request_.kind);
  const QString title = kind != nullptr ? paneTitle(*kind) : request_.kind;
  if (isLive(request_))
    return tr("%1: %2").arg(request_.kind == QLatin1String("monitor") ? tr("Live") : title,
                            liveSourceOf(request_).server);
  const QString files = filesText(filesOf(request_));
  return files.isEmpty() ? title : tr("%1: %2").arg(title, files);
}

} // namespace xov::desk
