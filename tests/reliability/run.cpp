#include "tests/reliability/run.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zk::test {

namespace {

constexpr int WRONG_USAGE = 2;

std::size_t entriesOf(const std::string& folder) {
  std::error_code gone;
  std::size_t count = 0;
  for (std::filesystem::directory_iterator entry(folder, gone), end; !gone && entry != end;
       entry.increment(gone)) {
    ++count;
  }
  return count;
}

double cpuSecondsOf(const std::string& folder) {
  std::ifstream file(folder + "stat");
  const std::string text((std::istreambuf_iterator<char>(file)), {});
  const std::size_t name = text.rfind(')');
  if (name == std::string::npos) {
    return 0;
  }
  std::istringstream rest(text.substr(name + 1));
  std::string skipped;
  for (int i = 0; i < 11; ++i) {
    rest >> skipped;
  }
  double user = 0;
  double system = 0;
  rest >> user >> system;
  return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace

Run::Run(const std::string& name, const std::string& description)
    : Program(name, description, {WRONG_USAGE, "", "Run with --help for more information."}),
      name_(name) {
  add("--seed", seed_, "The same seed makes the same choices").showDefault();
}

std::optional<int> Run::begin(int argc, const char* const* argv) {
  if (const auto ending = parse(argc, argv)) {
    std::fputs(ending->output.c_str(), stdout);
    std::fputs(ending->error.c_str(), stderr);
    return ending->status;
  }
  figure("seed", std::to_string(seed_));
  return std::nullopt;
}

void Run::figure(const std::string& name, const std::string& value) {
  const std::lock_guard<std::mutex> guard(mutex_);
  std::printf("%s: %s: %s\n", name_.c_str(), name.c_str(), value.c_str());
  std::fflush(stdout);
}

void Run::figure(const std::string& name, double value, const std::string& unit) {
  figure(name, rounded(value) + " " + unit);
}

bool Run::promise(bool isKept, const std::string& what) {
  if (!isKept) {
    const std::lock_guard<std::mutex> guard(mutex_);
    std::printf("%s: BROKEN: %s\n", name_.c_str(), what.c_str());
    std::fflush(stdout);
    ++broken_;
  }
  return isKept;
}

int Run::end() {
  figure("promises", broken_ == 0 ? "all kept" : std::to_string(broken_) + " broken");
  return broken_ == 0 ? 0 : 1;
}

std::string rounded(double value) {
  char text[64];
  std::snprintf(text, sizeof text, value < 100 ? "%.2f" : "%.0f", value);
  return text;
}

Usage usageOf(const std::string& pid) {
  const std::string folder = "/proc/" + pid + "/";
  Usage usage;
  std::ifstream status(folder + "status");
  for (std::string word; status >> word;) {
    if (word == "VmRSS:") {
      status >> usage.residentKiB;
    } else if (word == "VmHWM:") {
      status >> usage.peakKiB;
    } else if (word == "VmSize:") {
      status >> usage.addressKiB;
    }
  }
  usage.threads = entriesOf(folder + "task");
  usage.descriptors = entriesOf(folder + "fd");
  usage.cpuSeconds = cpuSecondsOf(folder);
  return usage;
}

void Latencies::add(Clock::duration time) {
  times_.push_back(std::chrono::duration<double, std::milli>(time).count());
}

double Latencies::quantile(double share) const {
  if (times_.empty()) {
    return 0;
  }
  std::vector<double> sorted = times_;
  const auto at = static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1));
  std::nth_element(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(at), sorted.end());
  return sorted[at];
}

}  // namespace zk::test
