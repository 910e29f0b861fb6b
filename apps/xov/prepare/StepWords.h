#pragma once

#include <string>
#include <vector>

namespace xov::cli {

/// The words of a command line in which those options that take a word and some numbers behind it, or a word that may
/// be missing, have one value each: "--filter bandpass 1 10 a.SAC" becomes "--filter", "bandpass 1 10", "a.SAC", and
/// "--taper a.SAC" becomes "--taper", "0.05", "a.SAC". The parser knows no values whose number depends on the first
/// of them. Words behind "--" stay as they are.
std::vector<std::string> withStepValues(const std::vector<std::string>& words);

} // namespace xov::cli
