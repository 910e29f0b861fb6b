#pragma once

#include <QString>

namespace xov::bench {

/// A table of what reading a miniSEED file of 20 days at 20 Hz takes, in records of several lengths and encodings, in
/// pieces and of many channels, as a ratio to libmseed's own loop over its records, and of the memory that the
/// samples are held in, as a ratio to four bytes a sample. The least of that many rounds.
QString readingTable(int rounds);

} // namespace xov::bench
