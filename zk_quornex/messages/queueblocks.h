// The message blocks of one client's queue.
#ifndef ZK_MESSAGES_QUEUEBLOCKS_H
#define ZK_MESSAGES_QUEUEBLOCKS_H

#include <ace/Message_Block.h>

#include <array>
#include <atomic>
#include <cstddef>

namespace NS_QUORCORBA {

// Makes the blocks and uses them again, so that a queue in steady flow neither
// allocates nor builds any. One thread at a time may make blocks and one may
// give them back; between the two there is no lock.
class QueueBlocks {
 public:
  QueueBlocks() = default;
  ~QueueBlocks();
  QueueBlocks(const QueueBlocks&) = delete;
  QueueBlocks& operator=(const QueueBlocks&) = delete;

  // A block over content, which it does not own: size 1, priority 0. The
  // caller's, to give back here or to release. Null when there is no memory.
  ACE_Message_Block* make(char* content);

  // Adopts a block that has left its queue.
  void giveBack(ACE_Message_Block* block);

 private:
  // A longer backlog is rare: its memory goes back to the process.
  static constexpr std::size_t MOST_SPARE = 128;

  ACE_Message_Block* takeSpare();

  std::array<ACE_Message_Block*, MOST_SPARE> spare_{};  // a ring
  std::atomic<std::size_t> takenCount_{0};              // of all time; the maker's
  std::atomic<std::size_t> givenCount_{0};              // of all time; the giver's
};

}  // namespace NS_QUORCORBA

#endif
