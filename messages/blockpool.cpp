#include "messages/blockpool.h"

#include <ace/Message_Block.h>

#include <algorithm>
#include <cerrno>
#include <new>

namespace NS_QUORCORBA {

namespace {

constexpr std::size_t PIECE = std::max(sizeof(ACE_Message_Block), sizeof(ACE_Data_Block));

}  // namespace

BlockPool::~BlockPool() {
  while (spare_ != nullptr) {
    Spare* next = spare_->next;
    ::operator delete(spare_);
    spare_ = next;
  }
}

void* BlockPool::malloc(std::size_t size) {
  if (size > PIECE) {
    errno = ENOMEM;
    return nullptr;
  }
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    if (Spare* piece = spare_) {
      spare_ = piece->next;
      --spareCount_;
      return piece;
    }
  }
  void* piece = ::operator new(PIECE, std::nothrow);
  if (piece == nullptr) {
    errno = ENOMEM;
  }
  return piece;
}

void BlockPool::free(void* piece) {
  if (piece == nullptr) {
    return;
  }
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    if (spareCount_ < MOST_SPARE) {
      spare_ = new (piece) Spare{spare_};
      ++spareCount_;
      return;
    }
  }
  ::operator delete(piece);
}

}  // namespace NS_QUORCORBA
