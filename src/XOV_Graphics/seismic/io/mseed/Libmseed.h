#pragma once

// libmseed names a type `flag`, which the parameters of that name in Qt's headers would then shadow.
#define flag MiniSeedFlag
#include <libmseed.h>
#undef flag
