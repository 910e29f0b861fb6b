#pragma once

#include "apps/resources/Inputs.h"
#include "apps/resources/ResourceTable.h"

#include <QString>

#include <vector>

namespace xov::maker {

/// Which of the two sets is made.
enum class Edition : std::uint8_t {
  Full, ///< below the data root
  Small ///< to come with the library
};

/// A file to make.
struct Task {
  const Resource* resource;
  QString path;
};

/// Where a resource of that edition goes: below the data root in full, in one folder when small.
QString targetPath(const Resource& resource, Edition edition, const QString& folder);

/// The resources that are not below the data root yet, or were made by another version of this program. The imported
/// text of PB2002 stays. Fails where it cannot be told, as the file that says so cannot be read.
Result<std::vector<Task>> missingResources(const QString& dataRoot);

/// Writes down that all below the data root was made by this version.
Status markMade(const QString& dataRoot);

/// The bytes of a resource.
Result<QByteArray> makeResource(const Resource& resource, Edition edition, Inputs& inputs);

/// Makes each file, and its folder, whole or not at all.
Status makeAll(const std::vector<Task>& tasks, Edition edition, Inputs& inputs, const Progress& progress);

} // namespace xov::maker
