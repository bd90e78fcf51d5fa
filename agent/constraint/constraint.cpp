#include "agent/constraint/constraint.h"

#include <exception>
#include <utility>

#include "agent/constraint/grammar.h"

namespace zk::agent {

Constraint::Constraint(std::string text, std::unique_ptr<const etcl::Expression> root,
                       DynamicAny::DynAnyFactory_ptr factory)
    : text_(std::move(text)),
      root_(std::move(root)),
      factory_(DynamicAny::DynAnyFactory::_duplicate(factory)) {}

std::unique_ptr<const Constraint> Constraint::parse(const std::string& text,
                                                    DynamicAny::DynAnyFactory_ptr factory) {
  return std::unique_ptr<const Constraint>(
      new Constraint(text, etcl::parseConstraint(text), factory));
}

bool Constraint::matches(const CosNotification::StructuredEvent& event) const noexcept {
  try {
    etcl::Evaluation evaluation(event, factory_.in());
    return etcl::answer(*root_, evaluation) == true;
  } catch (const CORBA::Exception&) {
    return false;
  } catch (const std::exception&) {  // no memory
    return false;
  }
}

DynamicAny::DynAnyFactory_ptr dynAnyFactoryOf(CORBA::ORB_ptr orb) {
  try {
    CORBA::Object_var object = orb->resolve_initial_references("DynAnyFactory");
    return DynamicAny::DynAnyFactory::_narrow(object);
  } catch (const CORBA::ORB::InvalidName&) {
    return DynamicAny::DynAnyFactory::_nil();
  }
}

}  // namespace zk::agent
