// Memory for the message blocks of one client's queue.
#ifndef ZK_MESSAGES_BLOCKPOOL_H
#define ZK_MESSAGES_BLOCKPOOL_H

#include <ace/Malloc_Allocator.h>

#include <cstddef>
#include <mutex>

namespace NS_QUORCORBA {

// Hands out pieces big enough for a message block or a data block and keeps
// some of those given back, so that a queue in steady flow allocates nothing.
// Blocks are taken on the pushing thread and given back on the agent's: locks
// internally. Outlives every block taken from it.
class BlockPool : public ACE_New_Allocator {
 public:
  BlockPool() = default;
  ~BlockPool() override;
  BlockPool(const BlockPool&) = delete;
  BlockPool& operator=(const BlockPool&) = delete;

  // Null, with errno ENOMEM, when there is no memory or size is too large.
  void* malloc(std::size_t size) override;
  void free(void* piece) override;

 private:
  // A longer backlog is rare: its memory goes back to the process.
  static constexpr std::size_t MOST_SPARE = 128;

  struct Spare {
    Spare* next;
  };

  std::mutex mutex_;
  Spare* spare_ = nullptr;      // guarded by mutex_
  std::size_t spareCount_ = 0;  // guarded by mutex_
};

}  // namespace NS_QUORCORBA

#endif
