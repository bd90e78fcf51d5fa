// Paged lists over the inventory: a snapshot of the keys, and the records of
// some of them when they are asked for.
#ifndef ZK_AGENT_MANAGERS_LISTOF_H
#define ZK_AGENT_MANAGERS_LISTOF_H

#include <utility>
#include <vector>

#include "agent/managers/pagedlist.h"

namespace zk::agent {

// fetch gives the records of some keys, in order, without those that are gone;
// add appends one record to the answer.
template <class List, class Key, class Fetch, class Add>
PagedList<List> listOf(std::vector<Key> keys, Fetch fetch, Add add) {
  const std::size_t length = keys.size();
  return {length,
          [keys = std::move(keys), fetch, add](std::size_t from, std::size_t count, List& out) {
            const auto first = keys.begin() + static_cast<std::ptrdiff_t>(from);
            const std::vector<Key> some(first, first + static_cast<std::ptrdiff_t>(count));
            for (const auto& record : fetch(some)) {
              add(out, record);
            }
          }};
}

}  // namespace zk::agent

#endif
