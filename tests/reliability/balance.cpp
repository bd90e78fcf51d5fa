#include "tests/reliability/balance.h"

#include <algorithm>
#include <cstdlib>

namespace zk::test {

namespace {

// Numbers run from 2 to 999 and then from 2 again; a text without one is before 2.
constexpr int CYCLE = 998;
constexpr int NONE = 1;

int numberOf(const std::string& text) {
  const std::size_t open = text.rfind(" (");
  const int number = open == std::string::npos ? 0 : std::atoi(text.c_str() + open + 2);
  return number >= 2 && number <= 999 ? number : NONE;
}

// How many changes lead from one number to the other.
int stepsFrom(int before, int number) { return ((number - before) % CYCLE + CYCLE) % CYCLE; }

bool isAhead(int steps) { return steps > 0 && steps <= CYCLE / 2; }

bool covers(const Balance::Loss& loss, const std::string& begin, const std::string& end) {
  return loss.begin <= end && (loss.end.empty() || loss.end >= begin);
}

}  // namespace

void Balance::begin(const Key& key, const std::string& text, const std::string& time) {
  places_[key] = {numberOf(text), time, 0};
}

void Balance::add(const Key& key, const std::string& text, const std::string& time) {
  const auto found = places_.find(key);
  if (found == places_.end()) {
    return;
  }
  Place& place = found->second;
  const int number = numberOf(text);
  if (place.seen != 0 && !isAhead(stepsFrom(place.seen, number))) {
    ++repeated_;
  } else if (isAhead(stepsFrom(place.number, number))) {
    advance(place, number, time, 1);
  }
  place.seen = number;
}

bool Balance::isComplete(const std::map<Key, std::string>& texts) const {
  return std::all_of(texts.begin(), texts.end(), [this](const auto& entry) {
    const auto found = places_.find(entry.first);
    return found == places_.end() ||
           !isAhead(stepsFrom(found->second.number, numberOf(entry.second)));
  });
}

void Balance::close(const std::map<Key, std::string>& texts, const std::string& time) {
  for (const auto& [key, text] : texts) {
    const auto found = places_.find(key);
    if (found != places_.end() && isAhead(stepsFrom(found->second.number, numberOf(text)))) {
      advance(found->second, numberOf(text), time, 0);
    }
  }
}

void Balance::advance(Place& place, int number, const std::string& time, unsigned long delivered) {
  const auto steps = static_cast<unsigned long>(stepsFrom(place.number, number));
  if (steps > delivered) {
    gaps_.push_back({place.time, time, steps - delivered});
  }
  delivered_ += delivered;
  place.number = number;
  place.time = time;
}

Balance::Sum Balance::sum(const std::vector<Loss>& told) const {
  Sum sum;
  sum.delivered = delivered_;
  sum.repeated = repeated_;
  sum.due = delivered_;
  for (const Gap& gap : gaps_) {
    sum.due += gap.events;
    const bool isTold = std::any_of(told.begin(), told.end(), [&gap](const Loss& loss) {
      return covers(loss, gap.begin, gap.end);
    });
    (isTold ? sum.lost : sum.unexplained) += gap.events;
  }
  return sum;
}

}  // namespace zk::test
