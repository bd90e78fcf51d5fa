#include "agent/ems/emsrequest.h"

#include <utility>

namespace zk::agent {

namespace {

thread_local const EmsRequest* innermost = nullptr;

}  // namespace

EmsRequest::EmsRequest(ObjectKey target, std::string text, bool enforceUniqueness)
    : target_(std::move(target)),
      text_(std::move(text)),
      enforceUniqueness_(enforceUniqueness),
      outer_(std::exchange(innermost, this)) {}

EmsRequest::~EmsRequest() { innermost = outer_; }

const EmsRequest* EmsRequest::current() { return innermost; }

}  // namespace zk::agent
