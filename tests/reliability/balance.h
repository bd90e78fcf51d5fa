// Whether a client was told of every change it was owed: made-up changes number
// the texts they set ("Harbour (7)" is followed by "Harbour (8)"), so that each
// object's events say how many came before. For one thread at a time.
#ifndef ZK_TESTS_RELIABILITY_BALANCE_H
#define ZK_TESTS_RELIABILITY_BALANCE_H

#include <map>
#include <string>
#include <vector>

namespace zk::test {

class Balance {
 public:
  // An object's attribute.
  using Key = std::string;

  // Times are the EMS's own, and compare as texts.
  struct Loss {
    std::string begin;
    std::string end;  // empty: not over yet
  };

  struct Sum {
    unsigned long delivered = 0;  // of those due
    unsigned long due = 0;
    unsigned long lost = 0;         // due, not delivered, within a loss that was told
    unsigned long unexplained = 0;  // due, not delivered, and nothing told
    unsigned long repeated = 0;     // delivered again, or out of order
  };

  // What the client read once it was subscribed, with what it got before taken
  // in. Events count from there; those of changes before may still come.
  void begin(const Key& key, const std::string& text, const std::string& time);
  // An event. Those of keys that were not begun are left out.
  void add(const Key& key, const std::string& text, const std::string& time);
  // What the client read at the end: whether every event up to there has come.
  bool isComplete(const std::map<Key, std::string>& texts) const;
  // Counts what is still missing up to there as not delivered.
  void close(const std::map<Key, std::string>& texts, const std::string& time);

  Sum sum(const std::vector<Loss>& told) const;

 private:
  struct Place {
    int number;
    std::string time;
    int seen;  // of the last event; 0 before the first
  };
  struct Gap {
    std::string begin;
    std::string end;
    unsigned long events;
  };

  void advance(Place& place, int number, const std::string& time, unsigned long delivered);

  std::map<Key, Place> places_;
  std::vector<Gap> gaps_;
  unsigned long delivered_ = 0;
  unsigned long repeated_ = 0;
};

}  // namespace zk::test

#endif
