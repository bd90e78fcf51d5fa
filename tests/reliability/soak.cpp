// Many clients that come and go at an EMS that never rests: whether every one of
// them gets what it is owed, and whether the agent stays as large as it is.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <thread>

#include "tests/agent/support/runningagent.h"
#include "tests/reliability/run.h"
#include "tests/support/orb.h"
#include "zk_quornex/idl/admin.h"
#include "zk_quornex/idl/channel.h"

namespace {

using namespace zk::test;
using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

constexpr double LEAST_FOR_SLOPE = 300;  // seconds

struct Settings {
  unsigned seconds = 3600;
  unsigned clients = 64;
  double rate = 2000;
  double shortest = 5;
  double longest = 30;
  unsigned seed = 0;
};

struct Totals {
  unsigned long stays = 0;
  unsigned long vanished = 0;
  unsigned long refused = 0;
  unsigned long losers = 0;  // stays that were told of a loss
  unsigned long events = 0;
  unsigned long delivered = 0;
  unsigned long due = 0;
  unsigned long lost = 0;
  unsigned long unexplained = 0;
  unsigned long repeated = 0;
};

// A place for one client at a time.
class Slot {
 public:
  Slot(const RunningAgent& agent, std::size_t number)
      : agent_(agent), file_(agent.folder.file("client" + std::to_string(number))) {}

  bool isFree() { return !process_ || !process_->running(); }

  void start(const Settings& settings, Chance& chance) {
    static constexpr const char* DELIVERIES[] = {"push", "structured", "pull", "pull"};
    const double share = static_cast<double>(chance.below(1001)) / 1000;
    std::vector<std::string> arguments = {
        "--port",     std::to_string(agent_.port),
        "--seconds",  rounded(settings.shortest + share * (settings.longest - settings.shortest)),
        "--delivery", DELIVERIES[chance.below(4)],
        "--filter",   std::to_string(chance.below(4))};
    if (chance.oneIn(8)) {
      arguments.emplace_back("--slow");
    }
    vanishes_ = chance.oneIn(2);
    if (vanishes_) {
      arguments.emplace_back("--vanish");
    }
    process_ = std::make_unique<Process>(ZK_SOAK_CLIENT, arguments, file_);
  }

  // Of the client that ended, if there was one.
  void collect(Totals& totals, Run& run) {
    if (!process_) {
      return;
    }
    const std::string output = process_->output();
    process_.reset();
    std::istringstream line(output);
    std::string kind;
    line >> kind;
    ++totals.stays;
    if (kind == "refused") {
      ++totals.refused;
      return;
    }
    unsigned long events = 0, delivered = 0, due = 0, lost = 0, unexplained = 0, repeated = 0,
                  losses = 0;
    line >> events >> delivered >> due >> lost >> unexplained >> repeated >> losses;
    if (!run.promise(kind == "sum" && line, "a client could stay: " + output)) {
      return;
    }
    totals.vanished += vanishes_ ? 1 : 0;
    totals.losers += losses != 0 ? 1 : 0;
    totals.events += events;
    totals.delivered += delivered;
    totals.due += due;
    totals.lost += lost;
    totals.unexplained += unexplained;
    totals.repeated += repeated;
  }

 private:
  const RunningAgent& agent_;
  const std::string file_;
  std::unique_ptr<Process> process_;
  bool vanishes_ = false;
};

// Takes all there is, and counts it: how fast the EMS changes.
class Counter {
 public:
  explicit Counter(const RunningAgent& agent) : session_(nms_.logIn(agent)) {
    CosNotifyChannelAdmin::EventChannel_var channel;
    session_->getEventChannel(channel.out());
    const CosNotifyChannelAdmin::ConsumerAdmin_var admin = channel->default_consumer_admin();
    CosNotifyChannelAdmin::ProxyID id = 0;
    const CosNotifyChannelAdmin::ProxySupplier_var proxy =
        admin->obtain_notification_pull_supplier(CosNotifyChannelAdmin::SEQUENCE_EVENT, id);
    puller_ = CosNotifyChannelAdmin::SequenceProxyPullSupplier::_narrow(proxy.in());
    puller_->connect_sequence_pull_consumer(CosNotifyComm::SequencePullConsumer::_nil());
  }

  void take() {
    CORBA::Boolean hasEvents = true;
    while (hasEvents) {
      const CosNotification::EventBatch_var events =
          puller_->try_pull_structured_events(500, hasEvents);
      count_ += hasEvents ? events->length() : 0;
    }
  }
  unsigned long count() const { return count_; }

