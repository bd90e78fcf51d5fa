// One extended-TCL constraint over structured events. Immutable: any number of
// threads may hold events against the same one, without a lock.
#ifndef ZK_AGENT_CONSTRAINT_CONSTRAINT_H
#define ZK_AGENT_CONSTRAINT_CONSTRAINT_H

#include <memory>
#include <string>

#include "agent/constraint/grammar.h"

namespace zk::agent {

// Names and values:
//   $name                the header's type_name, domain_name or event_name, else
//                        a variable header field, else a filterable property
//   $.a.b, $name.b       members by name; .0 by place; [0] of a list
//   $name(x), $name('x') the value of the pair named x, of a list of pairs
//   ._length ._d ._type_id ._repos_id .(label) .()
//   PS_MAJOR             an enumeration's label; elsewhere the same as $PS_MAJOR
// What is missing, of the wrong type or divided by zero makes a condition and
// its negation alike not hold.
class Constraint {
 public:
  // Throws InvalidConstraintText. With a nil factory, structs, unions and lists
  // other than name lists and properties cannot be looked into.
  static std::unique_ptr<const Constraint> parse(const std::string& text,
                                                 DynamicAny::DynAnyFactory_ptr factory);

  // Throws nothing: a value that the ORB cannot read does not match. Neither does
  // anything once the work is spent, or without memory: the work says so then. Of an event by
  // somebody else than the EMS, only values of simple types, lists of names and
  // properties, and labels of known enumerations are looked into, since the
  // description that comes with any other is the sender's.
  enum class Sender { EMS, CLIENT };
  bool matches(const CosNotification::StructuredEvent& event, etcl::Work& work,
               Sender sender = Sender::EMS) const noexcept;
  bool matches(const CosNotification::StructuredEvent& event) const noexcept {
    etcl::Work unlimited;
    return matches(event, unlimited);
  }

  // As given to parse.
  const std::string& text() const { return text_; }

  // What it takes of the memory, estimated on the safe side.
  std::size_t bytes() const { return bytes_; }

 private:
  Constraint(std::string text, etcl::Parsed parsed, DynamicAny::DynAnyFactory_ptr factory);

  std::string text_;
  std::size_t bytes_;
  std::unique_ptr<const etcl::Expression> root_;
  DynamicAny::DynAnyFactory_var factory_;
};

// The factory of an ORB; nil when it has none.
DynamicAny::DynAnyFactory_ptr dynAnyFactoryOf(CORBA::ORB_ptr orb);

}  // namespace zk::agent

#endif
