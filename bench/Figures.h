#pragma once

#include <QString>

namespace xov::bench {

/// What many figures in one process do to it: `count` plots of ten kinds, each from reading its file to a written
/// PDF, SVG, TIFF, JPEG or PNG, as a program that makes them all day does. The table tells whether memory and open
/// files stay as they are after a tenth of them, and whether a figure takes as long at the end as at the beginning.
/// Nothing where one cannot be written.
QString figuresTable(int count);

} // namespace xov::bench