 private:
  ReachableNms nms_;
  emsSession::EmsSession_I_var session_;
  CosNotifyChannelAdmin::SequenceProxyPullSupplier_var puller_;
  unsigned long count_ = 0;
};

// What the agent held at the times it was looked at.
class Growth {
 public:
  void add(double second, const Usage& usage) {
    at_.push_back(second);
    used_.push_back(usage);
  }

  // The first quarter is for growing up. What is compared then is the median of
  // the second quarter and that of the last.
  void report(Run& run) const {
    reportOne(
        run, "memory", "KiB", [](const Usage& usage) { return double(usage.residentKiB); }, 0.1,
        8192);
    reportOne(
        run, "threads", "", [](const Usage& usage) { return double(usage.threads); }, 0.1, 24);
    reportOne(
        run, "descriptors", "", [](const Usage& usage) { return double(usage.descriptors); }, 0.1,
        24);
    run.figure("memory, peak", double(used_.back().peakKiB), "KiB");
    run.figure("cores used by the agent", used_.back().cpuSeconds / at_.back(), "");
  }

 private:
  template <class Of>
  void reportOne(Run& run, const std::string& what, const std::string& unit, Of of, double share,
                 double slack) const {
    const std::size_t quarter = used_.size() / 4;
    const double before = median(quarter, 2 * quarter, of);
    const double after = median(3 * quarter, used_.size(), of);
    run.figure(what + ", second quarter", before, unit);
    run.figure(what + ", last quarter", after, unit);
    if (at_.back() >= LEAST_FOR_SLOPE) {
      run.figure(what + ", slope after the first quarter", slope(quarter, of), unit + " an hour");
    }
    run.promise(after <= before * (1 + share) + slack, what + " stays within a tenth");
  }

  template <class Of>
  double median(std::size_t from, std::size_t to, Of of) const {
    std::vector<double> values;
    std::transform(used_.begin() + std::ptrdiff_t(from), used_.begin() + std::ptrdiff_t(to),
                   std::back_inserter(values), of);
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
  }

  // Least squares.
  template <class Of>
  double slope(std::size_t from, Of of) const {
    double n = 0, x = 0, y = 0, xx = 0, xy = 0;
    for (std::size_t i = from; i < used_.size(); ++i) {
      n += 1;
      x += at_[i];
      y += of(used_[i]);
      xx += at_[i] * at_[i];
      xy += at_[i] * of(used_[i]);
    }
    const double spread = n * xx - x * x;
    return spread > 0 ? (n * xy - x * y) / spread * 3600 : 0;
  }

  std::vector<double> at_;
  std::vector<Usage> used_;
};

class Soak {
 public:
  Soak(Run& run, const Settings& settings) : run_(run), settings_(settings), chance_(run.seed()) {
    for (std::size_t i = 0; i < settings.clients; ++i) {
      slots_.emplace_back(agent_, i);
    }
  }

  void go() {
    process_ =
        agent_.start({"--traffic", rounded(settings_.rate), "--traffic-seed",
                      std::to_string(run_.seed() % 1000000), "--admin", "--peer-sessions", "256",
                      "--max-sessions", "256", "--max-events", "5000", "--ping-period", "2",
                      "--ping-failures", "1", "--log-file", agent_.folder.file("log")});
    if (!run_.promise(agent_.awaitServing(*process_), "the agent starts: " + process_->output())) {
      return;
    }
    Counter counter(agent_);
    const long alarms = alarmNumber();
    const auto begin = Clock::now();
    while (secondsSince(begin) < settings_.seconds && process_->running()) {
      turn(secondsSince(begin), counter);
    }
    const double lasted = secondsSince(begin);
    reportRate(counter, alarmNumber() - alarms, lasted);
    endStays();
    reportStays();
    growth_.report(run_);
    reportEnd(counter);
  }

 private:
  static double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
  }

  void turn(double second, Counter& counter) {
    for (Slot& slot : slots_) {
      if (slot.isFree()) {
        slot.collect(totals_, run_);
        slot.start(settings_, chance_);
      }
    }
    counter.take();
    growth_.add(second, usageOf(process_->id()));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
  }

