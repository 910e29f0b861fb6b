#pragma once

#include <QVariant>

#include <memory>
#include <vector>

namespace xov {

/// A list of objects of the host's own kinds, shared with it. Two items are equal when QVariant finds them equal:
/// values by their ==, pointers by their address.
using ChartItems = std::vector<QVariant>;
/// Such a list, shared; null for none.
using ChartItemList = std::shared_ptr<ChartItems>;

} // namespace xov
