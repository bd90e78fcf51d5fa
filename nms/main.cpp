#include <csignal>
#include <iostream>

#include "nms/commands/program.h"
#include "nms/wire/interrupts.h"

int main(int argc, char** argv) {
  // A reader that goes away (zk-nms me | head) shows as a failed write; dying
  // of the signal would leave the session open at the agent.
  std::signal(SIGPIPE, SIG_IGN);
  zk::nms::SignalInterrupts interrupts;
  return zk::nms::run(argc, argv, {std::cout, std::cerr, interrupts});
}
