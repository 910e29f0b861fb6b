#include "apps/desk/window/PaneBar.h"

#include "apps/desk/panes/LiveRequests.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QStyle>
#include <QToolButton>

namespace xov::desk {

namespace {

constexpr int kBusyAfterMs = 250; // what is quicker does not flicker
constexpr int kBusyWidth = 80;
constexpr int kBarMargin = 3;

} // namespace

PaneBar::PaneBar(QDockWidget& dock, Pane& pane)
    : QWidget(&dock),
      pane_(pane),
      name_(new QLabel),
      state_(new QLabel),
      page_(new QLabel),
      busy_(new QProgressBar) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(2 * kBarMargin, kBarMargin, kBarMargin, kBarMargin);
  row->setSpacing(kBarMargin);
  name_->setTextFormat(Qt::PlainText);
  name_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->addWidget(name_, 1);
  state_->setObjectName(QStringLiteral("barState"));
  state_->setTextFormat(Qt::PlainText);
  state_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  state_->setAccessibleName(tr("State of the connection"));
  state_->hide();
  row->addWidget(state_, 1);
  busy_->setRange(0, 0);
  busy_->setTextVisible(false);
  busy_->setFixedSize(kBusyWidth, fontMetrics().height());
  busy_->setAccessibleName(tr("Reading"));
  busy_->hide();
  row->addWidget(busy_);
  previous_ =
      addButton(QStringLiteral("barPrevious"), tr("Previous page"), style()->standardIcon(QStyle::SP_ArrowLeft));
  row->addWidget(page_);
  next_ = addButton(QStringLiteral("barNext"), tr("Next page"), style()->standardIcon(QStyle::SP_ArrowRight));
  QToolButton* const tearOff = addButton(QStringLiteral("barTearOff"), tr("Make a window of it, or take it back"),
                                         style()->standardIcon(QStyle::SP_TitleBarNormalButton));
  QToolButton* const close =
      addButton(QStringLiteral("barClose"), tr("Close"), style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  connect(previous_, &QToolButton::clicked, this, [this] { pane_.showPage(pane_.page() - 1); });
  connect(next_, &QToolButton::clicked, this, [this] { pane_.showPage(pane_.page() + 1); });
  connect(tearOff, &QToolButton::clicked, &dock, [&dock] { dock.setFloating(!dock.isFloating()); });
  connect(close, &QToolButton::clicked, &dock, &QWidget::close);
  busyTimer_.setSingleShot(true);
  connect(&busyTimer_, &QTimer::timeout, busy_, [this] { busy_->setVisible(pane_.isBusy()); });
  connect(&pane, &Pane::busyChanged, this, [this](bool isBusy) {
    if (isBusy)
      busyTimer_.start(kBusyAfterMs);
    else
      busy_->hide();
  });
  connect(&pane, &Pane::pageChanged, this, &PaneBar::showPages);
  connect(&pane, &Pane::requestChanged, this, &PaneBar::showName);
  connect(&pane, &Pane::said, this, &PaneBar::showState);
  showPages();
}

// The name gives way to the buttons.
QSize PaneBar::minimumSizeHint() const { return {0, sizeHint().height()}; }

QToolButton* PaneBar::addButton(const QString& name, const QString& text, const QIcon& icon) {
  auto* const button = new QToolButton;
  button->setObjectName(name);
  button->setAutoRaise(true);
  button->setIcon(icon);
  button->setToolTip(text);
  button->setAccessibleName(text);
  const int side = fontMetrics().height();
  button->setIconSize({side, side});
  static_cast<QHBoxLayout*>(layout())->addWidget(button);
  return button;
}

void PaneBar::showPages() {
  const std::size_t pages = pane_.pages();
  for (QWidget* const widget :
       {static_cast<QWidget*>(previous_), static_cast<QWidget*>(page_), static_cast<QWidget*>(next_)})
    widget->setVisible(pages > 1);
  page_->setText(tr("%1 of %2").arg(pane_.page() + 1).arg(pages));
  previous_->setEnabled(pane_.page() > 0);
  next_->setEnabled(pane_.page() + 1 < pages);
}

// Of what arrives, the last that there was to say.
void PaneBar::showState(const QString& text) {
  state_->setVisible(isLive(pane_.request()));
  state_->setText(text);
  state_->setToolTip(text);
}

void PaneBar::showName() {
  name_->setText(pane_.name());
  name_->setToolTip(pane_.request().files.join(QLatin1Char('\n')));
}

} // namespace xov::desk
