#include "apps/xov/commands/CommandTable.h"

#include "apps/xov/commands/ConvertCommand.h"
#include "apps/xov/commands/DeskCommand.h"
#include "apps/xov/commands/DrumCommand.h"
#include "apps/xov/commands/FkCommand.h"
#include "apps/xov/commands/GridCommand.h"
#include "apps/xov/commands/HistCommand.h"
#include "apps/xov/commands/InfoCommand.h"
#include "apps/xov/commands/MapCommand.h"
#include "apps/xov/commands/MechanismCommand.h"
#include "apps/xov/commands/MonitorCommand.h"
#include "apps/xov/commands/MotionCommand.h"
#include "apps/xov/commands/PanelsCommand.h"
#include "apps/xov/commands/PpsdCommand.h"
#include "apps/xov/commands/ResourcesCommand.h"
#include "apps/xov/commands/ScatterCommand.h"
#include "apps/xov/commands/SectionCommand.h"
#include "apps/xov/commands/ServeCommand.h"
#include "apps/xov/commands/SpectrogramCommand.h"
#include "apps/xov/commands/SpectrumCommand.h"
#include "apps/xov/commands/StackCommand.h"
#include "apps/xov/commands/ThreeCommand.h"
#include "apps/xov/commands/XyCommand.h"

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
    {"motion", "Draw the path of the ground at a station", make<MotionCommand>},
    {"drum", "Draw a continuous recording in rows", make<DrumCommand>},
    {"monitor", "Play recordings on a real-time display", make<MonitorCommand>},
    {"spectrogram", "Draw the power of a recording over time and frequency", make<SpectrogramCommand>},
    {"spectrum", "Draw power spectra of recordings over frequency", make<SpectrumCommand>},
    {"ppsd", "Draw how often the noise of a recording has which power", make<PpsdCommand>},
    {"xy", "Draw two columns of numbers as a line", make<XyCommand>},
    {"scatter", "Draw two columns of numbers as circles", make<ScatterCommand>},
    {"hist", "Draw or print a column of numbers as a histogram", make<HistCommand>},
    {"map", "Draw events, stations, vectors and plate boundaries on a map", make<MapCommand>},
    {"mechanism", "Draw focal mechanisms as beach balls", make<MechanismCommand>},
    {"grid", "Draw a grid of values as a coloured picture", make<GridCommand>},
    {"fk", "Draw the beam power of an array over slowness", make<FkCommand>},
    {"desk", "Open a window with plots beside each other", make<DeskCommand>},
    {"convert", "Write seismograms as SAC or miniSEED files", make<ConvertCommand>},
    {"serve", "Play miniSEED files as a SeedLink server", make<ServeCommand>},
    {"info", "List what seismogram files hold", make<InfoCommand>},
    {"resources", "List base maps and plate boundaries, or import boundaries", make<ResourcesCommand>},
};

} // namespace

std::span<const CommandRow> commandTable() { return kCommands; }

} // namespace xov::cli
