// A real agent, this process as the NMS that changes things, and real clients
// that watch.
#ifndef ZK_TESTS_SYSTEM_NETWORK_H
#define ZK_TESTS_SYSTEM_NETWORK_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/agent/support/names.h"
#include "tests/agent/support/runningagent.h"

namespace zk::test {

// One zk-nms process.
class Client {
 public:
  Client(const RunningAgent& agent, const std::string& name,
         const std::vector<std::string>& arguments)
      : process_(ZK_NMS_PROGRAM, withAgent(agent, arguments), agent.folder.file(name)) {}

  Process& process() { return process_; }

  // The texts that the attribute changes it printed ended in, one a line.
  std::vector<std::string> labels() const;

  std::string output() const { return process_.output(); }

 private:
  static std::vector<std::string> withAgent(const RunningAgent& agent,
                                            const std::vector<std::string>& arguments) {
    std::vector<std::string> all = {"--agent", "127.0.0.1:" + std::to_string(agent.port), "-o",
                                    "json"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
  }

  Process process_;
};

inline std::vector<std::string> Client::labels() const {
  const std::string key = "\"summary\": \"userLabel=";
  const std::string text = output();
  std::vector<std::string> found;
  for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at)) {
    at += key.size();
    found.push_back(text.substr(at, text.find('"', at) - at));
  }
  return found;
}

// "n-FROM" to "n-TO".
inline std::vector<std::string> labelsFromTo(int from, int to) {
  std::vector<std::string> labels;
  for (int i = from; i <= to; ++i) {
    labels.push_back("n-" + std::to_string(i));
  }
  return labels;
}

// Changes the label of one element again and again.
class Changer {
 public:
  explicit Changer(const RunningAgent& agent)
      : session_(nms_.logIn(agent)),
        manager_(managerOf<managedElementManager::ManagedElementMgr_I>(session_.in(),
                                                                       "ManagedElement")) {}

  void change(int from, int to) {
    for (const std::string& label : labelsFromTo(from, to)) {
      manager_->setUserLabel(named("ManagedElement", "1"), label.c_str(), false);
    }
  }

  emsSession::EmsSession_I_ptr session() { return session_.in(); }

 private:
  ReachableNms nms_;
  emsSession::EmsSession_I_var session_;
  managedElementManager::ManagedElementMgr_I_var manager_;
};

// Whether each client has seen something: its subscription is in place. Changes
// the element until they have; numbers below 0, so that these are told apart.
inline bool allWatching(Changer& changer, const std::vector<std::unique_ptr<Client>>& clients) {
  int number = -1;
  return becomesTrue([&] {
    bool all = true;
    for (const auto& client : clients) {
      all = all && !client->labels().empty();
    }
    if (!all) {
      changer.change(number, number);
      --number;
    }
    return all;
  });
}

// What a client printed of the changes numbered from 1 on.
inline std::vector<std::string> counted(const Client& client) {
  std::vector<std::string> labels;
  for (const std::string& label : client.labels()) {
    if (label.compare(0, 3, "n--") != 0) {
      labels.push_back(label);
    }
  }
  return labels;
}

}  // namespace zk::test

#endif
