// The order of the virtual operations, read from the virtual tables themselves:
// programs compiled against an earlier header call by position.
#include <gtest/gtest.h>

#include <new>

#include "tests/names/names.h"
#include "zk_quornex/names/namevalidate.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;
using globaldefs::NVSList_T;

// Both destructors come first: the one that leaves the memory, and the one that
// frees it.
enum Slot { DESTROY = 0, DESTROY_AND_FREE = 1, FIRST_OPERATION = 2 };

template <class Function, class Object>
Function slot(Object* object, int index) {
  void* const* table = *reinterpret_cast<void* const* const*>(object);
  return reinterpret_cast<Function>(table[index]);
}

using Destroy = void (*)(void*);
using Read = unsigned long (*)(TEName*, const NVSList_T&);
using Write = unsigned long (*)(TEName*, NVSList_T&);
using AcceptCall = unsigned long (*)(TEName*, Name_Visitor*);

// Writes down which visit was called.
class NotedVisits : public Name_Visitor {
 public:
  explicit NotedVisits(std::string* destroyed = nullptr) : destroyed_(destroyed) {}
  ~NotedVisits() override {
    if (destroyed_ != nullptr) {
      *destroyed_ += "destroyed ";
    }
  }
  unsigned long Visit(TEName*) override { return note("TEName"); }
  unsigned long Visit(TEMEName*) override { return note("TEMEName"); }
  unsigned long Visit(TESubnetworkName*) override { return note("TESubnetworkName"); }
  unsigned long Visit(TETopoLinkName*) override { return note("TETopoLinkName"); }

  std::string noted;

 private:
  unsigned long note(const char* kind) {
    noted += std::string(kind) + " ";
    return 0;
  }

  std::string* destroyed_;
};

class NamedDestruction : public TEName {
 public:
  explicit NamedDestruction(std::string& log) : log_(log) {}
  ~NamedDestruction() override { log_ += "destroyed "; }
  static void* operator new(std::size_t size) { return ::operator new(size); }
  static void* operator new(std::size_t, void* place) { return place; }
  static void operator delete(void* memory) {
    freed = memory;
    ::operator delete(memory);
  }

  static inline const void* freed = nullptr;

 private:
  std::string& log_;
};

TEST(Slots, startWithTheTwoDestructors) {
  std::string log;
  alignas(NamedDestruction) unsigned char memory[sizeof(NamedDestruction)];
  auto* placed = ::new (memory) NamedDestruction(log);
  slot<Destroy>(placed, DESTROY)(placed);
  EXPECT_EQ(log, "destroyed ");
  EXPECT_EQ(NamedDestruction::freed, nullptr);

  auto* allocated = new NamedDestruction(log);
  const void* address = allocated;
  slot<Destroy>(allocated, DESTROY_AND_FREE)(allocated);
  EXPECT_EQ(log, "destroyed destroyed ");
  EXPECT_EQ(NamedDestruction::freed, address);
}

class NameSlots : public testing::TestWithParam<TwoLevelKind> {
 protected:
  FixedEmsConfig config_;
};

TEST_P(NameSlots, readThenWriteThenAccept) {
  const auto name = GetParam().make();
  const NVSList_T list = named(GetParam().pairName, GetParam().value);
  EXPECT_EQ(slot<Read>(name.get(), FIRST_OPERATION)(name.get(), list), OK);
  NVSList_T written;
  EXPECT_EQ(slot<Write>(name.get(), FIRST_OPERATION + 1)(name.get(), written), OK);
  EXPECT_EQ(dumpName(written), dumpName(list));
  NotedVisits visits;
  EXPECT_EQ(slot<AcceptCall>(name.get(), FIRST_OPERATION + 2)(name.get(), &visits), OK);
}

INSTANTIATE_TEST_SUITE_P(Kinds, NameSlots, testing::ValuesIn(TWO_LEVEL_KINDS),
                         [](const auto& kind) { return std::string(kind.param.pairName); });

TEST(Slots, ofTheEmssNameAreTheSame) {
  const FixedEmsConfig config;
  TEName name;
  EXPECT_EQ(slot<Read>(&name, 2)(&name, makeName({{"EMS", "other"}})), OTHER_EMS);
  NVSList_T written;
  EXPECT_EQ(slot<Write>(&name, 3)(&name, written), OK);
  EXPECT_EQ(dumpName(written), "EMS=Quor/1");
  NotedVisits visits;
  EXPECT_EQ(slot<AcceptCall>(&name, 4)(&name, &visits), OK);
  EXPECT_EQ(visits.noted, "TEName ");
}

TEST(Slots, ofAnAidNameAreTheSame) {
  const FixedEmsConfig config;
  CAAIDName name;
  EXPECT_EQ(slot<Read>(&name, 2)(&name, named("ManagedElement", "7")), OK);
  NVSList_T written;
  EXPECT_EQ(slot<Write>(&name, 3)(&name, written), OK);
  EXPECT_EQ(dumpName(written), "EMS=Quor/1|ManagedElement=7|AID=7");
  NotedVisits visits;
  EXPECT_EQ(slot<AcceptCall>(&name, 4)(&name, &visits), OK);
  EXPECT_EQ(visits.noted, "");
}

using Visit = unsigned long (*)(Name_Visitor*, void*);

TEST(Slots, ofAVisitorAreItsDestructorsAndTheFourVisits) {
  NotedVisits visits;
  for (int index = 2; index <= 5; ++index) {
    slot<Visit>(&visits, index)(&visits, nullptr);
  }
  EXPECT_EQ(visits.noted, "TEName TEMEName TESubnetworkName TETopoLinkName ");

  std::string log;
  auto* allocated = new NotedVisits(&log);
  slot<Destroy>(allocated, DESTROY_AND_FREE)(allocated);
  EXPECT_EQ(log, "destroyed ");
}

TEST(Slots, ofTheValidatingVisitorAreTheSame) {
  const CapturedTrace trace;
  Name_Validate_Visitor visitor;
  for (int index = 2; index <= 5; ++index) {
    EXPECT_EQ(slot<Visit>(&visitor, index)(&visitor, nullptr), OTHER_EMS);
  }
  EXPECT_EQ(trace.texts(), (std::vector<std::string>{
                               "2 Name_Validate_Visitor::Visit fail,TEName *pName is nil",
                               "2 Name_Validate_Visitor::Visit fail,TEMEName* pName is nil",
                               "2 Name_Validate_Visitor::Visit fail,TESubnetworkName* pName is nil",
                               "2 Name_Validate_Visitor::Visit fail,TETopoLinkName* pName is nil",
                           }));
  static_assert(sizeof(Name_Validate_Visitor) == sizeof(void*), "no data members");
}

}  // namespace

}  // namespace zk::test
