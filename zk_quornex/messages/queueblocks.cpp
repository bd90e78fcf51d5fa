#include "zk_quornex/messages/queueblocks.h"

#include <ace/Malloc_Allocator.h>

#include <new>

namespace NS_QUORCORBA {

namespace {

// A message block and its data block share one piece of memory, since each
// would be freed apart. Releasing a message block ends it first and its data
// block last; so the data block, which comes first in the piece, frees it.
struct Piece {
  alignas(ACE_Data_Block) std::byte data[sizeof(ACE_Data_Block)];
  alignas(ACE_Message_Block) std::byte message[sizeof(ACE_Message_Block)];
};

class WholePiece : public ACE_New_Allocator {
 public:
  void free(void* piece) override { delete static_cast<Piece*>(piece); }
};

class PartOfPiece : public ACE_New_Allocator {
 public:
  void free(void*) override {}
};

ACE_Message_Block* build(char* content) {
  // Never destroyed: blocks may be released while the process ends.
  static auto& wholePiece = *new WholePiece;
  static auto& partOfPiece = *new PartOfPiece;

  auto* piece = new (std::nothrow) Piece;
  if (piece == nullptr) {
    return nullptr;
  }
  auto* data =
      new (piece->data) ACE_Data_Block(1, ACE_Message_Block::MB_DATA, content, nullptr, nullptr,
                                       ACE_Message_Block::DONT_DELETE, &wholePiece);
  return new (piece->message) ACE_Message_Block(data, 0, &partOfPiece);
}

}  // namespace

QueueBlocks::~QueueBlocks() {
  while (ACE_Message_Block* block = takeSpare()) {
    block->release();
  }
}

ACE_Message_Block* QueueBlocks::make(char* content) {
  ACE_Message_Block* block = takeSpare();
  if (block == nullptr) {
    return build(content);
  }
  block->base(content, 1, ACE_Message_Block::DONT_DELETE);
  return block;
}

void QueueBlocks::giveBack(ACE_Message_Block* block) {
  const std::size_t given = givenCount_.load(std::memory_order_relaxed);
  if (given - takenCount_.load(std::memory_order_acquire) == MOST_SPARE) {
    block->release();
    return;
  }
  spare_[given % MOST_SPARE] = block;
  givenCount_.store(given + 1, std::memory_order_release);
}

ACE_Message_Block* QueueBlocks::takeSpare() {
  const std::size_t taken = takenCount_.load(std::memory_order_relaxed);
  if (taken == givenCount_.load(std::memory_order_acquire)) {
    return nullptr;
  }
  ACE_Message_Block* block = spare_[taken % MOST_SPARE];
  takenCount_.store(taken + 1, std::memory_order_release);
  return block;
}

}  // namespace NS_QUORCORBA
