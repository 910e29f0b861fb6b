#include "XOV_Graphics/seismic/realtime/eventservice/EventServiceClient.h"

#include "XOV_Graphics/base/Version.h"
#include "XOV_Graphics/seismic/io/events/EventReaders.h"
#include "XOV_Graphics/seismic/realtime/CallsBack.h"
#include "XOV_Graphics/seismic/realtime/TimerMilliseconds.h"
#include "XOV_Graphics/seismic/realtime/eventservice/ServiceEvents.h"

#include <QDateTime>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kMostRedirections = 5;
constexpr qint64 kReadAhead = qint64(1) << 18;
constexpr double kMillisecondsPerSecond = 1000;
// Events of the next minutes exist where clocks differ.
constexpr qint64 kAheadSeconds = 3600;
// A service may know of a change a while after the time that it gives it.
constexpr qint64 kOverlapSeconds = 300;
// A display that is further away than this from the clock shows a recording.
constexpr qint64 kFarFromClockSeconds = 3600;

constexpr double kLongestWindowSeconds = 1e10;

constexpr int kOk = 200;
constexpr int kNoContent = 204;
constexpr int kBadRequest = 400; // and what is above is a failure, too

struct StatusText {
  int code;
  const char* text;
};
constexpr StatusText kStatusTexts[] = {
    {400, "the service does not understand the question (status 400)"},
    {401, "the service wants another user or password (status 401)"},
    {403, "the service refuses to answer (status 403)"},
    {404, "there is no event service (status 404)"},
    {413, "the service has more events than it gives (status 413)"},
    {429, "the service wants to be asked less often (status 429)"},
    {503, "the service has no time (status 503)"},
};

QString statusText(int code) {
  const auto* const known = std::ranges::find(kStatusTexts, code, &StatusText::code);
  return known == std::end(kStatusTexts) ? QStringLiteral("the service has failed (status %1)").arg(code)
                                         : QString::fromLatin1(known->text);
}

// What Qt says of failures may hold the address, and with it a password.
QString failureText(const QNetworkReply& reply) {
  switch (reply.error()) {
  case QNetworkReply::TooManyRedirectsError:
    return QStringLiteral("the service redirects again and again");
  case QNetworkReply::InsecureRedirectError:
    return QStringLiteral("the service redirects from https to http");
  case QNetworkReply::ProtocolUnknownError:
  case QNetworkReply::ProtocolInvalidOperationError:
    return QStringLiteral("the service redirects to no web address");
  case QNetworkReply::RemoteHostClosedError:
    return QStringLiteral("the service has broken its answer off");
  case QNetworkReply::ConnectionRefusedError:
    return QStringLiteral("nobody answers at that address");
  case QNetworkReply::HostNotFoundError:
    return QStringLiteral("the host is not known");
  case QNetworkReply::SslHandshakeFailedError:
    return QStringLiteral("the service cannot prove that it is that host");
  default:
    return QStringLiteral("the service does not answer (network error %1)").arg(int(reply.error()));
  }
}

} // namespace

class EventServiceClient::Private : public CallsBack {
public:
  explicit Private(EventServiceSettings settings) : settings_(std::move(settings)) {
    for (QTimer* timer : {&next_, &answer_})
      timer->setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, [this] { ask(); });
    connect(&answer_, &QTimer::timeout, this, [this] { fail(QStringLiteral("the service takes too long")); });
    network_.setAutoDeleteReplies(false);
  }

  void start() {
    if (isStarted_) return;
    isStarted_ = true;
    pauseSeconds_ = settings_.everySeconds;
    ask();
  }

  void stop() override {
    isStarted_ = false;
    next_.stop();
    forgetReply();
  }

  double pauseSeconds() const { return next_.isActive() ? next_.interval() / kMillisecondsPerSecond : 0; }

  std::function<void(const HypocentreArray&)> take_;
  std::function<void(const QString&)> tell_;
  int answers_ = 0;

