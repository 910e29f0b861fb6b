#include "apps/xov/terminal/Listener.h"

#include <utility>

namespace xov::cli {

namespace {

thread_local Listener* listenerOfThread = nullptr;

} // namespace

Listener* currentListener() { return listenerOfThread; }

ListenerScope::ListenerScope(Listener& listener) : before_(std::exchange(listenerOfThread, &listener)) {}

ListenerScope::~ListenerScope() { listenerOfThread = before_; }

} // namespace xov::cli
