// Parts of an event channel that offer nothing: a fake overrides what it has.
#ifndef ZK_TESTS_NMS_SUPPORT_REFUSINGCHANNEL_H
#define ZK_TESTS_NMS_SUPPORT_REFUSINGCHANNEL_H

#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"

namespace zk::test {

[[noreturn]] inline void notOffered() { throw CORBA::NO_IMPLEMENT(); }

template <class Skeleton>
class RefusingQos : public Skeleton {
 public:
  CosNotification::QoSProperties* get_qos() override { notOffered(); }
  void set_qos(const CosNotification::QoSProperties&) override { notOffered(); }
  void validate_qos(const CosNotification::QoSProperties&,
                    CosNotification::NamedPropertyRangeSeq_out) override {
    notOffered();
  }
};

template <class Skeleton>
class RefusingFiltered : public RefusingQos<Skeleton> {
 public:
  CosNotifyFilter::FilterID add_filter(CosNotifyFilter::Filter_ptr) override { notOffered(); }
  void remove_filter(CosNotifyFilter::FilterID) override { notOffered(); }
  CosNotifyFilter::Filter_ptr get_filter(CosNotifyFilter::FilterID) override { notOffered(); }
  CosNotifyFilter::FilterIDSeq* get_all_filters() override { notOffered(); }
  void remove_all_filters() override { notOffered(); }
  CosNotifyFilter::MappingFilter_ptr priority_filter() override { notOffered(); }
  void priority_filter(CosNotifyFilter::MappingFilter_ptr) override { notOffered(); }
  CosNotifyFilter::MappingFilter_ptr lifetime_filter() override { notOffered(); }
  void lifetime_filter(CosNotifyFilter::MappingFilter_ptr) override { notOffered(); }
  void subscription_change(const CosNotification::EventTypeSeq&,
                           const CosNotification::EventTypeSeq&) override {
    notOffered();
  }
};

template <class Skeleton>
class RefusingProxy : public RefusingFiltered<Skeleton> {
 public:
  CosNotifyChannelAdmin::ProxyType MyType() override { notOffered(); }
  CosNotifyChannelAdmin::ConsumerAdmin_ptr MyAdmin() override { notOffered(); }
  CosNotification::EventTypeSeq* obtain_offered_types(
      CosNotifyChannelAdmin::ObtainInfoMode) override {
    notOffered();
  }
  void validate_event_qos(const CosNotification::QoSProperties&,
                          CosNotification::NamedPropertyRangeSeq_out) override {
    notOffered();
  }
};

template <class Skeleton>
class RefusingPushProxy : public RefusingProxy<Skeleton> {
 public:
  void suspend_connection() override { notOffered(); }
  void resume_connection() override { notOffered(); }
};

class RefusingAdmin : public RefusingFiltered<POA_CosNotifyChannelAdmin::ConsumerAdmin> {
 public:
  CosNotifyChannelAdmin::AdminID MyID() override { notOffered(); }
  CosNotifyChannelAdmin::EventChannel_ptr MyChannel() override { notOffered(); }
  CosNotifyChannelAdmin::InterFilterGroupOperator MyOperator() override { notOffered(); }
  CosNotifyChannelAdmin::ProxyIDSeq* pull_suppliers() override { notOffered(); }
  CosNotifyChannelAdmin::ProxyIDSeq* push_suppliers() override { notOffered(); }
  CosNotifyChannelAdmin::ProxySupplier_ptr get_proxy_supplier(
      CosNotifyChannelAdmin::ProxyID) override {
    notOffered();
  }
  CosEventChannelAdmin::ProxyPushSupplier_ptr obtain_push_supplier() override { notOffered(); }
  CosEventChannelAdmin::ProxyPullSupplier_ptr obtain_pull_supplier() override { notOffered(); }
  void destroy() override { notOffered(); }
};

class RefusingChannel : public RefusingQos<POA_CosNotifyChannelAdmin::EventChannel> {
 public:
  CosNotification::AdminProperties* get_admin() override { notOffered(); }
  void set_admin(const CosNotification::AdminProperties&) override { notOffered(); }
  CosEventChannelAdmin::ConsumerAdmin_ptr for_consumers() override { notOffered(); }
  CosEventChannelAdmin::SupplierAdmin_ptr for_suppliers() override { notOffered(); }
  void destroy() override { notOffered(); }
  CosNotifyChannelAdmin::EventChannelFactory_ptr MyFactory() override { notOffered(); }
  CosNotifyChannelAdmin::ConsumerAdmin_ptr default_consumer_admin() override { notOffered(); }
  CosNotifyChannelAdmin::SupplierAdmin_ptr default_supplier_admin() override { notOffered(); }
  CosNotifyFilter::FilterFactory_ptr default_filter_factory() override { notOffered(); }
  CosNotifyChannelAdmin::ConsumerAdmin_ptr new_for_consumers(
      CosNotifyChannelAdmin::InterFilterGroupOperator,
      CosNotifyChannelAdmin::AdminID_out) override {
    notOffered();
  }
  CosNotifyChannelAdmin::SupplierAdmin_ptr new_for_suppliers(
      CosNotifyChannelAdmin::InterFilterGroupOperator,
      CosNotifyChannelAdmin::AdminID_out) override {
    notOffered();
  }
  CosNotifyChannelAdmin::ConsumerAdmin_ptr get_consumeradmin(
      CosNotifyChannelAdmin::AdminID) override {
    notOffered();
  }
  CosNotifyChannelAdmin::SupplierAdmin_ptr get_supplieradmin(
      CosNotifyChannelAdmin::AdminID) override {
    notOffered();
  }
  CosNotifyChannelAdmin::AdminIDSeq* get_all_consumeradmins() override { notOffered(); }
  CosNotifyChannelAdmin::AdminIDSeq* get_all_supplieradmins() override { notOffered(); }
};

class RefusingFilter : public POA_CosNotifyFilter::Filter {
 public:
  char* constraint_grammar() override { notOffered(); }
  CosNotifyFilter::ConstraintInfoSeq* add_constraints(
      const CosNotifyFilter::ConstraintExpSeq&) override {
    notOffered();
  }
  void modify_constraints(const CosNotifyFilter::ConstraintIDSeq&,
                          const CosNotifyFilter::ConstraintInfoSeq&) override {
    notOffered();
  }
  CosNotifyFilter::ConstraintInfoSeq* get_constraints(
      const CosNotifyFilter::ConstraintIDSeq&) override {
    notOffered();
  }
  CosNotifyFilter::ConstraintInfoSeq* get_all_constraints() override { notOffered(); }
  void remove_all_constraints() override { notOffered(); }
  void destroy() override { notOffered(); }
  CORBA::Boolean match(const CORBA::Any&) override { notOffered(); }
  CORBA::Boolean match_structured(const CosNotification::StructuredEvent&) override {
    notOffered();
  }
  CORBA::Boolean match_typed(const CosNotification::PropertySeq&) override { notOffered(); }
  CosNotifyFilter::CallbackID attach_callback(CosNotifyComm::NotifySubscribe_ptr) override {
    notOffered();
  }
  void detach_callback(CosNotifyFilter::CallbackID) override { notOffered(); }
  CosNotifyFilter::CallbackIDSeq* get_callbacks() override { notOffered(); }
};

}  // namespace zk::test

#endif
