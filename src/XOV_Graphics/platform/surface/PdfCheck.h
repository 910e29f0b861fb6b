#pragma once

#include <QByteArray>
#include <QString>

namespace xov {

/// What is not whole about a PDF file of one page as Qt writes it, in a few words; empty where the table leads to
/// every object, every stream has the length that is said of it and unpacks to what it is to hold, and there is one
/// page. Qt says nothing of a stream that it had no memory for. Throws std::bad_alloc.
QString pdfFault(const QByteArray& file);

} // namespace xov
