#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/GraphicsContext.h"

#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace xov {

/// One stroke, fill, text, image or set of symbols of a recording. Geometry is in view points, after all transforms
/// of the drawing.
struct XOV_EXPORT RecordedItem {
  /// What was drawn.
  enum class Kind : std::uint8_t { Stroke, Fill, Text, Image, Symbols };
  Kind kind = Kind::Stroke; ///< what it is
  QColor color;             ///< stroke, fill or text colour; for symbols the fill that all have in common
  /// The clip that was in force; none clips nothing. It is the bounding box where the clip was not a rectangle.
  std::optional<QRectF> clip;
  /// The clip where it was not a rectangle, in view points.
  QPainterPath clipPath;

  Path path; ///< Stroke and Fill: the path with its width, cap, join, dashes and winding rule

  QString text;              ///< Text
  TextAttributes attributes; ///< Text
  QPointF position;          ///< Text: the lower left corner of its box, after the transform
  double angleDegrees = 0;   ///< Text: anticlockwise rotation about `position`
  QTransform transform;      ///< Text and Image: from the coordinates of the drawing call to view points
  QPointF origin;            ///< Text: the position given to the drawing call

  QImage image;                           ///< Image
  QRectF target;                          ///< Image: bounding box of where it was drawn
  QRectF drawnTarget;                     ///< Image: the rectangle given to the drawing call
  QRectF source;                          ///< Image: the part of the image, in its pixels
  double fraction = 1;                    ///< Image: opacity
  ImageKind imageKind = ImageKind::Cells; ///< Image

  Symbols symbols; ///< Symbols: what was drawn

  /// The samples, times, values and looks that `path` and `symbols` refer to: they live as long as any copy of the
  /// item.
  std::vector<std::shared_ptr<const void>> kept;

  /// The strokes and fills that this item stands for: a fill and a stroke for each symbol of a set, in drawing order,
  /// and the item itself otherwise. Costs about a kilobyte a symbol.
  std::vector<RecordedItem> steps() const;
  /// The straight pieces of the path, one line a piece, in drawing order; those of traces included.
  std::vector<QLineF> segments() const;
  /// One line of text, such as `stroke #000000 w=1 (60,60)-(440,60)`, numbers with up to three decimals.
  QString toText() const;
};

/// A drawing surface that keeps what is drawn on it, so that a host or a test can read every stroke, fill, text and
/// image, or draw them again elsewhere. Of the samples of traces and the values of symbols each stretch is copied
/// once, however often it is drawn; items share those copies, and may outlive the recording.
class XOV_EXPORT RecordingContext final : public GraphicsContext {
public:
  RecordingContext() = default;
  ~RecordingContext() override;

  /// In the order in which they were drawn.
  const std::vector<RecordedItem>& items() const { return items_; }
  /// Those of symbols included, one by one.
  std::vector<RecordedItem> strokes() const { return itemsOf(RecordedItem::Kind::Stroke); }
  /// The fills alone, in the order in which they were drawn.
  std::vector<RecordedItem> fills() const { return itemsOf(RecordedItem::Kind::Fill); }
  /// The texts alone.
  std::vector<RecordedItem> texts() const { return itemsOf(RecordedItem::Kind::Text); }
  /// The images alone.
  std::vector<RecordedItem> images() const { return itemsOf(RecordedItem::Kind::Image); }
  /// The strings of all texts in drawing order.
  QStringList strings() const;
  /// The first text that reads so; none when there is none.
  std::optional<RecordedItem> textReading(const QString& text) const;

  /// The whole recording, one item a line.
  QString toText() const;
  /// Draws everything again, as it was drawn, onto another context.
  void replay(GraphicsContext& onto) const;
  /// Forgets what was drawn; the state stays.
  void clear();

protected:
  void onStroke(const Path& path) override;
  void onFill(const Path& path) override;
  void onSymbols(const Symbols& symbols) override;
  void onText(const QString& text, QPointF position, const TextAttributes& attributes) override;
  void onImage(const QImage& image, const QRectF& target, const QRectF& source, double fraction,
               ImageKind kind) override;

private:
  std::vector<RecordedItem> itemsOf(RecordedItem::Kind kind) const;
  RecordedItem& add(RecordedItem::Kind kind);
  void keep(RecordedItem& item, const Path& path);
  const float* keepNumbers(RecordedItem& item, const float* numbers, std::int64_t first, std::int64_t last);

  std::vector<RecordedItem> items_;
  std::unordered_multimap<const float*, std::shared_ptr<const std::vector<float>>> numbers_; // by where they stood
};

} // namespace xov
