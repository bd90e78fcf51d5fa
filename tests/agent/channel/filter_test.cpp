// What is selected of the events: subscriptions and filter objects.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/agent/channel/support/clients.h"
#include "tests/agent/channel/support/filters.h"

namespace {

using namespace zk::test;
using CosNotification::EventTypeSeq;
using CosNotifyChannelAdmin::AdminID;
using CosNotifyChannelAdmin::ConsumerAdmin_var;
using CosNotifyFilter::ConstraintInfoSeq_var;
using CosNotifyFilter::Filter_var;

EventTypeSeq types(const std::vector<const char*>& names, const char* domain = "tmf_mtnm") {
  EventTypeSeq list;
  list.length(static_cast<CORBA::ULong>(names.size()));
  for (CORBA::ULong i = 0; i < list.length(); ++i) {
    list[i].domain_name = CORBA::string_dup(domain);
    list[i].type_name = CORBA::string_dup(names[i]);
  }
  return list;
}

class Filtering : public testing::Test {
 protected:
  Filter_var filterOf(const std::vector<std::string>& texts) {
    const CosNotifyFilter::FilterFactory_var factory = local.channel->default_filter_factory();
    Filter_var filter = factory->create_filter("EXTENDED_TCL");
    const ConstraintInfoSeq_var added = filter->add_constraints(constraints(texts));
    EXPECT_EQ(added->length(), texts.size());
    return filter;
  }

  // The ids that come through of a critical, a major and a minor alarm and a
  // creation.
  Ids passing(StructuredPull& one) {
    send(makeAlarm("critical", notifications::PS_CRITICAL));
    send(makeAlarm("major", notifications::PS_MAJOR));
    send(makeAlarm("minor", notifications::PS_MINOR));
    send(makeCreation("creation"));
    return rest(one);
  }
  // Nothing filters the witness: what came before what it has seen has been
  // offered to all.
  Ids rest(StructuredPull& one) {
    send(makeCreation("end"));
    while (witness.next() != "end") {
    }
    Ids ids = one.rest();
    ids.erase(std::remove(ids.begin(), ids.end(), "end"), ids.end());
    return ids;
  }

  LocalChannel local;
  StructuredPull witness{local, unfiltered().in()};
  StructuredPull client{local};

  void SetUp() override {
    witness.connect();
    client.connect();
  }

