#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStreams.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslSocket>

// Encrypted connections over the loopback device, with certificates of a test's own.

using namespace xov;
using test::MiniSeedBytes;
using test::TemporaryFiles;
using test::waitUntil;

namespace {

/// A certificate for a host, which it signed itself, with its key.
class Identity {
public:
  explicit Identity(const char* host) {
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days",
                   "2", "-subj", QStringLiteral("/CN=%1").arg(QLatin1String(host)), "-addext",
                   QStringLiteral("subjectAltName=DNS:%1").arg(QLatin1String(host)), "-keyout", keyFile(), "-out",
                   certificateFile()});
    EXPECT_TRUE(openssl.waitForFinished() && openssl.exitCode() == 0) << openssl.readAllStandardError().toStdString();
  }
  QString certificateFile() const { return files_.path("certificate.pem"); }
  QString keyFile() const { return files_.path("key.pem"); }
  QList<QSslCertificate> certificates() const {
    return QSslCertificate::fromData(files_.read(certificateFile()), QSsl::Pem);
  }

private:
  TemporaryFiles files_;
};

/// Has the machine trust certificates, for as long as it exists.
class Trust {
public:
  explicit Trust(const QList<QSslCertificate>& certificates) : before_(QSslConfiguration::defaultConfiguration()) {
    QSslConfiguration trusting = before_;
    trusting.setCaCertificates(certificates);
    QSslConfiguration::setDefaultConfiguration(trusting);
  }
  ~Trust() { QSslConfiguration::setDefaultConfiguration(before_); }
  Trust(const Trust&) = delete;
  Trust& operator=(const Trust&) = delete;

private:
  QSslConfiguration before_;
};

/// A server that shows a certificate, and a record of 40 samples.
struct EncryptedServer {
  explicit EncryptedServer(const SeedLinkServerSettings& settings) : server(settings) {
    std::vector<std::int32_t> samples(40, 7);
    const QByteArray record =
        MiniSeedBytes().codes("GE", "WLF", "00", "BHZ").time(2020, 257, 12, 0, 0, 0).integers(samples).bytes();
    EXPECT_TRUE(server.addFile(files.write("a.mseed", record)));
    const Status listening = server.listen();
    EXPECT_TRUE(listening) << listening.error().toStdString();
  }
  SeedLinkAddress address() const { return {"localhost", server.port(), true}; }
  TemporaryFiles files;
  SeedLinkServer server;
};

SeedLinkServerSettings showing(const Identity& identity) {
  SeedLinkServerSettings settings;
  settings.speed = 0;
  settings.certificateFile = identity.certificateFile();
  settings.keyFile = identity.keyFile();
  return settings;
}

/// What a client of that server says and gets.
class EncryptedClient {
public:
  explicit EncryptedClient(const EncryptedServer& served, const SeedLinkAddress& address)
      : client_([&] {
          SeedLinkSettings settings;
          settings.server = address;
          settings.stations = parseSeedLinkStations(QStringLiteral("GE_WLF")).value();
          settings.shortestPauseSeconds = settings.longestPauseSeconds = 0.002;
          settings.stateFile = served.files.write("state", "GE_WLF 0 0\n");
          return settings;
        }()) {
    client_.onRecord([this](const LiveRecord& record) { samples_ += record.samples.size(); });
    client_.onMessage([this](const QString& line) { messages_.append(line); });
    client_.start();
  }
  std::size_t sampleCount() const { return samples_; }
  const QStringList& messages() const { return messages_; }

  /// Waits until the client has said a line and tried twice more, and gives all lines.
  QStringList refusal() {
    waitUntil([&] { return !messages_.isEmpty(); });
    int turns = 0;
    waitUntil([&] { return ++turns > 30; });
    EXPECT_EQ(samples_, 0u);
    return messages_;
  }

private:
  std::size_t samples_ = 0;
  QStringList messages_;
  SeedLinkClient client_;
};

} // namespace

TEST(SeedLinkTls, bringsRecordsOfAServerThatIsTrusted) {
  ASSERT_TRUE(QSslSocket::supportsSsl());
  const Identity identity("localhost");
  const Trust trust(identity.certificates());
  const EncryptedServer served(showing(identity));
  EncryptedClient client(served, served.address());
  EXPECT_TRUE(waitUntil([&] { return client.sampleCount() == 40; })) << client.messages().join('\n').toStdString();
  EXPECT_EQ(client.messages(), QStringList(served.address().text() + ": connected, SeedLink 4"));
}

TEST(SeedLinkTls, refusesAServerThatNobodyVouchesFor) {
  const Identity identity("localhost");
  const EncryptedServer served(showing(identity));
  EncryptedClient client(served, served.address());
  const QStringList said = client.refusal();
  ASSERT_EQ(said.size(), 1) << said.join('\n').toStdString();
  EXPECT_TRUE(said.front().startsWith(served.address().text() + ": ")) << said.front().toStdString();
  EXPECT_TRUE(said.front().contains("certificate")) << said.front().toStdString();
}

TEST(SeedLinkTls, refusesAServerThatIsAnotherHost) {
  const Identity identity("elsewhere.example");
  const Trust trust(identity.certificates());
  const EncryptedServer served(showing(identity));
  EncryptedClient client(served, served.address());
  const QStringList said = client.refusal();
  ASSERT_EQ(said.size(), 1) << said.join('\n').toStdString();
  EXPECT_TRUE(said.front().contains("host name")) << said.front().toStdString();
}

TEST(SeedLinkTls, noClientWithoutItGetsAnAnswer) {
  const Identity identity("localhost");
  const EncryptedServer served(showing(identity));
  SeedLinkAddress open = served.address();
  open.isEncrypted = false;
  EncryptedClient client(served, open);
  EXPECT_EQ(client.refusal().size(), 1);
}

TEST(SeedLinkTls, listsWhatATrustedServerHas) {
  const Identity identity("localhost");
  const Trust trust(identity.certificates());
  const EncryptedServer served(showing(identity));
  std::size_t streams = 0;
  QString error;
  const SeedLinkInquiry inquiry(served.address(), 10, [&](const Result<std::vector<SeedLinkStream>>& answer) {
    streams = answer->size();
    error = answer.error();
  });
  EXPECT_TRUE(waitUntil([&] { return streams == 1 || !error.isEmpty(); })) << error.toStdString();
  EXPECT_EQ(error, "");
}

TEST(SeedLinkTls, refusesToServeWithoutACertificateAndItsKey) {
  const Identity identity("localhost");
  const TemporaryFiles files;
  SeedLinkServerSettings settings = showing(identity);
  settings.keyFile = files.write("no-key", "no key\n");
  SeedLinkServer keyless(settings);
  EXPECT_EQ(keyless.listen().error(), settings.keyFile + ": found no key without a password, expected PEM");
  settings.certificateFile = settings.keyFile;
  SeedLinkServer bare(settings);
  EXPECT_EQ(bare.listen().error(), settings.keyFile + ": found no certificate, expected PEM");
  settings.certificateFile = files.path("nothing");
  SeedLinkServer lost(settings);
  EXPECT_FALSE(lost.listen());
}
