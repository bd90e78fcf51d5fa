// One event being held against one constraint. On the stack of one thread.
#ifndef ZK_AGENT_CONSTRAINT_EVALUATION_H
#define ZK_AGENT_CONSTRAINT_EVALUATION_H

#include <list>
#include <string>
#include <utility>
#include <vector>

#include "agent/constraint/value.h"

namespace zk::agent::etcl {

// Keeps what values of one evaluation point to and the event does not hold
// itself. Empty, and free of allocation, as long as the constraint looks only at
// simple properties and at lists of names.
class Evaluation {
 public:
  // Both outlive this. Without a factory, values of types that are not known
  // here are opaque.
  Evaluation(const CosNotification::StructuredEvent& event, DynamicAny::DynAnyFactory_ptr factory)
      : event_(event), factory_(factory) {}
  ~Evaluation();
  Evaluation(const Evaluation&) = delete;
  Evaluation& operator=(const Evaluation&) = delete;

  const CosNotification::StructuredEvent& event() const { return event_; }

  DynamicAny::DynAnyFactory_ptr factory() const { return factory_; }

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
