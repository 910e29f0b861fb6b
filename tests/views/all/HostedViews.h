// Every view that derives from XOVView with what a careless host hands to it.
#pragma once

#include "XOV_Graphics/views/base/XOVView.h"
#include "tests/views/all/RandomHost.h"

#include <any>
#include <cstddef>
#include <memory>
#include <span>

namespace xov::testing {

/// A view with the host's data behind it.
struct HostedView {
  std::unique_ptr<View> view;
  std::any data; ///< what the view only refers to
};

struct ViewMaker {
  const char* name; ///< of the class
  HostedView (*make)(RandomHost& host);
};

std::span<const ViewMaker> viewMakers();

/// More than this no view draws, whatever its limits and options are: what a host hands it to be named, such as 60
/// labels of a map and 300 captions, is a small part of it.
inline constexpr std::size_t kMostTexts = 3000;
inline constexpr std::size_t kMostItems = 20000;

/// Asks a view what only those of its kind tell about a place.
void askOfKind(const XOVView& view, const QRectF& box, RandomHost& host);

} // namespace xov::testing
