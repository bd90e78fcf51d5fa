// The channel and its admins, as a client finds its way through them.
#include <gtest/gtest.h>

#include "tests/agent/channel/support/clients.h"
#include "tests/agent/channel/support/qosvalues.h"

namespace {

using namespace zk::test;
using namespace CosNotifyChannelAdmin;

class Channel : public testing::Test {
 protected:
  LocalChannel local;
};

template <class List>
std::vector<int> listed(List* list) {
  const typename List::_var_type owned = list;
  std::vector<int> ids;
  for (CORBA::ULong i = 0; i < owned.in().length(); ++i) {
    ids.push_back(owned.in()[i]);
  }
  return ids;
}

TEST_F(Channel, hasADefaultAdmin) {
  EXPECT_EQ(local.admin->MyID(), 0);
  EXPECT_EQ(local.admin->MyOperator(), AND_OP);
  const EventChannel_var channel = local.admin->MyChannel();
  EXPECT_TRUE(channel->_is_equivalent(local.channel.in()));
  const ConsumerAdmin_var same = local.channel->get_consumeradmin(0);
  EXPECT_TRUE(same->_is_equivalent(local.admin.in()));
}

TEST_F(Channel, makesAdmins) {
  AdminID first = 0;
  AdminID second = 0;
  const ConsumerAdmin_var one = local.channel->new_for_consumers(OR_OP, first);
  const ConsumerAdmin_var two = local.channel->new_for_consumers(AND_OP, second);
  EXPECT_EQ(one->MyID(), first);
  EXPECT_EQ(one->MyOperator(), OR_OP);
  EXPECT_EQ(listed(local.channel->get_all_consumeradmins()), (std::vector<int>{0, first, second}));
  const ConsumerAdmin_var same = local.channel->get_consumeradmin(second);
  EXPECT_TRUE(same->_is_equivalent(two.in()));
  EXPECT_THROW(local.channel->get_consumeradmin(99), AdminNotFound);
}

TEST_F(Channel, listsTheProxiesOfAnAdmin) {
  AdminID id = 0;
  const ConsumerAdmin_var other = local.channel->new_for_consumers(AND_OP, id);
  ProxyID pushing = 0;
  ProxyID pulling = 0;
  ProxyID foreign = 0;
  const ProxySupplier_var one =
      local.admin->obtain_notification_push_supplier(SEQUENCE_EVENT, pushing);
  const ProxySupplier_var two =
      local.admin->obtain_notification_pull_supplier(STRUCTURED_EVENT, pulling);
  const ProxySupplier_var three = other->obtain_notification_pull_supplier(SEQUENCE_EVENT, foreign);
  EXPECT_EQ(listed(local.admin->push_suppliers()), std::vector<int>{pushing});
  EXPECT_EQ(listed(local.admin->pull_suppliers()), std::vector<int>{pulling});
  EXPECT_EQ(listed(other->pull_suppliers()), std::vector<int>{foreign});
  const ProxySupplier_var same = local.admin->get_proxy_supplier(pulling);
  EXPECT_TRUE(same->_is_equivalent(two.in()));
  EXPECT_THROW(local.admin->get_proxy_supplier(foreign), ProxyNotFound);
  EXPECT_THROW(local.admin->get_proxy_supplier(99), ProxyNotFound);
  EXPECT_EQ(one->MyType(), PUSH_SEQUENCE);
  EXPECT_EQ(two->MyType(), PULL_STRUCTURED);
  EXPECT_EQ(three->MyType(), PULL_SEQUENCE);
  const ConsumerAdmin_var of = three->MyAdmin();
  EXPECT_TRUE(of->_is_equivalent(other.in()));
}

TEST_F(Channel, limitsWhatASessionMakes) {
  std::vector<ProxySupplier_var> proxies;
  proxies.reserve(17);
  ProxyID id = 0;
  for (int i = 0; i < 16; ++i) {
    proxies.emplace_back(local.admin->obtain_notification_pull_supplier(STRUCTURED_EVENT, id));
  }
  try {
    const ProxySupplier_var more =
        local.admin->obtain_notification_push_supplier(STRUCTURED_EVENT, id);
    ADD_FAILURE();
  } catch (const AdminLimitExceeded& refused) {
    EXPECT_STREQ(refused.admin_property_err.name, "MaxConsumers");
    EXPECT_EQ(dumpValue(refused.admin_property_err.value), "long:16");
  }
  const StructuredProxyPullSupplier_var first = StructuredProxyPullSupplier::_narrow(proxies[0]);
  first->disconnect_structured_pull_supplier();
  EXPECT_NO_THROW(
      proxies.emplace_back(local.admin->obtain_notification_pull_supplier(SEQUENCE_EVENT, id)));

  AdminID admin = 0;
  for (int i = 0; i < 15; ++i) {
    const ConsumerAdmin_var one = local.channel->new_for_consumers(AND_OP, admin);
  }
  EXPECT_THROW(local.channel->new_for_consumers(AND_OP, admin), CORBA::IMP_LIMIT);
}

TEST_F(Channel, refusesWhatItDoesNotOffer) {
  AdminID id = 0;
  ProxyID proxy = 0;
  EXPECT_THROW(local.channel->default_supplier_admin(), CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.channel->new_for_suppliers(AND_OP, id), CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.channel->get_supplieradmin(0), AdminNotFound);
  EXPECT_EQ(listed(local.channel->get_all_supplieradmins()), std::vector<int>());
  EXPECT_THROW(local.channel->for_consumers(), CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.channel->for_suppliers(), CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.channel->destroy(), CORBA::NO_PERMISSION);
  const EventChannelFactory_var factory = local.channel->MyFactory();
  EXPECT_TRUE(CORBA::is_nil(factory.in()));
  EXPECT_THROW(local.admin->obtain_notification_push_supplier(ANY_EVENT, proxy),
               CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.admin->obtain_notification_pull_supplier(ANY_EVENT, proxy),
               CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.admin->obtain_push_supplier(), CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.admin->obtain_pull_supplier(), CORBA::NO_IMPLEMENT);
}

TEST_F(Channel, mapsNothing) {
  StructuredPull client(local);
  const CosNotifyFilter::MappingFilter_var none = CosNotifyFilter::MappingFilter::_nil();
  EXPECT_TRUE(CORBA::is_nil(CosNotifyFilter::MappingFilter_var(client.proxy->priority_filter())));
  EXPECT_TRUE(CORBA::is_nil(CosNotifyFilter::MappingFilter_var(local.admin->lifetime_filter())));
  EXPECT_THROW(client.proxy->lifetime_filter(none.in()), CORBA::NO_IMPLEMENT);
  EXPECT_THROW(local.admin->priority_filter(none.in()), CORBA::NO_IMPLEMENT);
}

TEST_F(Channel, tellsWhatIsOffered) {
  StructuredPull client(local);
  const CosNotification::EventTypeSeq_var all =
      client.proxy->obtain_offered_types(ALL_NOW_UPDATES_OFF);
  Ids names;
  for (CORBA::ULong i = 0; i < all->length(); ++i) {
    EXPECT_STREQ(all.in()[i].domain_name, "tmf_mtnm");
    names.emplace_back(all.in()[i].type_name);
  }
  EXPECT_EQ(names, (Ids{"NT_OBJECT_CREATION", "NT_OBJECT_DELETION", "NT_ATTRIBUTE_VALUE_CHANGE",
                        "NT_STATE_CHANGE", "NT_ALARM", "NT_FILE_TRANSFER_STATUS"}));
  const CosNotification::EventTypeSeq_var none =
      client.proxy->obtain_offered_types(NONE_NOW_UPDATES_ON);
  EXPECT_EQ(none->length(), 0U);
}

}  // namespace
