#include "agent/constraint/pathcompiler.h"

#include <utility>

#include <ace/ETCL/ETCL_Constraint.h>
#include <ace/ETCL/ETCL_Constraint_Visitor.h>
#include <ace/ETCL/ETCL_y.h>

#include "agent/constraint/invalidconstrainttext.h"
#include "agent/constraint/leaves.h"

namespace zk::agent::etcl {

namespace {

Special specialOf(int type) {
  switch (type) {
    case ETCL_LENGTH:
      return Special::length;
    case ETCL_DISCRIMINANT:
      return Special::discriminator;
    case ETCL_TYPE_ID:
      return Special::typeId;
    default:
      return Special::repositoryId;
  }
}

// Each node of a path knows the next: a list, though it is written as a tree.
class PathCompiler final : public ETCL_Constraint_Visitor {
 public:
  explicit PathCompiler(const std::vector<Token>& tokens) : tokens_(tokens) {}

  void go(ETCL_Constraint* node) {
    if (node != nullptr) {
      node->accept(this);
    }
  }

  Path path() && { return std::move(path_); }

  int visit_identifier(ETCL_Identifier* node) override {
    start(tokenOf(*node, tokens_));
    return 0;
  }
  int visit_dot(ETCL_Dot* node) override {
    started_ = true;
    go(node->component());
    return 0;
  }
  int visit_component(ETCL_Component* node) override {
    const Token& token = tokenOf(*node->identifier(), tokens_);
    started_ ? add(Member{token.text}) : start(token);
    go(node->component());
    return 0;
  }
  int visit_component_pos(ETCL_Component_Pos* node) override {
    add(Position{positionOf(*node->integer())});
    go(node->component());
    return 0;
  }
  int visit_component_array(ETCL_Component_Array* node) override {
    add(Element{positionOf(*node->integer())});
    go(node->component());
    return 0;
  }
  int visit_component_assoc(ETCL_Component_Assoc* node) override {
    add(Associated{tokenOf(*node->identifier(), tokens_).text});
    go(node->component());
    return 0;
  }
  int visit_union_pos(ETCL_Union_Pos* node) override {
    add(armOf(node->union_value()));
    go(node->component());
    return 0;
  }
  int visit_special(ETCL_Special* node) override {
    add(specialOf(node->type()));
    return 0;
  }

 private:
  template <class Part>
  void add(Part part) {
    path_.steps.emplace_back(std::move(part));
  }

  void start(const Token& token) {
    if (token.text == "curtime") {
      throw InvalidConstraintText("the variable curtime is not offered", token.at);
    }
    path_.variable = token.text;
    started_ = true;
  }

  std::int64_t wholeOf(const ETCL_Literal_Constraint& node) const {
    return std::get<std::int64_t>(tokenOf(node, tokens_).number);
  }

  CORBA::ULong positionOf(const ETCL_Literal_Constraint& node) const {
    return static_cast<CORBA::ULong>(wholeOf(node));
  }

  Arm armOf(const ETCL_Union_Value* label) const {
    if (label == nullptr) {
      return Arm{};
    }
    if (label->string() != nullptr) {
      return Arm{tokenOf(*label->string(), tokens_).text};
    }
    const std::int64_t value = wholeOf(*label->integer());
    return Arm{label->sign() < 0 ? -value : value};
  }

  const std::vector<Token>& tokens_;
  Path path_;
  bool started_ = false;
};

}  // namespace

Path compilePath(ETCL_Constraint* component, const std::vector<Token>& tokens) {
  PathCompiler compiler(tokens);
  compiler.go(component);
  return std::move(compiler).path();
}

}  // namespace zk::agent::etcl
