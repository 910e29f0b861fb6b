#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/View.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <span>

namespace xov {

/// The view of a page, the first of which is number 0; nullptr after the last one. A page is drawn before the next
/// one is asked for, so that it may be the same view each time with other data, or a new one that takes the place of
/// the last.
using PdfPageSource = std::function<View*(std::int64_t page)>;

/// Writes views on the pages of one PDF file, each page as large as its view in points and drawn as
/// View::dataWithPDFInsideRect() draws it. The same drawings give the same bytes. Of the pages only one is held in
/// memory.
///
/// The file appears whole or not at all: false, with one line in `error` that names the file, when it cannot be
/// written, when a view is empty (that line names the page, too, counted from 1) or when there is no page; a file
/// that stood there stays as it was. Nothing that `pageAt` throws leaves this function. Threads: as its views.
XOV_EXPORT bool writePDFPages(const QString& path, const PdfPageSource& pageAt, QString* error = nullptr);

/// The same for views that are all there. None may be null.
XOV_EXPORT bool writePDFPages(const QString& path, std::span<View* const> views, QString* error = nullptr);

} // namespace xov
