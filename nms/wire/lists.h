// Lists as the wire has them: those that arrive partly at once and partly
// through an iterator, and those that are sent. No state; works with the lists
// and iterators of every module.
#ifndef ZK_NMS_WIRE_LISTS_H
#define ZK_NMS_WIRE_LISTS_H

#include "zk_quornex/idl/corba.h"

namespace zk::nms {

// Gives the iterator back to the agent, which keeps only so many open.
template <class IteratorVar>
class DestroyAtEnd {
 public:
  explicit DestroyAtEnd(IteratorVar& iterator) : iterator_(iterator) {}
  ~DestroyAtEnd() {
    try {
      if (!CORBA::is_nil(iterator_.in())) {
        iterator_->destroy();
      }
    } catch (const CORBA::Exception&) {
      // Agents may drop an iterator that gave its last entry; and when the
      // agent is gone, whoever is waiting for the list already knows.
    }
  }
  DestroyAtEnd(const DestroyAtEnd&) = delete;
  DestroyAtEnd& operator=(const DestroyAtEnd&) = delete;

 private:
  IteratorVar& iterator_;
};

// Calls each(entry) for all of list, then for all that iterator (which may be
// nil) still has, asking for page entries at a time and taking whatever number
// comes. The iterator is destroyed at the end, whichever way it ends. What
// next_n and each throw is passed on.
template <class ListVar, class IteratorVar, class Each>
void drain(CORBA::ULong page, ListVar& list, IteratorVar& iterator, Each each) {
  const DestroyAtEnd<IteratorVar> guard(iterator);
  bool more = !CORBA::is_nil(iterator.in());
  for (;;) {
    for (CORBA::ULong i = 0; i < list->length(); ++i) {
      each(list[i]);
    }
    if (!more) {
      return;
    }
    more = iterator->next_n(page, list.out());
    // An agent that promises more and sends nothing would keep us here for ever.
    more = more && list->length() > 0;
  }
}

// Drains what get(list, iterator) answers.
template <class ListVar, class IteratorVar, class Get, class Each>
void drainAnswer(CORBA::ULong page, Get get, Each each) {
  ListVar list;
  IteratorVar iterator;
  get(list.out(), iterator.out());
  drain(page, list, iterator, each);
}

// A list with an entry for each value, filled by fill(entry, value).
template <class List, class Values, class Fill>
List listOf(const Values& values, Fill fill) {
  List list;
  list.length(static_cast<CORBA::ULong>(values.size()));
  CORBA::ULong i = 0;
  for (const auto& value : values) {
    fill(list[i++], value);
  }
  return list;
}

}  // namespace zk::nms

#endif