 private:
  ConsumerAdmin_var unfiltered() {
    AdminID id = 0;
    return local.channel->new_for_consumers(CosNotifyChannelAdmin::AND_OP, id);
  }
};

TEST_F(Filtering, passesEverythingWithoutAFilter) {
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor", "creation"}));
}

TEST_F(Filtering, followsTheConstraintsOfAProxy) {
  const Filter_var filter = filterOf({"$perceivedSeverity == PS_CRITICAL"});
  const auto id = client.proxy->add_filter(filter.in());
  EXPECT_EQ(passing(client), Ids{"critical"});
  client.proxy->remove_filter(id);
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor", "creation"}));
}

TEST_F(Filtering, joinsConstraintsAndFiltersOfOneObject) {
  const Filter_var one = filterOf({"$perceivedSeverity == PS_CRITICAL", "'CREATION' ~ $type_name"});
  const Filter_var two = filterOf({"$notificationId == 'minor'"});
  client.proxy->add_filter(one.in());
  EXPECT_EQ(passing(client), (Ids{"critical", "creation"}));
  client.proxy->add_filter(two.in());
  EXPECT_EQ(passing(client), (Ids{"critical", "minor", "creation"}));
}

TEST_F(Filtering, takesAnEmptyConstraintForTrueAndNoneForFalse) {
  const Filter_var all = filterOf({""});
  const Filter_var none = filterOf({});
  const auto id = client.proxy->add_filter(all.in());
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor", "creation"}));
  client.proxy->remove_filter(id);
  client.proxy->add_filter(none.in());
  EXPECT_EQ(passing(client), Ids());
}

TEST_F(Filtering, combinesAdminAndProxyAsTheAdminWasMade) {
  const Filter_var alarms = filterOf({"$type_name == 'NT_ALARM'"});
  const Filter_var two = filterOf({"$notificationId == 'major' or $notificationId == 'creation'"});
  for (const auto combination : {CosNotifyChannelAdmin::AND_OP, CosNotifyChannelAdmin::OR_OP}) {
    AdminID id = 0;
    const ConsumerAdmin_var admin = local.channel->new_for_consumers(combination, id);
    StructuredPull both(local, admin.in());
    StructuredPull adminOnly(local, admin.in());
    both.connect();
    adminOnly.connect();
    admin->add_filter(alarms.in());
    both.proxy->add_filter(two.in());
    const bool isAnd = combination == CosNotifyChannelAdmin::AND_OP;
    EXPECT_EQ(passing(both),
              isAnd ? Ids{"major"} : (Ids{"critical", "major", "minor", "creation"}));
    EXPECT_EQ(rest(adminOnly), (Ids{"critical", "major", "minor"}));
  }
}

TEST_F(Filtering, takesChangedConstraintsForLaterEvents) {
  const Filter_var filter = filterOf({"$notificationId == 'critical'"});
  client.proxy->add_filter(filter.in());
  EXPECT_EQ(passing(client), Ids{"critical"});
  ConstraintInfoSeq_var all = filter->get_all_constraints();
  ASSERT_EQ(all->length(), 1U);
  all[0U].constraint_expression.constraint_expr = CORBA::string_dup("$notificationId == 'minor'");
  filter->modify_constraints(CosNotifyFilter::ConstraintIDSeq(), all.in());
  EXPECT_EQ(passing(client), Ids{"minor"});
  filter->remove_all_constraints();
  EXPECT_EQ(passing(client), Ids());
}

TEST_F(Filtering, limitsAConstraintToItsEventTypes) {
  const CosNotifyFilter::FilterFactory_var factory = local.channel->default_filter_factory();
  const Filter_var filter = factory->create_filter("EXTENDED_TCL");
  auto list = constraints({""});
  list[0].event_types = types({"NT_OBJECT_*"});
  const ConstraintInfoSeq_var added = filter->add_constraints(list);
  client.proxy->add_filter(filter.in());
  EXPECT_EQ(passing(client), Ids{"creation"});
}

TEST_F(Filtering, goesOnWhenTheFilterObjectIsDestroyed) {
  const Filter_var filter = filterOf({"$notificationId == 'minor'"});
  client.proxy->add_filter(filter.in());
  filter->destroy();
  EXPECT_THROW(filter->get_all_constraints(), CORBA::OBJECT_NOT_EXIST);
  EXPECT_EQ(passing(client), Ids{"minor"});
  EXPECT_THROW(client.proxy->add_filter(filter.in()), CORBA::BAD_PARAM);
}

TEST_F(Filtering, numbersTheFiltersOfAProxy) {
  const Filter_var filter = filterOf({""});
  const auto first = client.proxy->add_filter(filter.in());
  const auto second = client.proxy->add_filter(filter.in());
  CosNotifyFilter::FilterIDSeq_var ids = client.proxy->get_all_filters();
  ASSERT_EQ(ids->length(), 2U);
  EXPECT_EQ(ids[0U], first);
  EXPECT_EQ(ids[1U], second);
  const Filter_var same = client.proxy->get_filter(second);
  EXPECT_TRUE(same->_is_equivalent(filter.in()));
  client.proxy->remove_filter(first);
  EXPECT_THROW(client.proxy->remove_filter(first), CosNotifyFilter::FilterNotFound);
  EXPECT_THROW(client.proxy->get_filter(first), CosNotifyFilter::FilterNotFound);
  client.proxy->remove_all_filters();
  const CosNotifyFilter::FilterIDSeq_var none = client.proxy->get_all_filters();
  EXPECT_EQ(none->length(), 0U);
}

TEST_F(Filtering, takesNoFilterButItsOwn) {
  EXPECT_THROW(client.proxy->add_filter(CosNotifyFilter::Filter::_nil()), CORBA::BAD_PARAM);
  const auto other = local.service.open(8, local.home, local.losses);
  const Filter_var foreign = other->filters().make(other);
  EXPECT_THROW(client.proxy->add_filter(foreign.in()), CORBA::BAD_PARAM);
}

TEST_F(Filtering, refusesWrongConstraintsWhole) {
  const Filter_var filter = filterOf({"$a == 1"});
  try {
    const ConstraintInfoSeq_var added =
        filter->add_constraints(constraints({"$b == 2", "$c == == 3"}));
    ADD_FAILURE();
  } catch (const CosNotifyFilter::InvalidConstraint& refused) {
    EXPECT_STREQ(refused.constr.constraint_expr, "$c == == 3");
  }
  const ConstraintInfoSeq_var all = filter->get_all_constraints();
  ASSERT_EQ(all->length(), 1U);
  EXPECT_STREQ(all.in()[0].constraint_expression.constraint_expr, "$a == 1");
}

TEST_F(Filtering, modifiesConstraintsWholeOrNotAtAll) {
  const Filter_var filter = filterOf({"$a == 1", "$b == 2"});
  ConstraintInfoSeq_var all = filter->get_all_constraints();
  const auto first = all[0U].constraint_id;
  CosNotifyFilter::ConstraintIDSeq removed;
  removed.length(1);
  removed[0] = first;
  CosNotifyFilter::ConstraintInfoSeq changed;
  changed.length(1);
  changed[0] = all[1U];
  changed[0].constraint_expression.constraint_expr = CORBA::string_dup("(");
  EXPECT_THROW(filter->modify_constraints(removed, changed), CosNotifyFilter::InvalidConstraint);
  changed[0].constraint_id = 99;
  EXPECT_THROW(filter->modify_constraints(removed, changed), CosNotifyFilter::ConstraintNotFound);
  ConstraintInfoSeq_var still = filter->get_all_constraints();
  EXPECT_EQ(still->length(), 2U);
  filter->modify_constraints(removed, CosNotifyFilter::ConstraintInfoSeq());
  EXPECT_THROW(filter->get_constraints(removed), CosNotifyFilter::ConstraintNotFound);
  still = filter->get_all_constraints();
  EXPECT_EQ(still->length(), 1U);
}

TEST_F(Filtering, speaksOneGrammar) {
  const CosNotifyFilter::FilterFactory_var factory = local.channel->default_filter_factory();
  EXPECT_THROW(factory->create_filter("TCL"), CosNotifyFilter::InvalidGrammar);
  EXPECT_THROW(factory->create_mapping_filter("EXTENDED_TCL", CORBA::Any()), CORBA::NO_IMPLEMENT);
  const Filter_var filter = factory->create_filter("EXTENDED_TCL");
  const CORBA::String_var grammar = filter->constraint_grammar();
  EXPECT_STREQ(grammar.in(), "EXTENDED_TCL");
}

TEST_F(Filtering, limitsFiltersAndConstraints) {
  const CosNotifyFilter::FilterFactory_var factory = local.channel->default_filter_factory();
  const Filter_var filter = filterOf({});
  const std::vector<std::string> texts(65, "$a == 1");
  EXPECT_THROW(filter->add_constraints(constraints(texts)), CORBA::IMP_LIMIT);
  for (int i = 1; i < 64; ++i) {
    const Filter_var one = factory->create_filter("EXTENDED_TCL");
  }
  EXPECT_THROW(factory->create_filter("EXTENDED_TCL"), CORBA::IMP_LIMIT);
}

TEST_F(Filtering, matchesStructuredEventsAlone) {
  const Filter_var filter = filterOf({"$perceivedSeverity == PS_CRITICAL"});
  EXPECT_TRUE(filter->match_structured(makeAlarm("1", notifications::PS_CRITICAL)));
  EXPECT_FALSE(filter->match_structured(makeAlarm("1", notifications::PS_MINOR)));
  EXPECT_THROW(filter->match(CORBA::Any()), CosNotifyFilter::UnsupportedFilterableData);
  EXPECT_THROW(filter->match_typed(CosNotification::PropertySeq()),
               CosNotifyFilter::UnsupportedFilterableData);
  EXPECT_THROW(filter->attach_callback(CosNotifyComm::NotifySubscribe::_nil()),
               CORBA::NO_IMPLEMENT);
  EXPECT_THROW(filter->detach_callback(1), CosNotifyFilter::CallbackNotFound);
  const CosNotifyFilter::CallbackIDSeq_var none = filter->get_callbacks();
  EXPECT_EQ(none->length(), 0U);
}

// A client says itself what a value of its event is.
TEST_F(Filtering, looksIntoNoValueThatAClientDescribes) {
  CosNotification::NamedPropertyRange range;
  range.name = CORBA::string_dup("here");
  auto event = makeAlarm("1");
  setProperty(event, "range", toAny(range));
  const Filter_var inside = filterOf({"$range.name == 'here'"});
  EXPECT_FALSE(inside->match_structured(event));
  client.proxy->add_filter(inside.in());
  send(event);
  EXPECT_EQ(rest(client), Ids{"1"}) << "the EMS's own";
  const Filter_var outside = filterOf({"exist $range and $layerRate == 1"});
  EXPECT_TRUE(outside->match_structured(event));
}

TEST_F(Filtering, opensNoValueInsideAnotherThatAClientSends) {
  CORBA::Any inner;
  inner <<= "here";
  auto event = makeAlarm("1");
  setProperty(event, "outer", toAny(inner));
  const Filter_var filter = filterOf({"$outer == 'here'"});
  EXPECT_FALSE(filter->match_structured(event));
  client.proxy->add_filter(filter.in());
  send(event);
  EXPECT_EQ(rest(client), Ids{"1"}) << "the EMS's own";
}

TEST_F(Filtering, followsTheSubscription) {
  const EventTypeSeq nothing;
  client.proxy->subscription_change(types({"NT_ALARM"}), nothing);
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor"}));
  client.proxy->subscription_change(types({"NT_OBJECT_*"}), types({"NT_ALARM"}));
  EXPECT_EQ(passing(client), Ids{"creation"});
  client.proxy->subscription_change(nothing, types({"NT_OBJECT_*"}));
  EXPECT_EQ(passing(client), Ids());
  client.proxy->subscription_change(types({"%ALL"}, "*"), nothing);
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor", "creation"}));
  client.proxy->subscription_change(nothing, types({"*"}, ""));
  EXPECT_EQ(passing(client), Ids());
}

TEST_F(Filtering, replacesEverythingByWhatIsAskedFor) {
  client.proxy->subscription_change(types({"NT_ALARM"}), types({"%ALL"}, "*"));
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor"}));
}

TEST_F(Filtering, followsTheSubscriptionOfTheAdmin) {
  local.admin->subscription_change(types({"NT_ALARM"}), EventTypeSeq());
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor"}));
  client.proxy->subscription_change(types({"NT_OBJECT_CREATION"}), EventTypeSeq());
  EXPECT_EQ(passing(client), Ids());
}

TEST_F(Filtering, refusesTypesThatNobodyCanMean) {
  const std::string longName(256, 'x');
  EXPECT_THROW(client.proxy->subscription_change(types({longName.c_str()}), EventTypeSeq()),
               CosNotifyComm::InvalidEventType);
  std::vector<std::string> names;
  std::vector<const char*> many;
  names.reserve(129);
  many.reserve(129);
  for (int i = 0; i < 129; ++i) {
    names.push_back("T" + std::to_string(i));
  }
  for (const std::string& name : names) {
    many.push_back(name.c_str());
  }
  EXPECT_THROW(client.proxy->subscription_change(types(many), EventTypeSeq()), CORBA::IMP_LIMIT);
  EXPECT_EQ(passing(client), (Ids{"critical", "major", "minor", "creation"}));
}

}  // namespace
