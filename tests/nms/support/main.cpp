// The tests' main. With --fake-agent it is an agent of its own process instead,
// one that can be lost; with --fake-events-agent FILE PORT another such.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/nms/support/fakeagent.h"
#include "tests/nms/support/orb.h"

namespace zk::test {
namespace {

CORBA::ORB_var theOrb;
PortableServer::POA_var thePoa;

void startOrb(const std::string& port) {
  char program[] = "test";
  char option[] = "-ORBendPoint";
  std::string endpoint = "giop:tcp:127.0.0.1:" + port;
  char texts[] = "-ORBnativeCharCodeSet";
  char code[] = "UTF-8";
  char* argv[] = {program, option, endpoint.data(), texts, code, nullptr};
  int argc = 5;
  theOrb = CORBA::ORB_init(argc, argv);
}

}  // namespace

CORBA::ORB_ptr testOrb() { return theOrb.in(); }

PortableServer::POA_ptr testRootPoa() {
  if (CORBA::is_nil(thePoa.in())) {
    CORBA::Object_var object = theOrb->resolve_initial_references("RootPOA");
    thePoa = PortableServer::POA::_narrow(object.in());
    PortableServer::POAManager_var manager = thePoa->the_POAManager();
    manager->activate();
  }
  return thePoa.in();
}

}  // namespace zk::test

int main(int argc, char** argv) {
  const bool eventsAgent = argc == 4 && std::strcmp(argv[1], "--fake-events-agent") == 0;
  zk::test::startOrb(eventsAgent ? argv[3] : "");
  if (eventsAgent) {
    return zk::test::runEventsAgent(argv[2]);
  }
  if (argc == 3 && std::strcmp(argv[1], "--fake-agent") == 0) {
    return zk::test::runDyingAgent(argv[2]);
  }
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  zk::test::thePoa = PortableServer::POA::_nil();
  zk::test::theOrb->destroy();
  return result;
}
