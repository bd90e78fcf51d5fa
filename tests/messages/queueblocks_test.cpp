// The blocks of a client's queue: what they stand for, and that they come back.
#include "zk_quornex/messages/queueblocks.h"

#include <gtest/gtest.h>

#include <ace/Task.h>

#include <thread>
#include <vector>

namespace zk::test {
namespace {

using NS_QUORCORBA::QueueBlocks;

constexpr int MOST_SPARE = 128;

char content[2];

void expectBlockOver(ACE_Message_Block& block, const char* expected) {
  EXPECT_EQ(block.base(), expected);
  EXPECT_EQ(block.rd_ptr(), expected);
  EXPECT_EQ(block.size(), 1U);
  EXPECT_EQ(block.msg_priority(), 0U);
  EXPECT_EQ(block.msg_type(), ACE_Message_Block::MB_DATA);
  EXPECT_EQ(block.next(), nullptr);
  EXPECT_EQ(block.prev(), nullptr);
  EXPECT_EQ(block.cont(), nullptr);
}

TEST(QueueBlocks, newBlockStandsForItsContent) {
  QueueBlocks blocks;
  ACE_Message_Block* block = blocks.make(content);
  ASSERT_NE(block, nullptr);
  expectBlockOver(*block, content);
  block->release();
}

TEST(QueueBlocks, blockGivenBackIsMadeAgainOverItsNewContent) {
  QueueBlocks blocks;
  ACE_Message_Block* first = blocks.make(content);
  blocks.giveBack(first);
  ACE_Message_Block* second = blocks.make(content + 1);
  EXPECT_EQ(second, first);
  expectBlockOver(*second, content + 1);
  second->release();
}

TEST(QueueBlocks, blockThatWentThroughAQueueIsMadeAgain) {
  QueueBlocks blocks;
  ACE_Message_Queue<ACE_MT_SYNCH> queue;
  for (int passage = 0; passage < 3; ++passage) {
    ASSERT_NE(queue.enqueue_tail(blocks.make(content)), -1);
    ASSERT_NE(queue.enqueue_tail(blocks.make(content + 1)), -1);
    for (const char* expected : {content, content + 1}) {
      ACE_Message_Block* block = nullptr;
      ASSERT_NE(queue.dequeue_head(block), -1);
      expectBlockOver(*block, expected);
      blocks.giveBack(block);
    }
    EXPECT_EQ(queue.message_bytes(), 0U);
  }
}

// A leak checker sees whether those beyond the limit are released.
TEST(QueueBlocks, keepsNoMoreThanItsLimit) {
  QueueBlocks blocks;
  std::vector<ACE_Message_Block*> made;
  made.reserve(MOST_SPARE + 3);
  for (int number = 0; number < MOST_SPARE + 3; ++number) {
    made.push_back(blocks.make(content));
  }
  for (ACE_Message_Block* block : made) {
    blocks.giveBack(block);
  }
  const std::vector<ACE_Message_Block*> kept(made.begin(), made.begin() + MOST_SPARE);
  for (ACE_Message_Block* expected : kept) {
    ACE_Message_Block* block = blocks.make(content);
    EXPECT_EQ(block, expected);
    block->release();
  }
}

TEST(QueueBlocks, takesBackABlockMadeElsewhere) {
  QueueBlocks blocks;
  auto* foreign = new ACE_Message_Block(content, 1);
  blocks.giveBack(foreign);
  ACE_Message_Block* block = blocks.make(content + 1);
  EXPECT_EQ(block, foreign);
  expectBlockOver(*block, content + 1);
  block->release();
}

TEST(QueueBlocks, oneThreadMakesWhileAnotherGivesBack) {
  constexpr int PASSAGES = 20000;
  QueueBlocks blocks;
  ACE_Message_Queue<ACE_MT_SYNCH> queue;
  std::thread maker([&] {
    for (int passage = 0; passage < PASSAGES; ++passage) {
      queue.enqueue_tail(blocks.make(content + passage % 2));
    }
  });
  int wrong = 0;
  for (int passage = 0; passage < PASSAGES; ++passage) {
    ACE_Message_Block* block = nullptr;
    queue.dequeue_head(block);
    wrong += block->base() == content + passage % 2 ? 0 : 1;
    blocks.giveBack(block);
  }
  maker.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace zk::test
