#include "nms/commands/watchoptions.h"

#include <CLI/CLI.hpp>

namespace zk::nms {

void declareWatch(CLI::App& app, WatchSettings& settings) {
  app.add_option("--timeout", settings.seconds,
                 "Seconds to watch; for ever without it. (Before the command's name, --timeout is "
                 "the limit for one call to the agent)")
      ->check(CLI::Range(0.001, 31536000.0))
      ->option_text("SECONDS");
  app.add_option("--ping", settings.ping, "Seconds between checks that the agent still serves")
      ->check(CLI::Range(1U, 86400U))
      ->type_name("SECONDS")
      ->capture_default_str();
  app.add_flag_callback(
      "--no-reconnect", [&settings] { settings.reconnect = false; },
      "End with 2 when the session is lost, instead of logging in again");
}

void declareTypes(CLI::App& app, Wishes& wishes) {
  app.add_option("--type", wishes.types,
                 "Events of this type only, as in NT_ALARM; repeat it for more types")
      ->option_text("TYPE")
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->check([](const std::string& type) {
        return type.empty() ? std::string("an empty text is no type") : std::string();
      });
}

void declareDelivery(CLI::App& app, Wishes& wishes) {
  CLI::Option* pull = app.add_flag_callback(
      "--pull", [&wishes] { wishes.delivery = Delivery::kPull; },
      "Fetch the events instead of having the agent call back");
  app.add_flag_callback(
         "--structured", [&wishes] { wishes.delivery = Delivery::kPushOneByOne; },
         "Have the agent bring events one by one instead of several at a time")
      ->excludes(pull);
}

CLI::Option* declareCount(CLI::App& app, unsigned& count) {
  return app.add_option("--count", count, "End after so many")
      ->check(CLI::Range(1U, 4000000000U))
      ->option_text("N");
}

void conclude(const Watch& watch, Watch::End end, unsigned came, unsigned count) {
  if (watch.lossy()) {
    throw EventsLostError("events were lost: what was written is not all that happened");
  }
  if (end == Watch::End::kTimeIsUp && count > 0) {
    throw TimedOutError("the time is up: " + std::to_string(came) + " of " + std::to_string(count) +
                        " came");
  }
}

}  // namespace zk::nms
