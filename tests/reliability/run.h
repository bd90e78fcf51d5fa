// What every program here has: options with a seed, figures to print, and promises
// whose breach is its exit status. For one thread, but for what says otherwise.
#ifndef ZK_TESTS_RELIABILITY_RUN_H
#define ZK_TESTS_RELIABILITY_RUN_H

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "options/options.h"

namespace zk::test {

// The same seed gives the same numbers. For one thread.
class Chance {
 public:
  explicit Chance(std::uint64_t seed) : engine_(seed) {}

  // 0 to bound - 1; bound is at least 1.
  std::size_t below(std::size_t bound) { return engine_() % bound; }
  bool oneIn(std::size_t bound) { return below(bound) == 0; }
  std::uint64_t any() { return engine_(); }

 private:
  std::mt19937_64 engine_;
};

class Run : public options::Program {
 public:
  // Adds --seed; the default is one seed for all runs.
  Run(const std::string& name, const std::string& description);

  // The status to exit with at once, when there is one. Prints the seed otherwise.
  std::optional<int> begin(int argc, const char* const* argv);
  unsigned long seed() const { return seed_; }

  // One line. Safe on any thread, as promise() is.
  void figure(const std::string& name, const std::string& value);
  void figure(const std::string& name, double value, const std::string& unit);
  // A line for a promise that is not kept, which is returned.
  bool promise(bool isKept, const std::string& what);

  // 0 when every promise was kept, else 1; says so.
  int end();

 private:
  const std::string name_;
  unsigned long seed_ = 814;
  std::mutex mutex_;
  unsigned long broken_ = 0;
};

std::string rounded(double value);

// What a running process holds.
struct Usage {
  long residentKiB = 0;
  long peakKiB = 0;
  unsigned long addressKiB = 0;
  std::size_t threads = 0;
  std::size_t descriptors = 0;
  double cpuSeconds = 0;
};
// All 0 for a process that is not there.
Usage usageOf(const std::string& pid);

// Times of calls.
class Latencies {
 public:
  using Clock = std::chrono::steady_clock;

  void add(Clock::duration time);
  std::size_t count() const { return times_.size(); }
  // In milliseconds; 0 without any. share is 0 to 1.
  double quantile(double share) const;

 private:
  std::vector<double> times_;  // milliseconds
};

}  // namespace zk::test

#endif
