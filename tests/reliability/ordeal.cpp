#include "tests/reliability/ordeal.h"

#include <csignal>
#include <thread>

#include "tests/agent/support/rawclient.h"
#include "tests/reliability/labels.h"

namespace zk::test {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// A newcomer's first answer, which takes a connection and a thread.
bool isNewcomerServed(const RunningAgent& agent) {
  RawClient client(agent.port);
  const auto message = client.send(request(1, "EmsSessionFactory", "getVersion")).receive(1000);
  return message && readReply(*message).status == 0;
}

}  // namespace

void Ordeal::play(const std::string& name, const std::function<void()>& fault) {
  name_ = name;
  disk_.clear();
  agent_ = std::make_unique<RunningAgent>();
  try {
    fault();
  } catch (const CORBA::Exception& failure) {
    promise(false, std::string("no call fails: ") + failure._name());
  } catch (const std::exception& failure) {
    promise(false, std::string("nothing fails: ") + failure.what());
  }
  process_.reset();
  agent_.reset();
}

bool Ordeal::promise(bool isKept, const std::string& what) {
  return run_.promise(isKept, name_ + ": " + what);
}

void Ordeal::figure(const std::string& what, const std::string& value) {
  run_.figure(name_ + ": " + what, value);
}

Ordeal::Arguments Ordeal::plain(const std::string& inventory, const std::string& log) const {
  return {ZK_AGENT_PROGRAM,
          "--listen",
          "127.0.0.1:" + std::to_string(agent_->port),
          "--inventory",
          inventory,
          "--ior-file",
          agent_->iorFile(),
          "--ping-period",
          "1",
          "--log-file",
          log};
}

Ordeal::Arguments Ordeal::plain() const {
  return plain(agent_->inventory(), agent_->folder.file("log"));
}

void Ordeal::startWith(const Arguments& program, const Arguments& agent) {
  Arguments all = program;
  all.insert(all.end(), agent.begin(), agent.end());
  process_ = std::make_unique<Process>(all.front(), Arguments(all.begin() + 1, all.end()),
                                       agent_->folder.file("output"));
}

void Ordeal::startAfter(const std::string& command, const Arguments& agent) {
  startWith({"/usr/bin/unshare", "-m", "/bin/sh", "-c", command + " && exec \"$0\" \"$@\""}, agent);
}

bool Ordeal::isServing() {
  return promise(agent_->awaitServing(*process_), "the agent starts: " + process_->output());
}

void Ordeal::suffer(const std::function<void()>& begin, const std::function<void()>& end) {
  Labels labels(*agent_);
  promise(labels.change() == Labels::Outcome::ACKNOWLEDGED, "changes are made before");
  begin();
  const unsigned long before = labels.acknowledgements();
  const auto until = Clock::now() + milliseconds(long(seconds_ * 1000));
  while (Clock::now() < until) {
    change(labels);
  }
  figure("meanwhile", std::to_string(labels.acknowledgements() - before) + " changes made, " +
                          std::to_string(labels.refusals()) + " refused, " +
                          std::to_string(labels.unanswered()) + " not answered");
  promise(labels.unanswered() == 0, "every change is answered: " + labels.failure());
  figure("a newcomer meanwhile", isNewcomerServed(*agent_) ? "served" : "turned away");
  end();
  recover(labels);
  promise(process_->running(), "the agent runs: " + process_->output());
  keep(labels);
}

void Ordeal::change(Labels& labels) {
  if (labels.change() == Labels::Outcome::REFUSED) {
    promise(labels.read() == labels.acknowledged(), "a refused change is not made");
  }
  std::this_thread::sleep_for(milliseconds(2));
}

void Ordeal::recover(Labels& labels) {
  const auto begin = Clock::now();
  const bool isBack = becomesTrue([&] {
    return labels.change() == Labels::Outcome::ACKNOWLEDGED && isNewcomerServed(*agent_);
  });
  const auto took = std::chrono::duration<double, std::milli>(Clock::now() - begin);
  figure("a change is made and a newcomer served after", rounded(took.count()) + " ms");
  promise(isBack && took <= RECOVERY, "all is well within a second of its end");
}

// What a kill leaves at this moment.
void Ordeal::keep(const Labels& labels) {
  process_->signal(SIGSTOP);
  if (!disk_.empty()) {
    for (const char* file : {"agent.db", "agent.db-wal"}) {
      std::filesystem::copy(disk_ + '/' + file, agent_->folder.file(file));
    }
  }
  process_->signal(SIGKILL);
  process_->waitForEnd();
  const std::string stored = Labels::stored(*agent_);
  promise(stored == labels.acknowledged(), "the last acknowledged change is kept: '" +
                                               labels.acknowledged() + "', not '" + stored + "'");
}

}  // namespace zk::test
