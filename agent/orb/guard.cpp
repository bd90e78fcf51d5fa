#include "agent/orb/guard.h"

#include <algorithm>
#include <optional>

#include "agent/base/log.h"
#include "agent/orb/messagereader.h"
#include "agent/orb/request.h"
#include "agent/orb/screening.h"
#include "agent/orb/unserved.h"

namespace zk::agent {

namespace {

constexpr std::chrono::seconds LOG_PERIOD{10};
constexpr std::size_t MOST_LOG_SUBJECTS = 256;

GiopType typeOf(const std::string& message) { return static_cast<GiopType>(message[7]); }

const char* textOf(Ruling ruling) {
  switch (ruling) {
    case Ruling::NO_SUCH_OBJECT:
      return "OBJECT_NOT_EXIST";
    case Ruling::BAD_VALUE:
      return "BAD_PARAM";
    case Ruling::DAMAGED:
      return "MARSHAL";
    default:
      return "";
  }
}

Ruling rulingOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::PASS:
      return Ruling::SERVE;
    case Verdict::BAD_PARAM:
      return Ruling::BAD_VALUE;
    default:
      return Ruling::DAMAGED;
  }
}

}  // namespace

Guard::Guard(Connections::Limits limits, Admits admits)
    : connections_(limits), admits_(std::move(admits)), log_(LOG_PERIOD, MOST_LOG_SUBJECTS) {}

void Guard::open() {
  const MutexLock lock(mutex_);
  isOpen_ = true;
  opened_.notifyAll();
}

void Guard::awaitOpening() {
  const MutexLock lock(mutex_);
  while (!isOpen_) {
    opened_.wait(mutex_);
  }
}

Ruling Guard::judge(std::string& message, Connected& connection) {
  return typeOf(message) == GiopType::REQUEST ? judgeRequest(message, connection)
                                              : judgeLocateRequest(message, connection);
}

void Guard::complain(const std::string& peer, const std::string& what) {
  log_.logFailure(peer + what, peer + ": " + what);
}

Ruling Guard::judgeRequest(std::string& message, Connected& connection) {
  const std::optional<Request> request = readRequest(message);
  if (!request) {
    return Ruling::HANG_UP;
  }
  const Admission admission = admits_(request->key, connection.peer());
  if (admission == Admission::UNKNOWN) {
    return Ruling::NO_SUCH_OBJECT;  // any late call after a session's end: not worth a line
  }
  if (admission == Admission::MEMBER) {
    connection.belongs();
    if (isUnserved(request->operation)) {
      return Ruling::NOT_OFFERED;
    }
  }
  const Ruling ruling = rulingOf(screen(message, *request));
  if (ruling != Ruling::SERVE) {
    complain(connection.peer(), "refused " + printable(std::string(request->operation).c_str()) +
                                    ": " + textOf(ruling));
  }
  return ruling;
}

Ruling Guard::judgeLocateRequest(std::string& message, const Connected& connection) {
  const std::optional<Request> request = readLocateRequest(message);
  if (!request || request->key.empty()) {
    return Ruling::HANG_UP;
  }
  if (admits_(request->key, connection.peer()) == Admission::UNKNOWN) {
    const auto begin = request->key.data() - message.data();
    std::fill_n(message.begin() + begin, request->key.size(), 'x');
  }
  return Ruling::SERVE;
}

}  // namespace zk::agent
