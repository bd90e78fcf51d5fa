// Those who send the mutated messages: strangers, and members who have logged in.
#ifndef ZK_TESTS_RELIABILITY_ATTACKERS_H
#define ZK_TESTS_RELIABILITY_ATTACKERS_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/agent/support/rawclient.h"
#include "tests/agent/support/runningagent.h"
#include "tests/reliability/mutator.h"
#include "tests/reliability/requests.h"

namespace zk::test {

// How often the agent answered what; "hung up" for the connections it ended. For
// one thread.
using Answers = std::map<std::string, unsigned long>;

// A connection that waits for no answer, and is made again when it has ended. For
// one thread.
class Stream {
 public:
  Stream(unsigned short port, const char* from) : port_(port), from_(from) {}
  ~Stream() { end(); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  // Sends what the agent takes within a second, and counts what it says meanwhile.
  void send(const std::string& bytes, Answers& answers);
  void end();

 private:
  bool connectAgain();
  bool read(Answers& answers);  // false at the end of the connection

  const unsigned short port_;
  const std::string from_;
  int socket_ = -1;
  std::string received_;
};

// The keys of all objects that one login leads to. The session ends with this.
class Membership {
 public:
  explicit Membership(const RunningAgent& agent);
  ~Membership();
  Membership(const Membership&) = delete;
  Membership& operator=(const Membership&) = delete;

  struct Object {
    std::string kind;
    std::string key;
  };
  const std::vector<Object>& objects() const { return objects_; }

 private:
  void add(const std::string& kind, CORBA::Object_ptr object);
  void addManagers();
  void addChannel();

  ReachableNms nms_;
  emsSession::EmsSession_I_var session_;
  std::vector<Membership::Object> objects_;
};

// For one thread.
class Attacker {
 public:
  // A stranger has no keys but the one that everybody knows.
  Attacker(const RunningAgent& agent, std::uint64_t seed, bool isMember);

  // One message, or a few that belong together.
  void step();
  const Answers& answers() const { return answers_; }

 private:
  void logIn();
  void ask(const Membership::Object& object, const std::string& operation);
  Membership::Object target();
  std::string operationOf(const Membership::Object& object);

  const RunningAgent& agent_;
  const bool isMember_;
  Chance chance_;
  Requests requests_{chance_};
  Mutator mutator_{chance_};
  Stream stream_;
  std::unique_ptr<RawClient> asking_;
  std::unique_ptr<Membership> membership_;
  std::set<std::string> unknown_;  // operations that an object of the kind has not
  unsigned long steps_ = 0;
  Answers answers_;
};

}  // namespace zk::test

#endif
