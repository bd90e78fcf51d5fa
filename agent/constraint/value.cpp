#include "agent/constraint/value.h"

namespace zk::agent::etcl {

namespace {

// Below, at or above 0 as left is before, equal to or after right; nothing when
// neither is so.
using Order = std::optional<int>;

template <typename T>
Order orderOf(const T& left, const T& right) {
  if (left < right) {
    return -1;
  }
  if (left > right) {
    return 1;
  }
  return left == right ? Order(0) : Order();  // not a number has no order
}

std::optional<CORBA::ULong> ordinalOf(std::string_view label, CORBA::TypeCode_ptr type) {
  const CORBA::ULong labels = type->member_count();
  for (CORBA::ULong i = 0; i < labels; ++i) {
    if (label == type->member_name(i)) {
      return i;
    }
  }
  return std::nullopt;
}

Order orderOfLabel(const Enumerated& left, std::string_view label) {
  const auto ordinal = ordinalOf(label, left.type);
  return ordinal ? orderOf(left.ordinal, *ordinal) : Order();
}

// std::visit's table: what can be compared with what; everything else cannot.
struct Ordering {
  Order operator()(bool left, bool right) const { return orderOf(left, right); }
  Order operator()(std::int64_t left, std::int64_t right) const { return orderOf(left, right); }
  Order operator()(long double left, long double right) const { return orderOf(left, right); }
  Order operator()(std::int64_t left, long double right) const {
    return orderOf(static_cast<long double>(left), right);
  }
  Order operator()(long double left, std::int64_t right) const {
    return orderOf(left, static_cast<long double>(right));
  }
  Order operator()(std::string_view left, std::string_view right) const {
    return orderOf(left, right);
  }
  Order operator()(const Enumerated& left, const Enumerated& right) const {
    return left.type->equivalent(right.type) ? orderOf(left.ordinal, right.ordinal) : Order();
  }
  Order operator()(const Enumerated& left, const Name& right) const {
    return orderOfLabel(left, right.text);
  }
  Order operator()(const Enumerated& left, std::string_view right) const {
    return orderOfLabel(left, right);
  }
  Order operator()(const Enumerated& left, std::int64_t right) const {
    return orderOf(std::int64_t{left.ordinal}, right);
  }
  Order operator()(const Enumerated& left, long double right) const {
    return orderOf(static_cast<long double>(left.ordinal), right);
  }
  template <typename Left, typename Right>
  Order operator()(const Left& /*left*/, const Right& /*right*/) const {
    return std::nullopt;
  }
};

bool holds(Comparison how, int order) {
  switch (how) {
    case Comparison::EQUAL:
      return order == 0;
    case Comparison::DIFFERENT:
      return order != 0;
    case Comparison::LESS:
      return order < 0;
    case Comparison::LESS_OR_EQUAL:
      return order <= 0;
    case Comparison::GREATER:
      return order > 0;
    case Comparison::GREATER_OR_EQUAL:
      return order >= 0;
  }
  return false;
}

using Whole = std::int64_t;
using Real = long double;

// Nothing when the result is no whole number of 64 bits.
std::optional<Whole> wholeResult(Operation what, Whole left, Whole right) {
  Whole result = 0;
  switch (what) {
    case Operation::ADD:
      return __builtin_add_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operation::SUBTRACT:
      return __builtin_sub_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operation::MULTIPLY:
      return __builtin_mul_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operation::DIVIDE:
      if (right == -1) {  // the smallest number has no positive counterpart
        return wholeResult(Operation::SUBTRACT, 0, left);
      }
      return left % right == 0 ? std::optional(left / right) : std::nullopt;
  }
  return std::nullopt;
}

Real realResult(Operation what, Real left, Real right) {
  switch (what) {
    case Operation::ADD:
      return left + right;
    case Operation::SUBTRACT:
      return left - right;
    case Operation::MULTIPLY:
      return left * right;
    case Operation::DIVIDE:
      return left / right;
  }
  return 0;
}

std::optional<Real> asReal(const Value& value) {
  if (const auto* whole = std::get_if<Whole>(&value)) {
    return static_cast<Real>(*whole);
  }
  const auto* real = std::get_if<Real>(&value);
  return real != nullptr ? std::optional(*real) : std::nullopt;
}

}  // namespace

Value compare(Comparison how, const Value& left, const Value& right) {
  if (const Order order = std::visit(Ordering{}, left, right)) {
    return holds(how, *order);
  }
  if (const Order order = std::visit(Ordering{}, right, left)) {
    return holds(how, -*order);
  }
  return Nothing{};
}

Value calculate(Operation what, const Value& left, const Value& right) {
  const auto leftReal = asReal(left);
  const auto rightReal = asReal(right);
  if (!leftReal || !rightReal || (what == Operation::DIVIDE && *rightReal == 0)) {
    return Nothing{};
  }
  const auto* leftWhole = std::get_if<Whole>(&left);
  const auto* rightWhole = std::get_if<Whole>(&right);
  if (leftWhole != nullptr && rightWhole != nullptr) {
    if (const auto whole = wholeResult(what, *leftWhole, *rightWhole)) {
      return *whole;
    }
  }
  return realResult(what, *leftReal, *rightReal);
}

}  // namespace zk::agent::etcl
