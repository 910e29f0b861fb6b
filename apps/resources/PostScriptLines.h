#pragma once

#include "apps/resources/BoundarySegments.h"

#include <QByteArray>

#include <XOV_Graphics/base/Result.h>

namespace xov::maker {

/// The text of a PostScript file that decompresses itself: after a first part that ends in "exec", zlib data of
/// rows of "Columns" bytes, each predicted from the one above it (PNG's filter "up"; Adobe Systems, 1999: PostScript
/// Language Reference, FlateDecode filter, predictor 10 and up).
Result<QByteArray> selfExtractedText(const QByteArray& file);

/// The lines of a PostScript text "/name[[[x y][x y]...][[x y]...]]def".
Result<Segments> postScriptLines(const QByteArray& text);

} // namespace xov::maker
