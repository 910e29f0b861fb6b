#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <span>
#include <vector>

namespace xov {

/// What was read from a text in the NXY format. With an error there are no points.
struct NxyPoints {
  std::optional<int> count; ///< nothing when no count could be read
  std::vector<float> xp;
  std::vector<float> yp;
  QString error; ///< one line that names the field; empty after success
};

NxyPoints parseNxy(const QString& text);

/// The characters of a file: by its byte order mark, else UTF-8, else Latin-1.
QString decodeNxy(const QByteArray& bytes);

/// A text in the NXY format. Both coordinates must have the same length.
QByteArray nxyText(std::span<const float> xp, std::span<const float> yp);

} // namespace xov
