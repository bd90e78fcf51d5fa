// What stands between the network and the ORB: who may be connected, which
// requests may be served. The ORB's own decoder trusts what it reads, so it reads
// only what passed here.
#ifndef ZK_AGENT_ORB_GUARD_H
#define ZK_AGENT_ORB_GUARD_H

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "agent/base/loglimit.h"
#include "agent/orb/connections.h"

namespace zk::agent {

// What is done with a message.
enum class Ruling {
  SERVE,
  NO_SUCH_OBJECT,  // OBJECT_NOT_EXIST
  BAD_VALUE,       // BAD_PARAM
  DAMAGED,         // MARSHAL
  NOT_OFFERED,     // ProcessingFailureException: EXCPT_NOT_IMPLEMENTED
  HANG_UP          // MessageError, and the end of the connection
};

class Guard {
 public:
  enum class Admission { PUBLIC, MEMBER, UNKNOWN };
  // Whether an object key is everybody's, or was given out to this peer.
  using Admits = std::function<Admission(std::string_view key, const std::string& peer)>;

  static constexpr std::chrono::seconds MESSAGE_TIME{10};  // from a message's begin to its end
  static constexpr std::chrono::seconds SEND_TIME{10};     // until a client takes what it is sent
  static constexpr std::size_t LARGEST_OF_STRANGER = 64U << 10U;
  static constexpr std::size_t LARGEST_OF_MEMBER = 4U << 20U;

  Guard(Connections::Limits limits, Admits admits);

  Connections& connections() { return connections_; }

  // Nobody is let in before the opening, which is for good.
  void open();
  void awaitOpening();

  // Looks at a whole message that the connection received. What follows a
  // request's parameters is cut off; the key of a LocateRequest for an object that
  // is not there for the peer becomes one that nobody has. What is not served is
  // told in the log, now and then.
  Ruling judge(std::string& message, Connected& connection);

  // A line about this peer, unless it had one like it just before.
  void complain(const std::string& peer, const std::string& what);

 private:
  Ruling judgeRequest(std::string& message, Connected& connection);
  Ruling judgeLocateRequest(std::string& message, const Connected& connection);

  Connections connections_;
  const Admits admits_;
  Mutex mutex_;
  Condition opened_;
  bool isOpen_ ZK_GUARDED_BY(mutex_) = false;
  LogLimit log_;
};

}  // namespace zk::agent

#endif
