#pragma once

#include <QWidget>

#include <XOV_Graphics/platform/View.h>
#include <functional>
#include <vector>

class QPagedPaintDevice;

namespace xov::desk {

/// The views to be printed, a page each, as they are when it is asked.
using ViewsToPrint = std::function<std::vector<View*>()>;

/// Draws each view on a page of its own, as large as the page allows without being stretched, in the middle. False
/// where the device does not take a page.
bool paintPages(QPagedPaintDevice& device, const std::vector<View*>& views);

/// Asks for a printer and prints, without blocking.
void print(QWidget* window, const ViewsToPrint& views);
/// Shows what print() would print, and lets the user print it.
void showPrintPreview(QWidget* window, const ViewsToPrint& views);

} // namespace xov::desk