  // Of the made-up changes, 30 in 100 raise or clear an alarm, and the one is as
  // frequent as the other.
  void reportRate(const Counter& counter, long alarms, double lasted) {
    run_.figure("duration", lasted, "s");
    run_.figure("clients at a time", std::to_string(settings_.clients));
    run_.figure("changes of the EMS, by the alarms it raised", double(alarms) / 0.15 / lasted,
                "/s");
    run_.figure("events seen by one that takes all", double(counter.count()) / lasted, "/s");
  }

  void endStays() {
    const auto end = Clock::now() + seconds(long(settings_.longest) + 60);
    for (Slot& slot : slots_) {
      while (!slot.isFree() && Clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
      }
      run_.promise(slot.isFree(), "every client comes to its end");
      slot.collect(totals_, run_);
    }
  }

  void reportStays() {
    const Totals& totals = totals_;
    run_.figure("stays", std::to_string(totals.stays) + ", " + std::to_string(totals.vanished) +
                             " of them ended without a word, " + std::to_string(totals.refused) +
                             " refused");
    run_.figure("events taken by them", std::to_string(totals.events));
    run_.figure("balance", std::to_string(totals.due) +
                               " due = " + std::to_string(totals.delivered) + " delivered + " +
                               std::to_string(totals.lost) + " told as lost (in " +
                               std::to_string(totals.losers) + " stays) + " +
                               std::to_string(totals.unexplained) + " unexplained");
    run_.promise(totals.due > 0, "there is something to balance");
    run_.promise(totals.unexplained == 0, "what is due is delivered or told as lost");
    run_.promise(totals.repeated == 0,
                 "nothing comes twice, or out of order: " + std::to_string(totals.repeated));
  }

  // With the clients gone, what they held goes too.
  void reportEnd(Counter& counter) {
    setTraffic(0);
    counter.take();
    run_.promise(process_->running(), "the agent runs: " + process_->output());
    const auto isAlone = [this] { return sessions() <= 1; };
    run_.promise(becomesTrue(isAlone), "sessions of clients that are gone end");
    const Usage usage = usageOf(process_->id());
    run_.figure("threads at the end, without clients", std::to_string(usage.threads));
    run_.figure("descriptors at the end, without clients", std::to_string(usage.descriptors));
    process_->signal(SIGTERM);
    run_.promise(process_->waitForEnd().value_or(-1) == 0, "the agent stops in order");
  }

  emsAdmin::EmsAdmin_I_var admin() const {
    int count = 0;
    const CORBA::ORB_var orb = CORBA::ORB_init(count, nullptr);
    const std::string where =
        "corbaloc:iiop:127.0.0.1:" + std::to_string(agent_.port) + "/EmsAdmin";
    const CORBA::Object_var object = orb->string_to_object(where.c_str());
    return emsAdmin::EmsAdmin_I::_narrow(object.in());
  }
  // Alarms are numbered in the order in which they are raised.
  long alarmNumber() const {
    const emsAdmin::EmsAdmin_I_var ems = admin();
    const long number = ems->raiseAlarm(0, "SOAK", "", notifications::PS_WARNING, "looked at");
    ems->clearAlarm(static_cast<CORBA::Long>(number));
    return number;
  }
  void setTraffic(double rate) const { admin()->setTraffic(rate); }
  std::size_t sessions() const {
    const emsAdmin::NmsLoginList_T_var logins = admin()->getLogins();
    return logins->length();
  }

  Run& run_;
  const Settings& settings_;
  Chance chance_;
  const RunningAgent agent_;
  std::vector<Slot> slots_;
  std::unique_ptr<Process> process_;
  Totals totals_;
  Growth growth_;
};

}  // namespace

int main(int argc, char** argv) {
  Settings settings;
  Run run("soak", "Clients that come and go at an EMS that never rests");
  run.add("--seconds", settings.seconds, "How long").showDefault();
  run.add("--clients", settings.clients, "At a time").range(1U, 200U).showDefault();
  run.add("--rate", settings.rate, "Changes a second").range(1.0, 10000.0).showDefault();
  run.add("--shortest", settings.shortest, "Seconds of a client's stay, at least").showDefault();
  run.add("--longest", settings.longest, "Seconds of a client's stay, at most").showDefault();
  if (const auto status = run.begin(argc, argv)) {
    return *status;
  }
  setenv("ORBmaxGIOPConnectionPerServer", "20", 1);
  const ServingOrb orb;
  Soak(run, settings).go();
  return run.end();
}
