// Changes of one label, each of which must be acknowledged or refused, and what the
// inventory holds afterwards. For one thread.
#ifndef ZK_TESTS_RELIABILITY_LABELS_H
#define ZK_TESTS_RELIABILITY_LABELS_H

#include <string>

#include "agent/ems/inventory.h"
#include "agent/orb/orb.h"
#include "tests/agent/support/names.h"
#include "tests/agent/support/runningagent.h"

namespace zk::test {

class Labels {
 public:
  enum class Outcome { ACKNOWLEDGED, REFUSED, UNANSWERED };

  static constexpr std::chrono::seconds CALL_LIMIT{5};

  // Logs in, from then on with one connection and one session.
  explicit Labels(const RunningAgent& agent) : session_(nms_.logIn(agent)) {
    const auto manager =
        managerOf<managedElementManager::ManagedElementMgr_I>(session_.in(), "ManagedElement");
    const CORBA::Object_var limited = agent::withCallLimit(manager.in(), CALL_LIMIT);
    elements_ = managedElementManager::ManagedElementMgr_I::_narrow(limited.in());
  }

  Outcome change() {
    const std::string label = "change " + std::to_string(++number_);
    try {
      elements_->setUserLabel(named("ManagedElement", "1"), label.c_str(), false);
      acknowledged_ = label;
      ++acknowledgements_;
      return Outcome::ACKNOWLEDGED;
    } catch (const globaldefs::ProcessingFailureException&) {
      ++refusals_;
      return Outcome::REFUSED;
    } catch (const CORBA::Exception& failure) {
      failure_ = failure._name();
      ++unanswered_;
      return Outcome::UNANSWERED;
    }
  }

  // What the agent says that the label is; empty when it does not answer.
  std::string read() {
    try {
      managedElement::ManagedElement_T_var element;
      elements_->getManagedElement(named("ManagedElement", "1"), element.out());
      return element->userLabel.in();
    } catch (const CORBA::Exception&) {
      return "";
    }
  }

  // What the file has, once the agent is gone.
  static std::string stored(const RunningAgent& agent) {
    const auto device = zk::agent::Inventory::open(agent.inventory())->device(1);
    return device ? device->userLabel : "gone";
  }

  emsSession::EmsSession_I_ptr session() { return session_.in(); }
  const std::string& acknowledged() const { return acknowledged_; }
  const std::string& failure() const { return failure_; }
  unsigned long acknowledgements() const { return acknowledgements_; }
  unsigned long refusals() const { return refusals_; }
  unsigned long unanswered() const { return unanswered_; }

 private:
  ReachableNms nms_;
  emsSession::EmsSession_I_var session_;
  managedElementManager::ManagedElementMgr_I_var elements_;
  unsigned long number_ = 0;
  unsigned long acknowledgements_ = 0;
  unsigned long refusals_ = 0;
  unsigned long unanswered_ = 0;
  std::string acknowledged_;
  std::string failure_;
};

}  // namespace zk::test

#endif
