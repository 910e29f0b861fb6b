#include "apps/xov/inputs/GivenInputs.h"

#include <utility>

namespace xov::cli {

namespace {

thread_local GivenInputs inputsOfThread;

} // namespace

const GivenInputs& givenInputs() { return inputsOfThread; }

GivenInputsScope::GivenInputsScope(GivenInputs inputs) : before_(std::exchange(inputsOfThread, std::move(inputs))) {}

GivenInputsScope::~GivenInputsScope() { inputsOfThread = std::move(before_); }

} // namespace xov::cli
