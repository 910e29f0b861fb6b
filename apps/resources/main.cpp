// Makes the base maps and plate boundaries that the library's map view draws, out of data that Debian packages hold.
//   xov_resources                  full size, below the data root, where they are not there yet
//   xov_resources --small FOLDER   the small ones that come with the library
#include "apps/resources/Maker.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <XOV_Graphics/base/Resources.h>
#include <cstdio>
#include <exception>

namespace {

using namespace xov;
using namespace xov::maker;

void say(const QString& what) {
  std::puts(qUtf8Printable(what));
  std::fflush(stdout);
}

std::vector<Task> smallOnes(const QString& folder) {
  std::vector<Task> tasks;
  for (const Resource& resource : kResources)
    tasks.push_back({&resource, targetPath(resource, Edition::Small, folder)});
  return tasks;
}

Status make(const QString& smallFolder, const QString& archive) {
  const bool isSmall = !smallFolder.isEmpty();
  const QString root = dataRoot();
  const Result<std::vector<Task>> tasks = isSmall ? smallOnes(smallFolder) : missingResources(root);
  if (!tasks) return Error{tasks.error()};
  if (tasks->empty()) {
    say(QStringLiteral("All is there: %1").arg(root));
    return {};
  }
  const Packages packages(QDir(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation))
                              .filePath(QStringLiteral("XOV_Graphics/packages")),
                          archive);
  Inputs inputs(packages, say);
  if (Status made = makeAll(*tasks, isSmall ? Edition::Small : Edition::Full, inputs, say); !made) return made;
  packages.remove();
  return isSmall ? Status() : markMade(root);
}

int run(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Makes base maps and plate boundaries below the data root from data in Debian packages."));
  parser.addHelpOption();
  const QCommandLineOption small(QStringLiteral("small"), QStringLiteral("Make the small ones, in this folder."),
                                 QStringLiteral("folder"));
  const QCommandLineOption archive(QStringLiteral("packages"),
                                   QStringLiteral("Take the packages from this folder and download nothing."),
                                   QStringLiteral("folder"));
  parser.addOptions({small, archive});
  parser.process(application);
  const Status made = make(parser.value(small), parser.value(archive));
  if (made) return 0;
  std::fprintf(stderr, "xov_resources: %s\n", qUtf8Printable(made.error()));
  return 1;
}

} // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& exception) {
    std::fprintf(stderr, "xov_resources: %s\n", exception.what());
    return 1;
  }
}
