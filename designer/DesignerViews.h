#pragma once

#include <QString>

#include <functional>
#include <span>

class QWidget;

namespace xov::designer {

/// What the icon of a view shows.
enum class Motif {
  Line,        ///< a curve over axes
  Points,      ///< points over axes
  Circles,     ///< larger points over axes
  Peaks,       ///< a spectrum
  Bars,        ///< a histogram
  Columns,     ///< bars with gaps
  Section,     ///< traces whose onsets move out
  Overlay,     ///< two traces over each other
  Bands,       ///< a trace in each of two bands
  Pairs,       ///< two panels of two traces
  Components,  ///< three traces
  Series,      ///< one trace
  Drum,        ///< rows with a burst
  LiveLong,    ///< traces that end at a line
  LiveShort,   ///< one trace that ends at a line
  Cells,       ///< coloured cells
  Slowness,    ///< circles and a cross
  Spectrogram, ///< coloured cells below a trace
  Noise,       ///< coloured cells over axes
  Spectra,     ///< two falling curves over axes
  Globe,       ///< a globe
  BeachBall,   ///< a disc with two filled quarters
  Orbit,       ///< an ellipse in a square
};

/// A view as Designer offers it.
struct DesignerView {
  const char* className; ///< without its namespace
  const char* header;    ///< as programs include it, without the brackets
  Motif motif;
  std::function<QWidget*(QWidget* parent)> make;
};

/// Every view that a host may place in a window.
std::span<const DesignerView> designerViews();

} // namespace xov::designer
