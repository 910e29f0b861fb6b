#include "apps/xov/CommandTable.h"

#include "apps/xov/DrumCommand.h"
#include "apps/xov/FkCommand.h"
#include "apps/xov/GridCommand.h"
#include "apps/xov/HistCommand.h"
#include "apps/xov/InfoCommand.h"
#include "apps/xov/MapCommand.h"
#include "apps/xov/MonitorCommand.h"
#include "apps/xov/PanelsCommand.h"
#include "apps/xov/ResourcesCommand.h"
#include "apps/xov/ScatterCommand.h"
#include "apps/xov/SectionCommand.h"
#include "apps/xov/StackCommand.h"
#include "apps/xov/ThreeCommand.h"
#include "apps/xov/XyCommand.h"

namespace xov::cli {

namespace {

template <typename T>
std::unique_ptr<Command> make() {
  return std::make_unique<T>();
}

// A new command: its own file, and a row here.
constexpr CommandRow kCommands[] = {
    {"section", "Draw seismograms as a record section", make<SectionCommand>},
    {"panels", "Draw pairs of seismograms in small panels", make<PanelsCommand>},
    {"stack", "Draw seismograms over each other or in bands", make<StackCommand>},
    {"three", "Draw the three components of a station", make<ThreeCommand>},
    {"drum", "Draw a continuous recording in rows", make<DrumCommand>},
    {"monitor", "Play recordings on a real-time display", make<MonitorCommand>},
    {"xy", "Draw two columns of numbers as a line", make<XyCommand>},
    {"scatter", "Draw two columns of numbers as circles", make<ScatterCommand>},
    {"hist", "Draw or print a column of numbers as a histogram", make<HistCommand>},
    {"map", "Draw events, stations, vectors and plate boundaries on a map", make<MapCommand>},
    {"grid", "Draw a grid of values as a coloured picture", make<GridCommand>},
    {"fk", "Draw the beam power of an array over slowness", make<FkCommand>},
    {"info", "List what seismogram files hold", make<InfoCommand>},
    {"resources", "List base maps and plate boundaries, or import boundaries", make<ResourcesCommand>},
};

} // namespace

std::span<const CommandRow> commandTable() { return kCommands; }

} // namespace xov::cli
