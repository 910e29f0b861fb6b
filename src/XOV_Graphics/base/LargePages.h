#pragma once

#include <cstddef>

namespace xov {

/// Asks the system to back memory that is going to be filled as a whole by large pages, where it has them: what it
/// takes to get 100 MB in small ones is as long as to fill it twice. Contents and size stay as they are.
void askForLargePages(void* start, std::size_t bytes);

/// Lets the system take memory back when it runs short; whole pages of it then hold zeros when they are used again.
void offerToSystem(void* start, std::size_t bytes);

} // namespace xov
