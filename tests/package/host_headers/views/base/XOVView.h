// A host's own file with the name of one of the library's.
#pragma once
#include "platform/Export.h"
namespace host {
struct HOST_EXPORT XOVView {
  int answer = 42;
};
} // namespace host
