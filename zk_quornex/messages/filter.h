// What a client of the event cache brings with it: its filter and its exception
// handler, both implemented by the agent. The cache adopts them, deletes them,
// and calls a filter by one thread at a time.
#ifndef ZK_MESSAGES_FILTER_H
#define ZK_MESSAGES_FILTER_H

#include <string>
#include <vector>

#include "zk_quornex/platform/timechange.h"

namespace NS_QUORCORBA {

// Decides which events a client gets. What the criteria mean is the
// implementation's business; the cache only asks whether there are any. What a
// filter throws while events are distributed leaves its message class blocked.
class NXMessageFilter {
 public:
  // Whether to drop the event for this client. context is what came with the
  // push. Not asked while the filter is empty.
  virtual bool isFiltered(const void* context) = 0;

  // Reports the criteria into the arguments. A filter that reports no element
  // and no valid time is empty and lets everything pass. Called for every event
  // offered to the client: keep it cheap.
  virtual int GetFilter(std::vector<long>&, std::vector<std::string>&, std::vector<long>&,
                        std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                        std::vector<std::string>&) = 0;

  virtual int suspendFilter(std::vector<long>&, std::vector<long>&, std::vector<long>&,
                            std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                            std::vector<std::string>&) = 0;
  virtual int resumeFilter(std::vector<long>&, std::vector<long>&, std::vector<long>&,
                           std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                           std::vector<std::string>&) = 0;
  virtual int cancelFilter(std::vector<long>&, std::vector<long>&, std::vector<long>&,
                           std::vector<long>&, stDateTimeType& start, stDateTimeType& end,
                           std::vector<std::string>&) = 0;

  virtual ~NXMessageFilter() = default;
};

// Kept with a client for the agent's own use; the cache only deletes it.
class NXMsgExceptionHanle {
 public:
  virtual ~NXMsgExceptionHanle() = default;
};

}  // namespace NS_QUORCORBA

#endif
