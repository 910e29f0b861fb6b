#include "apps/xov/output/PlotReceiver.h"

#include <utility>

namespace xov::cli {

namespace {

thread_local PlotReceiver* receiverOfThread = nullptr;

} // namespace

void PlotReceiver::keep(std::shared_ptr<const void> /*shown*/) {}

PlotReceiver* currentPlotReceiver() { return receiverOfThread; }

PlotReceiverScope::PlotReceiverScope(PlotReceiver& receiver) : before_(std::exchange(receiverOfThread, &receiver)) {}

PlotReceiverScope::~PlotReceiverScope() { receiverOfThread = before_; }

} // namespace xov::cli
