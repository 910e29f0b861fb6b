// Runs what the pages of docs/guide show as C++.
#include "tests/guide/Guide.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTimer>

#include <map>
#include <string>

namespace {

std::map<std::string, GuideMain>& programs() {
  static std::map<std::string, GuideMain> known;
  return known;
}

bool isProgram = false;

// As soon as there is an application.
void closeSoon() {
  if (isProgram) QTimer::singleShot(100, qApp, &QCoreApplication::quit);
}
Q_COREAPP_STARTUP_FUNCTION(closeSoon)

void failOnWarnings(QtMsgType type, const QMessageLogContext&, const QString& text) {
  // What the platform without a screen says of every window.
  if (type != QtWarningMsg || text.startsWith(QLatin1String("This plugin does not"))) return;
  ADD_FAILURE() << "warned: " << text.toStdString();
}

} // namespace

void Guide::SetUp() {
  ASSERT_TRUE(folder_.isValid());
  before_ = QDir::currentPath();
  const QDir data(qEnvironmentVariable("XOV_EXAMPLE_DATA"));
  const QStringList entries = data.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
  ASSERT_FALSE(entries.isEmpty()) << "no example data in XOV_EXAMPLE_DATA";
  for (const QString& name : entries)
    ASSERT_TRUE(QFile::link(data.filePath(name), folder_.filePath(name)));
  ASSERT_TRUE(QDir::setCurrent(folder_.path()));
  qInstallMessageHandler(failOnWarnings);
}

void Guide::TearDown() {
  qInstallMessageHandler(nullptr);
  QDir::setCurrent(before_);
}

bool addGuideProgram(const char* name, GuideMain program) { return programs().emplace(name, program).second; }

void runGuideProgram(const char* name) {
  QStringList arguments = {"--program", name};
  for (const QString& file : QDir("section").entryList({"*.BHZ.SAC"}))
    arguments += "section/" + file;
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("XDG_RUNTIME_DIR", QDir::currentPath()); // else Qt says that it makes one
  process.setProcessEnvironment(environment);
  process.start(QCoreApplication::applicationFilePath(), arguments);
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process.exitCode(), 0);
  const QString said = QString::fromLocal8Bit(process.readAllStandardError());
  for (const QString& line : said.split('\n', Qt::SkipEmptyParts))
    EXPECT_TRUE(line.startsWith("This plugin does not")) << line.toStdString();
}

int main(int argc, char** argv) {
  if (argc > 2 && std::string(argv[1]) == "--program") {
    isProgram = true;
    return programs().at(argv[2])(argc - 2, argv + 2);
  }
  testing::InitGoogleTest(&argc, argv);
  const QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
