#include "agent/constraint/constraint.h"

#include <exception>
#include <utility>

#include "agent/constraint/grammar.h"

namespace zk::agent {

namespace {

// Measured: the most that a word or a sign became, and what each byte of text and
// the constraint itself take.
constexpr std::size_t BYTES_A_TOKEN = 96;
constexpr std::size_t BYTES_A_CHARACTER = 2;
constexpr std::size_t BYTES_ALONE = 256;

}  // namespace

Constraint::Constraint(std::string text, etcl::Parsed parsed, DynamicAny::DynAnyFactory_ptr factory)
    : text_(std::move(text)),
      bytes_(BYTES_ALONE + BYTES_A_CHARACTER * text_.size() + BYTES_A_TOKEN * parsed.tokens),
      root_(std::move(parsed.root)),
      factory_(DynamicAny::DynAnyFactory::_duplicate(factory)) {}

std::unique_ptr<const Constraint> Constraint::parse(const std::string& text,
                                                    DynamicAny::DynAnyFactory_ptr factory) {
  return std::unique_ptr<const Constraint>(
      new Constraint(text, etcl::parseConstraint(text), factory));
}

bool Constraint::matches(const CosNotification::StructuredEvent& event, etcl::Work& work,
                         Sender sender) const noexcept {
  try {
    const bool trusted = sender == Sender::EMS;
    etcl::Evaluation evaluation(event, trusted ? factory_.in() : DynamicAny::DynAnyFactory::_nil(),
                                work, trusted);
    return etcl::answer(*root_, evaluation) == true;
  } catch (const etcl::WorkSpent&) {
    return false;
  } catch (const CORBA::NO_MEMORY&) {
    work.giveUp();
  } catch (const CORBA::Exception&) {
    return false;
  } catch (const std::exception&) {  // no memory
    work.giveUp();
  }
  return false;
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
