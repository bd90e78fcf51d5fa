// The answer to a query, handed out page by page: how many entries there were
// when it was asked, and how to fetch some of them now.
#ifndef ZK_AGENT_MANAGERS_PAGEDLIST_H
#define ZK_AGENT_MANAGERS_PAGEDLIST_H

#include <algorithm>
#include <cstddef>
#include <functional>
#include <mutex>
#include <utility>

#include "zk_quornex/platform/threadsafety.h"

namespace zk::agent {

template <class List>
struct PagedList {
  std::size_t length = 0;
  // Appends the entries [from, from + count) that are still there. Called with a
  // range within length, by one thread at a time.
  std::function<void(std::size_t from, std::size_t count, List& out)> append;
};

// A place in such an answer. Safe on any thread; each entry is handed out once.
template <class List>
class Cursor {
 public:
  explicit Cursor(PagedList<List> list) : list_(std::move(list)) {}

  // Appends up to count further entries to out: fewer only when no more are
  // left, for entries that are gone by now are passed over. Returns whether more
  // remain. What fetching throws leaves the place as it was.
  bool take(std::size_t count, List& out) {
    const MutexLock lock(mutex_);
    const std::size_t wanted = out.length() + count;
    std::size_t next = next_;
    while (out.length() < wanted && next < list_.length) {
      const std::size_t step = std::min(wanted - out.length(), list_.length - next);
      list_.append(next, step, out);
      next += step;
    }
    next_ = next;
    return next_ < list_.length;
  }

  // Entries of the whole answer, those already handed out included.
  std::size_t length() const { return list_.length; }

 private:
  const PagedList<List> list_;
  Mutex mutex_;
  std::size_t next_ ZK_GUARDED_BY(mutex_) = 0;
};

}  // namespace zk::agent

#endif
