#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

namespace xov {

/// Whether a file holds relocated events as hypoDD writes them, or its phases: the first line that is not empty is
/// one of either.
bool isHypoDd(QByteArrayView head);

/// Reads events of hypoDD (F. Waldhauser, hypoDD: A program to compute double-difference hypocenter locations, U.S.
/// Geological Survey Open-File Report 01-113, 2001): of hypoDD.loc and hypoDD.reloc the rows, in 18 or 24 columns,
/// and of phase.dat the lines that begin with "#".
Result<EventFile> readHypoDd(QByteArrayView text, const QString& name);

} // namespace xov
