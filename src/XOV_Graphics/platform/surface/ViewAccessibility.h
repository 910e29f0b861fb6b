#pragma once

namespace xov {

/// From now on screen readers and other tools are told of views what View::spokenName() and spokenDescription() say,
/// and that they are charts. Once is enough for all views; more does nothing.
void installViewAccessibility();

} // namespace xov
