#pragma once

namespace xov::cli {

/// Keeps some memory for the moment when no more is given: it is handed out when `new` first fails, so that what is
/// at work can come to an end. What ends for want of memory all the same, in a place where nothing may be thrown,
/// says so in one line and leaves with the status of a failure. For programs of our own: hosts decide on this
/// themselves. May be called again, to keep the memory anew; in any thread when it was first called in the main one.
void prepareForLittleMemory();

} // namespace xov::cli
