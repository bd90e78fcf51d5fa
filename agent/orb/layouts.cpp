#include "agent/orb/layouts.h"

#include <algorithm>
#include <iterator>

namespace zk::agent {

namespace {

#include <layouts.inc>

struct ByName {
  bool operator()(const OperationLayout& left, std::string_view right) const {
    return left.operation < right;
  }
  bool operator()(std::string_view left, const OperationLayout& right) const {
    return left < right.operation;
  }
};

}  // namespace

OperationLayouts layoutsOf(std::string_view operation) {
  const auto range =
      std::equal_range(std::begin(OPERATIONS), std::end(OPERATIONS), operation, ByName());
  return {range.first, range.second};
}

const Layout* layoutOfType(std::string_view id) {
  const auto* found =
      std::lower_bound(std::begin(TYPES), std::end(TYPES), id,
                       [](const Layout* left, std::string_view right) { return left->id < right; });
  return found != std::end(TYPES) && (*found)->id == id ? *found : nullptr;
}

}  // namespace zk::agent
