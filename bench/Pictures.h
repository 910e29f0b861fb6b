#pragma once

#include <QString>

namespace xov::bench {

/// A table of what pictures cost beside drawing: their memory, and their files.
QString pictureTable(int rounds);

} // namespace xov::bench
