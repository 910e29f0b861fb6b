#pragma once

#include "apps/xov/options/Options.h"

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h>
#include <string>
#include <vector>

namespace xov::cli {

/// The options of commands that receive from a SeedLink server: --seedlink, --since, --state, --login,
/// --wait.
class SeedLinkOptions {
public:
  /// Gives the option that the others need.
  Option addOptions(const Options& options);

  /// Whether the user names a server.
  bool isGiven() const { return !server_.empty(); }
  /// Refuses a server or stations that are none, files beside them, and neither, as a usage error.
  void check(bool hasFiles) const;
  /// How long to receive before a file is written.
  double waitSeconds() const { return waitSeconds_; }
  /// "HOST:PORT", for titles and messages.
  QString serverText() const;

  /// What to receive; an error where the file of --login cannot be read. User and password come from there, or from
  /// the environment: XOV_SEEDLINK_USER and XOV_SEEDLINK_PASSWORD.
  Result<SeedLinkSettings> settings() const;

private:
  std::vector<std::string> server_; // and stations; none, or both
  std::string state_;
  std::string login_;
  std::string since_;
  double waitSeconds_ = 10;
};

} // namespace xov::cli
