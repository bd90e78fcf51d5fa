// What the commands that watch events have in common on the command line.
#ifndef ZK_NMS_COMMANDS_WATCHOPTIONS_H
#define ZK_NMS_COMMANDS_WATCHOPTIONS_H

#include "nms/commands/watch.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace zk::nms {

// --timeout, --no-reconnect, --ping. settings must outlive app.
void declareWatch(CLI::App& app, WatchSettings& settings);

// --type.
void declareTypes(CLI::App& app, Wishes& wishes);

// --pull, --structured.
void declareDelivery(CLI::App& app, Wishes& wishes);

// --count. The option is app's.
CLI::Option* declareCount(CLI::App& app, unsigned& count);

// The exit status of a watch for count things (0: for no number of them), of
// which this many came: throws TimedOutError or EventsLostError, or returns.
void conclude(const Watch& watch, Watch::End end, unsigned came, unsigned count);

}  // namespace zk::nms

#endif
