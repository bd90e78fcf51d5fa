// What the calling thread's request is about, for an EMS whose services take no
// arguments.
#ifndef ZK_AGENT_EMS_EMSREQUEST_H
#define ZK_AGENT_EMS_EMSREQUEST_H

#include <string>

#include "agent/ems/records.h"

namespace zk::agent {

// A servant holds one of these on its stack while it calls the library's
// setters. They nest: the innermost of the thread counts, and the one outside
// it counts again when it ends. Lives and ends on one thread.
class EmsRequest {
 public:
  EmsRequest(ObjectKey target, std::string text, bool enforceUniqueness = false);
  ~EmsRequest();
  EmsRequest(const EmsRequest&) = delete;
  EmsRequest& operator=(const EmsRequest&) = delete;

  const ObjectKey& target() const { return target_; }
  const std::string& text() const { return text_; }
  bool enforceUniqueness() const { return enforceUniqueness_; }

  // The calling thread's, or null.
  static const EmsRequest* current();

 private:
  ObjectKey target_;
  std::string text_;
  bool enforceUniqueness_;
  const EmsRequest* outer_;
};

}  // namespace zk::agent

#endif
