// CORBA sequences that grow.
#ifndef ZK_AGENT_BASE_SEQUENCES_H
#define ZK_AGENT_BASE_SEQUENCES_H

#include <string>
#include <utility>

#include "zk_quornex/idl/names.h"

namespace zk::agent {

// Adds a copy of entry; a string is given as what CORBA::string_dup made. A list
// that was made with room for its entries is not moved.
template <class List, class Entry>
void append(List& list, Entry&& entry) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last] = std::forward<Entry>(entry);
}

// For lists of names with text values.
template <class List>
void appendPair(List& list, const char* name, const std::string& value) {
  const CORBA::ULong last = list.length();
  list.length(last + 1);
  list[last].name = CORBA::string_dup(name);
  list[last].value = CORBA::string_dup(value.c_str());
}

}  // namespace zk::agent

#endif
