#pragma once

#include "apps/xov/inputs/ColumnFile.h"
#include "apps/xov/terminal/ThreadScope.h"

#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <functional>
#include <string>

namespace xov::cli {

/// What commands find in place of files where they are run within a program that has it in memory. Each is asked for
/// once a run, since what is done to records changes them; an empty function has none.
struct GivenInputs {
  std::function<SeismogramArray()> records;
  std::function<ColumnData()> columns;
};

/// The argument that stands for them.
inline constexpr char kGivenInput[] = "given:";

/// While this lives, the thread that it was made in is given these.
using GivenInputsScope = ThreadScope<GivenInputs>;

/// What is given in this thread; at first nothing.
inline const GivenInputs& givenInputs() { return GivenInputsScope::current(); }

} // namespace xov::cli
