#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

#include "nms/wire/lists.h"
#include "tests/nms/support/orb.h"
#include "zk_quornex/idl/names.h"

namespace zk::test {
namespace {

using globaldefs::NamingAttributesIterator_I;
using globaldefs::NamingAttributesIterator_I_var;
using globaldefs::NamingAttributesList_T;
using globaldefs::NamingAttributesList_T_var;

struct Answer {
  std::vector<int> entries;
  bool more;
};

NamingAttributesList_T* listOf(const std::vector<int>& entries) {
  NamingAttributesList_T_var list = new NamingAttributesList_T;
  list->length(static_cast<CORBA::ULong>(entries.size()));
  for (CORBA::ULong i = 0; i < list->length(); ++i) {
    list[i].length(1);
    list[i][0].name = "n";
    list[i][0].value = std::to_string(entries[i]).c_str();
  }
  return list._retn();
}

// Gives its answers one after another, whatever it is asked for.
class ScriptedIterator : public POA_globaldefs::NamingAttributesIterator_I {
 public:
  CORBA::Boolean next_n(CORBA::ULong howMany,
                        globaldefs::NamingAttributesList_T_out list) override {
    asked.push_back(howMany);
    if (asked.size() > answers.size()) {
      throw globaldefs::ProcessingFailureException(globaldefs::EXCPT_INTERNAL_ERROR, "spent");
    }
    const Answer& answer = answers[asked.size() - 1];
    list = listOf(answer.entries);
    return answer.more;
  }
  CORBA::ULong getLength() override { return 0; }
  void destroy() override {
    ++destroyed;
    if (destroyFails) {
      throw CORBA::OBJECT_NOT_EXIST();
    }
  }

  std::vector<Answer> answers;
  std::vector<CORBA::ULong> asked;
  int destroyed = 0;
  bool destroyFails = false;
};

class Drain : public testing::Test {
 protected:
  void SetUp() override {
    iterator_ = activate<NamingAttributesIterator_I>(testRootPoa(), script_);
  }

  std::vector<int> drainAll(const std::vector<int>& first, CORBA::ULong page = 2) {
    std::vector<int> got;
    drainInto(first, page, [&](int entry) { got.push_back(entry); });
    return got;
  }

  void drainInto(const std::vector<int>& first, CORBA::ULong page,
                 const std::function<void(int)>& each) {
    NamingAttributesList_T_var list = listOf(first);
    nms::drain(page, list, iterator_,
               [&](const globaldefs::NVSList_T& name) { each(std::stoi(name[0].value.in())); });
  }

  ScriptedIterator* script_ = new ScriptedIterator;  // the POA's once activated
  NamingAttributesIterator_I_var iterator_;
};

using Ints = std::vector<int>;

TEST_F(Drain, takesAListWithoutIterator) {
  iterator_ = NamingAttributesIterator_I::_nil();
  EXPECT_EQ(drainAll({1, 2}), (Ints{1, 2}));
  EXPECT_EQ(drainAll({}), Ints{});
}

TEST_F(Drain, readsPagesInOrderAndDestroys) {
  script_->answers = {{{3, 4}, true}, {{5}, false}};
  EXPECT_EQ(drainAll({1, 2}), (Ints{1, 2, 3, 4, 5}));
  EXPECT_EQ(script_->asked, (std::vector<CORBA::ULong>{2, 2}));
  EXPECT_EQ(script_->destroyed, 1);
}

TEST_F(Drain, startsFromAnEmptyList) {
  script_->answers = {{{1}, false}};
  EXPECT_EQ(drainAll({}), Ints{1});
}

TEST_F(Drain, takesMoreThanItAskedFor) {
  script_->answers = {{{2, 3, 4, 5, 6}, true}, {{7, 8, 9}, false}};
  EXPECT_EQ(drainAll({1}, 1), (Ints{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(Drain, takesLessThanItAskedFor) {
  script_->answers = {{{2}, true}, {{3}, true}, {{4}, false}};
  EXPECT_EQ(drainAll({1}, 100), (Ints{1, 2, 3, 4}));
}

TEST_F(Drain, endsAtAnEmptyPageThatPromisesMore) {
  script_->answers = {{{2}, true}, {{}, true}};
  EXPECT_EQ(drainAll({1}), (Ints{1, 2}));
  EXPECT_EQ(script_->destroyed, 1);
}

TEST_F(Drain, destroysWhenThePageIsRefused) {
  script_->answers = {{{2}, true}};
  Ints got;
  EXPECT_THROW(drainInto({1}, 2, [&](int entry) { got.push_back(entry); }),
               globaldefs::ProcessingFailureException);
  EXPECT_EQ(got, (Ints{1, 2}));
  EXPECT_EQ(script_->destroyed, 1);
}

TEST_F(Drain, destroysWhenTheReaderThrows) {
  script_->answers = {{{2}, true}, {{3}, false}};
  EXPECT_THROW(drainInto({1}, 2,
                         [](int entry) {
                           if (entry == 2) {
                             throw std::runtime_error("enough");
                           }
                         }),
               std::runtime_error);
  EXPECT_EQ(script_->destroyed, 1);
  EXPECT_EQ(script_->asked.size(), 1U);
}

TEST_F(Drain, destroysWhenTheReaderThrowsAtOnce) {
  EXPECT_THROW(drainInto({1}, 2, [](int) { throw std::runtime_error("enough"); }),
               std::runtime_error);
  EXPECT_EQ(script_->destroyed, 1);
  EXPECT_TRUE(script_->asked.empty());
}

TEST_F(Drain, bearsAnIteratorThatIsGoneAtItsEnd) {
  script_->answers = {{{2}, false}};
  script_->destroyFails = true;
  EXPECT_EQ(drainAll({1}), (Ints{1, 2}));
  EXPECT_EQ(script_->destroyed, 1);
}

}  // namespace
}  // namespace zk::test