private:
  // The moment that the display shows.
  QDateTime shownMoment() const {
    const QDateTime moment = settings_.now ? settings_.now() : QDateTime();
    return moment.isValid() ? moment : askedAt_;
  }

  void ask() {
    if (!isStarted_) return;
    forgetReply();
    askedAt_ = QDateTime::currentDateTimeUtc();
    EventServiceQuery query;
    const QDateTime moment = shownMoment();
    const double window = std::isfinite(settings_.windowSeconds) ? settings_.windowSeconds : kLongestWindowSeconds;
    query.from = moment.addSecs(-qint64(std::clamp(window, 0.0, kLongestWindowSeconds)));
    query.to = moment.addSecs(kAheadSeconds);
    from_ = hasOwnStart(settings_.address) ? QDateTime() : query.from;
    const bool isNow = std::abs(moment.secsTo(askedAt_)) <= kFarFromClockSeconds;
    asksForChanges_ = isNow && takesUpdates_ && knownAt_.isValid() && changesAsked_ + 1 < settings_.wholeEvery;
    if (asksForChanges_) query.updatedAfter = knownAt_.addSecs(-kOverlapSeconds);

    QNetworkRequest request(queryAddress(settings_.address, query));
    request.setHeader(QNetworkRequest::UserAgentHeader, QString("XOV_Graphics/" + version().toString()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(kMostRedirections);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    body_.clear();
    reply_ = network_.get(request);
    reply_->setReadBufferSize(kReadAhead);
    connect(reply_, &QIODevice::readyRead, this, [this] { read(); });
    connect(reply_, &QNetworkReply::finished, this, [this] { finish(); });
    answer_.start(timerMilliseconds(settings_.longestAnswerSeconds));
  }

  // A reply that is in the middle of telling something must outlive that.
  void forgetReply() {
    answer_.stop();
    if (reply_ == nullptr) return;
    reply_->disconnect(this);
    reply_->abort();
    reply_->deleteLater();
    reply_ = nullptr;
  }

  void read() {
    body_ += reply_->readAll();
    if (body_.size() > settings_.mostBytes)
      fail(QStringLiteral("the answer is longer than %1 bytes").arg(settings_.mostBytes));
  }

  void finish() {
    read();
    if (reply_ == nullptr) return;
    const int code = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QNetworkReply::NetworkError error = reply_->error();
    const bool isHttp = code >= kBadRequest && error >= QNetworkReply::ContentAccessDenied;
    if (error != QNetworkReply::NoError && !isHttp) return fail(failureText(*reply_));
    if (code != kOk && code != kNoContent) return takeStatus(code);
    takeAnswer(code == kNoContent);
  }

  void takeStatus(int code) {
    // Not every service can tell what has changed.
    if (asksForChanges_ && code == kBadRequest) {
      takesUpdates_ = false;
      return ask();
    }
    fail(statusText(code), reply_->rawHeader("Retry-After").trimmed().toInt());
  }

  void takeAnswer(bool isEmpty) {
    forgetReply();
    EventFile file;
    if (!isEmpty) {
      Result<EventFile> read = parseEvents(body_, shownAddress(settings_.address));
      if (!read) return pause(read.error(), 0);
      file = std::move(read).value();
    }
    body_ = {};
    if (!asksForChanges_) {
      events_.replace(std::move(file.events));
    } else if (!events_.update(file.events)) {
      takesUpdates_ = false;
      return ask();
    }
    events_.keep(from_, settings_.mostEvents);
    changesAsked_ = asksForChanges_ ? changesAsked_ + 1 : 0;
    knownAt_ = askedAt_;
    ++answers_;
    pauseSeconds_ = settings_.everySeconds;
    next_.start(timerMilliseconds(pauseSeconds_));
    const bool wasFaulty = !std::exchange(lastFault_, {}).isEmpty();
    if (wasFaulty) say(shownAddress(settings_.address) + QStringLiteral(": answers again"));
    if (file.notes.size() > notes_) say(file.notes.front());
    if (!asksForChanges_) notes_ = file.notes.size();
    if (isStarted_ && events_.takeChanged()) call(take_, events_.events());
  }

  void fail(const QString& why, int retryAfterSeconds = 0) {
    forgetReply();
    body_ = {};
    pause(shownAddress(settings_.address) + ": " + why, retryAfterSeconds);
  }

  void pause(const QString& line, int retryAfterSeconds) {
    const double longest = std::max(settings_.longestPauseSeconds, settings_.everySeconds);
    const double wanted = std::max(pauseSeconds_, double(retryAfterSeconds));
    next_.start(timerMilliseconds(std::min(wanted, longest)));
    pauseSeconds_ = std::min(pauseSeconds_ * 2, longest);
    if (line != std::exchange(lastFault_, line)) say(line);
  }

  void say(const QString& line) { call(tell_, line); }

  EventServiceSettings settings_;
  ServiceEvents events_;
  bool isStarted_ = false;
  bool takesUpdates_ = true;
  bool asksForChanges_ = false;
  int changesAsked_ = 0; // since all events were asked for
  QDateTime askedAt_;
  QDateTime knownAt_; // when the last answer that came was asked for
  QDateTime from_;    // of the window that is asked for
  double pauseSeconds_ = 1;
  QString lastFault_;
  qsizetype notes_ = 0; // to the last answer with all events
  QByteArray body_;
  QTimer next_, answer_;
  QNetworkAccessManager network_;
  QNetworkReply* reply_ = nullptr; // of network_
};

EventServiceClient::EventServiceClient(EventServiceSettings settings)
    : d_(std::make_unique<Private>(std::move(settings))) {}
EventServiceClient::~EventServiceClient() { Private::leave(d_); }

void EventServiceClient::onEvents(std::function<void(const HypocentreArray&)> take) { d_->take_ = std::move(take); }
void EventServiceClient::onMessage(std::function<void(const QString&)> take) { d_->tell_ = std::move(take); }
void EventServiceClient::start() { d_->start(); }
void EventServiceClient::stop() { d_->stop(); }
int EventServiceClient::answerCount() const { return d_->answers_; }
double EventServiceClient::pauseSeconds() const { return d_->pauseSeconds(); }

} // namespace xov
