#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QByteArray>
#include <QMimeData>
#include <QString>
#include <QStringList>

#include <memory>

namespace xov {

/// The type names under which pictures travel between programs.
inline constexpr char kPdfType[] = "application/pdf";
inline constexpr char kTiffType[] = "image/tiff"; ///< of pictures as TIFF files

/// Data on its way to another program, by type. The general pasteboard is the system's clipboard; others are filled
/// and handed on, to a drag for example.
class XOV_EXPORT Pasteboard {
public:
  Pasteboard();
  ~Pasteboard();
  Pasteboard(Pasteboard&&) noexcept;
  Pasteboard& operator=(Pasteboard&&) noexcept;

  /// The system's clipboard: what is set on it is there at once.
  static Pasteboard generalPasteboard();

  /// Empties the pasteboard and announces the types that will be set. On the general pasteboard the next setData()
  /// replaces the clipboard's content.
  void declareTypes(const QStringList& types);
  /// The types announced last.
  QStringList types() const { return types_; }
  /// False for a type that was not declared.
  bool setData(const QByteArray& data, const QString& type);
  /// The data of a type, empty when there is none.
  QByteArray data(const QString& type) const;

  /// The content, for a drag or a clipboard; what is set later does not reach it.
  std::unique_ptr<QMimeData> mimeData() const;

private:
  bool general_ = false;
  QStringList types_;
  std::unique_ptr<QMimeData> content_;
};

} // namespace xov
