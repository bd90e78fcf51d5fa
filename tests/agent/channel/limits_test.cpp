// How long a client's lists may be, and how much it can have kept.
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "tests/agent/channel/support/clients.h"
#include "tests/agent/channel/support/filters.h"

namespace {

using namespace zk::test;
using CosNotification::EventTypeSeq;
using CosNotifyFilter::Filter_var;

// A sanitizer keeps books of its own.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool MEMORY_TELLS = false;
#else
constexpr bool MEMORY_TELLS = true;
#endif

constexpr CORBA::ULong VERY_MANY = 100000;
constexpr long MIB = 1024L * 1024;

template <class Sequence>
Sequence longOne() {
  Sequence list;
  list.length(VERY_MANY);
  return list;
}

long residentBytes() {
  std::ifstream file("/proc/self/statm");
  long pages = 0;
  file >> pages >> pages;
  return pages * sysconf(_SC_PAGESIZE);
}

class Limits : public testing::Test {
 protected:
  LocalChannel local;
};

class LongList : public Limits {
 protected:
  const Filter_var filter = emptyFilter(local.channel.in());
  StructuredPush push{local};
};

TEST_F(LongList, ofConstraintsIsRefused) {
  EXPECT_THROW(filter->add_constraints(longOne<CosNotifyFilter::ConstraintExpSeq>()),
               CORBA::IMP_LIMIT);
  EXPECT_THROW(filter->modify_constraints(CosNotifyFilter::ConstraintIDSeq(),
                                          longOne<CosNotifyFilter::ConstraintInfoSeq>()),
               CORBA::BAD_PARAM);
}

TEST_F(LongList, ofConstraintsIdsIsRefused) {
  ASSERT_TRUE(add(filter.in(), "$a == 1"));
  CosNotifyFilter::ConstraintInfoSeq_var all = filter->get_all_constraints();
  auto ids = longOne<CosNotifyFilter::ConstraintIDSeq>();
  for (CORBA::ULong i = 0; i < ids.length(); ++i) {
    ids[i] = all[0U].constraint_id;
  }
  EXPECT_THROW(filter->get_constraints(ids), CORBA::BAD_PARAM);
  EXPECT_THROW(filter->modify_constraints(ids, CosNotifyFilter::ConstraintInfoSeq()),
               CORBA::BAD_PARAM);
}

TEST_F(LongList, ofEventTypesIsRefused) {
  const auto types = longOne<EventTypeSeq>();
  EXPECT_THROW(push.proxy->subscription_change(types, EventTypeSeq()), CORBA::IMP_LIMIT);
  EXPECT_THROW(push.proxy->subscription_change(EventTypeSeq(), types), CORBA::BAD_PARAM);
  EXPECT_THROW(local.admin->subscription_change(EventTypeSeq(), types), CORBA::BAD_PARAM);
  auto expressions = constraints({"$a == 1"});
  expressions[0].event_types = types;
  EXPECT_THROW(filter->add_constraints(expressions), CORBA::IMP_LIMIT);
}

TEST_F(LongList, ofCharactersInATypesNameIsRefused) {
  auto expressions = constraints({"$a == 1"});
  expressions[0].event_types.length(1);
  expressions[0].event_types[0].type_name = CORBA::string_dup(std::string(256, '*').c_str());
  EXPECT_THROW(filter->add_constraints(expressions), CosNotifyFilter::InvalidConstraint);
}

TEST_F(LongList, ofPropertiesIsRefused) {
  const auto properties = longOne<CosNotification::PropertySeq>();
  CosNotification::NamedPropertyRangeSeq_var ranges;
  EXPECT_THROW(push.proxy->set_qos(properties), CORBA::BAD_PARAM);
  EXPECT_THROW(local.admin->set_qos(properties), CORBA::BAD_PARAM);
  EXPECT_THROW(local.channel->set_qos(properties), CORBA::BAD_PARAM);
  EXPECT_THROW(local.channel->set_admin(properties), CORBA::BAD_PARAM);
  EXPECT_THROW(push.proxy->validate_qos(properties, ranges.out()), CORBA::BAD_PARAM);
  EXPECT_THROW(push.proxy->validate_event_qos(properties, ranges.out()), CORBA::BAD_PARAM);
}

TEST_F(LongList, ofAnEventsPropertiesIsRefused) {
  CosNotification::StructuredEvent event;
  event.filterable_data.length(VERY_MANY);
  EXPECT_THROW(filter->match_structured(event), CORBA::BAD_PARAM);
  event.filterable_data.length(0);
  event.header.variable_header.length(VERY_MANY);
  EXPECT_THROW(filter->match_structured(event), CORBA::BAD_PARAM);
}

TEST_F(Limits, boundTheWorkOfOneMatch) {
  const Filter_var filter = emptyFilter(local.channel.in());
  auto event = makeAlarm("1");
  event.filterable_data.length(1000);
  EXPECT_FALSE(filter->match_structured(event));
  ASSERT_TRUE(add(filter.in(), askingInVain(500, 1)));
  EXPECT_THROW(filter->match_structured(event), CORBA::NO_RESOURCES);
}

// Until the session may keep no more, with filters that go on where they were
// added when their objects are destroyed.
TEST_F(Limits, boundWhatFiltersKeep) {
  const long before = residentBytes();
  StructuredPull client(local);
  std::size_t kept = 0;
  bool goesOn = true;
  for (int i = 0; goesOn && i < 64; ++i) {
    const Filter_var filter = emptyFilter(local.channel.in());
    client.proxy->add_filter(filter.in());
    for (int j = 0; goesOn && j < 64; ++j) {
      const std::string number = std::to_string(i * 64 + j);
      const std::string text = "$a == '" + std::string(32000, 'x') + number + "'";
      goesOn = add(filter.in(), text);
      kept += goesOn ? text.size() : 0;
    }
    filter->destroy();
  }
  EXPECT_FALSE(goesOn);
  EXPECT_GT(kept, local.session->parts().settings.keptBytes / 4) << "well used";
  if (MEMORY_TELLS) {
    EXPECT_LT(residentBytes() - before,
              static_cast<long>(local.session->parts().settings.keptBytes) + 8 * MIB);
  }
  const Filter_var another = emptyFilter(local.channel.in());
  EXPECT_FALSE(add(another.in(), "$a == '" + std::string(32000, 'y') + "'"));
  client.proxy->remove_all_filters();
  EXPECT_TRUE(add(another.in(), "$a == '" + std::string(32000, 'y') + "'"));
}

TEST_F(Limits, keepEqualConstraintsOnce) {
  const Filter_var filter = emptyFilter(local.channel.in());
  const std::string text = "$a == '" + std::string(32000, 'x') + "'";
  ASSERT_TRUE(add(filter.in(), text));
  const std::size_t once = local.session->parts().kept->taken();
  for (int i = 1; i < 64; ++i) {
    ASSERT_TRUE(add(filter.in(), text));
  }
  EXPECT_LT(local.session->parts().kept->taken(), 2 * once);
  filter->remove_all_constraints();
  EXPECT_EQ(local.session->parts().kept->taken(), 0U);
}

// Large events to consumers that never ask for them.
TEST_F(Limits, boundWhatWaitsForAllConsumers) {
  const long before = residentBytes();
  std::vector<std::unique_ptr<StructuredPull>> clients;
  for (int i = 0; i < 16; ++i) {
    clients.push_back(std::make_unique<StructuredPull>(local));
    clients.back()->connect();
  }
  auto event = makeCreation("1");
  setProperty(event, "additionalText", toAny(std::string(std::size_t{64} * 1024, 'x').c_str()));
  constexpr unsigned long EVENTS = 1500;
  for (unsigned long i = 0; i < EVENTS; ++i) {
    send(event);
  }
  ASSERT_TRUE(
      becomesTrue([&] { return zk::platform::eventSinkCounts("event-cache").taken == EVENTS; }));
  EXPECT_TRUE(local.losses->becomes({"occurred 20121120094200.0Z 1"}));
  const auto& settings = local.session->parts().settings;
  EXPECT_LE(local.session->parts().waiting->taken(),
            settings.eventBytes + std::size_t{16} * 70 * 1024);
  if (MEMORY_TELLS) {
    EXPECT_LT(residentBytes() - before, static_cast<long>(settings.eventBytes) + 32 * MIB);
  }
  for (const auto& client : clients) {
    client->rest();
  }
  EXPECT_EQ(local.session->parts().waiting->taken(), 0U);
  EXPECT_TRUE(local.losses->becomes({"occurred 20121120094200.0Z 1", "cleared"}));
}

}  // namespace
