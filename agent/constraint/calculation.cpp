#include <limits>

#include "agent/constraint/value.h"

namespace zk::agent::etcl {

namespace {

using Whole = std::int64_t;
using Real = long double;

// Nothing when the result is no whole number of 64 bits.
std::optional<Whole> wholeResult(Operation what, Whole left, Whole right) {
  Whole result = 0;
  switch (what) {
    case Operation::add:
      return __builtin_add_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operation::subtract:
      return __builtin_sub_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operation::multiply:
      return __builtin_mul_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operation::divide:
      if (right == -1) {  // the smallest number has no positive counterpart
        return wholeResult(Operation::subtract, 0, left);
      }
      return left % right == 0 ? std::optional(left / right) : std::nullopt;
  }
  return std::nullopt;
}

Real realResult(Operation what, Real left, Real right) {
  switch (what) {
    case Operation::add:
      return left + right;
    case Operation::subtract:
      return left - right;
    case Operation::multiply:
      return left * right;
    case Operation::divide:
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

Value calculate(Operation what, const Value& left, const Value& right) {
  const auto leftReal = asReal(left);
  const auto rightReal = asReal(right);
  if (!leftReal || !rightReal || (what == Operation::divide && *rightReal == 0)) {
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
