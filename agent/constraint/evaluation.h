// One event being held against one constraint. On the stack of one thread.
#ifndef ZK_AGENT_CONSTRAINT_EVALUATION_H
#define ZK_AGENT_CONSTRAINT_EVALUATION_H

#include <cstdint>
#include <limits>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "agent/constraint/value.h"

namespace zk::agent::etcl {

struct WorkSpent {};  // thrown

// What judging may cost whoever wrote the constraint. A unit is about one look at
// one thing: a step of a path, an entry of a list, some bytes of a text; 5
// to 25 ns. For one thread at a time.
class Work {
 public:
  Work() = default;  // as much as it takes
  explicit Work(std::int64_t units) : left_(units) {}

  // Throws WorkSpent when there is no more, now and from then on.
  void spend(std::size_t units) {
    left_ -= static_cast<std::int64_t>(units);
    if (left_ < 0) {
      throw WorkSpent();
    }
  }
  // For what cannot be done for other reasons.
  void giveUp() { left_ = -1; }
  std::int64_t left() const { return left_; }
  bool isSpent() const { return left_ < 0; }

 private:
  std::int64_t left_ = std::numeric_limits<std::int64_t>::max();
};

// Keeps what values of one evaluation point to and the event does not hold
// itself. Empty, and free of allocation, as long as the constraint looks only at
// simple properties and at lists of names.
class Evaluation {
 public:
  // All outlive this. Without a factory, values of types that are not known
  // here are opaque; so are anys inside anys unless they are looked into, each of
  // which doubles what the ORB takes to open the one around it.
  Evaluation(const CosNotification::StructuredEvent& event, DynamicAny::DynAnyFactory_ptr factory,
             Work& work, bool opensInner = true)
      : event_(event), factory_(factory), work_(work), opensInner_(opensInner) {}
  ~Evaluation();
  Evaluation(const Evaluation&) = delete;
  Evaluation& operator=(const Evaluation&) = delete;

  const CosNotification::StructuredEvent& event() const { return event_; }

  DynamicAny::DynAnyFactory_ptr factory() const { return factory_; }

  Work& work() const { return work_; }

  Value keep(std::string text) { return std::string_view(texts_.emplace_back(std::move(text))); }

  // The contents of an any of the event, or of one kept here; Nothing for an
  // empty one.
  Value open(const CORBA::Any& any);

  // The contents of a part of a value that open() gave. Takes the reference.
  Value open(DynamicAny::DynAny_ptr part);

 private:
  Value openUnknown(const CORBA::Any& any);
  Value simple(DynamicAny::DynAny_ptr part, CORBA::TCKind kind);

  const CosNotification::StructuredEvent& event_;
  DynamicAny::DynAnyFactory_ptr factory_;
  Work& work_;
  const bool opensInner_;
  std::vector<std::pair<const CORBA::Any*, DynamicAny::DynAny_var>> opened_;
  std::vector<DynamicAny::DynAny_var> parts_;
  std::vector<CORBA::TypeCode_var> types_;
  std::list<std::string> texts_;
  std::list<CORBA::Any_var> anys_;
};

// A type with its aliases taken off.
CORBA::TypeCode_ptr withoutAlias(CORBA::TypeCode_ptr type);

}  // namespace zk::agent::etcl

#endif
