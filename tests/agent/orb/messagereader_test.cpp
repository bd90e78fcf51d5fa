#include "agent/orb/messagereader.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/agent/support/rawclient.h"

namespace {

using zk::agent::MessageReader;
using zk::test::cancel;
using zk::test::CdrText;
using zk::test::giop;
using zk::test::locate;
using zk::test::request;
using zk::test::requestBody;
using Step = MessageReader::Step;

constexpr std::size_t LARGEST = 4096;
constexpr unsigned MORE_FRAGMENTS = 3;  // and little-endian

std::string fragment(std::uint32_t id, const std::string& data, bool isLast) {
  return giop(zk::test::FRAGMENT, CdrText().number(id).text() + data, isLast ? 1 : MORE_FRAGMENTS);
}

// A request of this id in pieces of 8 bytes.
std::vector<std::string> inFragments(std::uint32_t id) {
  const std::string whole = requestBody(id, "key", "operation", "parameters");
  std::vector<std::string> pieces = {giop(zk::test::REQUEST, whole.substr(0, 20), MORE_FRAGMENTS)};
  for (std::size_t at = 20; at < whole.size(); at += 8) {
    pieces.push_back(fragment(id, whole.substr(at, 8), at + 8 >= whole.size()));
  }
  return pieces;
}

std::string joined(const std::vector<std::string>& pieces) {
  std::string all;
  for (const std::string& piece : pieces) {
    all += piece;
  }
  return all;
}

struct Seen {
  std::vector<std::string> messages;
  Step last = Step::MORE;
};

// What the reader finds in bytes that come so many at a time.
Seen read(const std::string& bytes, std::size_t atATime) {
  MessageReader reader(LARGEST);
  Seen seen;
  for (std::size_t at = 0; at < bytes.size(); at += atATime) {
    const std::string piece = bytes.substr(at, atATime);
    std::string_view rest = piece;
    while (!rest.empty()) {
      seen.last = reader.take(rest);
      if (seen.last == Step::MESSAGE) {
        seen.messages.push_back(reader.message());
      } else if (seen.last != Step::MORE) {
        return seen;
      }
    }
  }
  return seen;
}

TEST(MessageReader, findsMessagesHoweverTheyCome) {
  const std::vector<std::string> messages = {request(1, "key", "one"), locate(2, "key"),
                                             request(3, "key", "two", std::string(3000, 'x'))};
  const std::string bytes = joined(messages);
  for (std::size_t atATime = 1; atATime <= bytes.size(); ++atATime) {
    const Seen seen = read(bytes, atATime);
    EXPECT_EQ(seen.messages, messages) << atATime;
  }
}

TEST(MessageReader, putsFragmentsTogether) {
  const std::string whole = request(7, "key", "operation", "parameters");
  const auto one = inFragments(7);
  const auto two = inFragments(8);
  EXPECT_EQ(read(joined(one), 5).messages, std::vector<std::string>{whole});
  std::string mixed;
  for (std::size_t i = 0; i < one.size(); ++i) {
    mixed += one[i] + two[i];
  }
  EXPECT_EQ(read(mixed, 1000).messages,
            (std::vector<std::string>{whole, request(8, "key", "operation", "parameters")}));
  EXPECT_EQ(
      read(one[0] + request(9, "key", "other") + joined({one.begin() + 1, one.end()}), 1).messages,
      (std::vector<std::string>{request(9, "key", "other"), whole}));
}

TEST(MessageReader, leavesOutWhatIsCancelled) {
  const std::string next = request(2, "key", "next");
  EXPECT_EQ(read(cancel(1) + next, 7).messages, std::vector<std::string>{next});
  const auto pieces = inFragments(5);
  EXPECT_EQ(read(pieces[0] + cancel(5) + pieces[1] + next, 7).messages,
            std::vector<std::string>{next});
}

TEST(MessageReader, readsBigEndian) {
  std::string bytes = giop(zk::test::LOCATE, std::string(8, 'a'), 0, 0);
  const std::string size("\0\0\0\x08", 4);
  bytes.replace(8, 4, size);
  EXPECT_EQ(read(bytes, 3).messages, std::vector<std::string>{bytes});
}

TEST(MessageReader, saysWhetherSomethingIsUnfinished) {
  MessageReader reader(LARGEST);
  const std::string message = request(1, "key", "one");
  EXPECT_FALSE(reader.isUnfinished());
  std::string_view begin = std::string_view(message).substr(0, 1);
  reader.take(begin);
  EXPECT_TRUE(reader.isUnfinished());
  std::string_view end = std::string_view(message).substr(1);
  EXPECT_EQ(reader.take(end), Step::MESSAGE);
  EXPECT_FALSE(reader.isUnfinished());
  const std::string first = inFragments(1)[0];
  std::string_view rest = first;
  EXPECT_EQ(reader.take(rest), Step::MORE);
  EXPECT_TRUE(reader.isUnfinished());
}

TEST(MessageReader, refusesWhatIsNoRequest) {
  const auto pieces = inFragments(1);
  std::string otherOrder = pieces[1];
  otherOrder[6] = 0;
  otherOrder.replace(8, 4, std::string("\0\0\0\x0c", 4));
  otherOrder.replace(12, 4, std::string("\0\0\0\x01", 4));
  std::string fifth;
  for (std::uint32_t id = 0; id < 5; ++id) {
    fifth += inFragments(id)[0];
  }
  struct Row {
    const char* what;
    std::string bytes;
  };
  const Row rows[] = {
      {"another protocol", "GET / HTTP/1.1\r\n"},
      {"its first byte", "X"},
      {"version 1.3", giop(zk::test::REQUEST, "", 1, 3)},
      {"version 2.0", std::string("GIOP\2\0\1\0\0\0\0\0", 12)},
      {"unknown type", giop(8, "")},
      {"a reply", giop(zk::test::REPLY, "")},
      {"a located", giop(zk::test::LOCATED, "")},
      {"a size of 2^32-1", std::string("GIOP\1\2\1\0\xff\xff\xff\xff", 12)},
      {"one byte too large", request(1, "key", "op", std::string(LARGEST, 'x')).substr(0, 12)},
      {"an empty cancel", giop(zk::test::CANCEL, "")},
      {"an empty fragment", giop(zk::test::FRAGMENT, "")},
      {"a fragment of 1.1", giop(zk::test::FRAGMENT, "12345678", 1, 1)},
      {"fragments of 1.1", giop(zk::test::REQUEST, std::string(20, 'a'), 3, 1)},
      {"fragments of no id", giop(zk::test::REQUEST, "", 3)},
      {"an unaligned first fragment", giop(zk::test::REQUEST, std::string(21, 'a'), 3)},
      {"an unaligned middle fragment", pieces[0] + fragment(1, "123", false)},
      {"the same id twice", pieces[0] + pieces[0]},
      {"another byte order", pieces[0] + otherOrder},
      {"five at once", fifth},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(read(row.bytes, 1).last, Step::BROKEN) << row.what;
    EXPECT_EQ(read(row.bytes, 1 << 20).last, Step::BROKEN) << row.what;
  }
}

TEST(MessageReader, boundsTheSumOfFragments) {
  std::string bytes = inFragments(1)[0];
  for (std::size_t sum = bytes.size(); sum <= LARGEST; sum += 1024) {
    bytes += fragment(1, std::string(1024, 'x'), false);
  }
  EXPECT_EQ(read(bytes, 100).last, Step::BROKEN);
}

TEST(MessageReader, endsWithTheClient) {
  EXPECT_EQ(read(giop(5, ""), 3).last, Step::CLOSED);
  EXPECT_EQ(read(giop(6, ""), 3).last, Step::CLOSED);
}

}  // namespace
