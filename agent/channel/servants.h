// What clients call: the operations that several servants of the channel have in
// common, and the servants of the proxies. Each part adds one interface's
// operations to the servant class it is given. Safe on any thread.
#ifndef ZK_AGENT_CHANNEL_SERVANTS_H
#define ZK_AGENT_CHANNEL_SERVANTS_H

#include <memory>

#include "agent/channel/filters.h"
#include "agent/channel/proxies.h"
#include "agent/channel/qos.h"
#include "agent/channel/selection.h"
#include "zk_quornex/idl/channel.h"

namespace zk::agent {

// CosNotification::QoSAdmin.
template <class Base>
class QosPart : public virtual Base {
 public:
  CosNotification::QoSProperties* get_qos() override { return qos().get(); }
  void set_qos(const CosNotification::QoSProperties& wanted) override { qos().set(wanted); }
  void validate_qos(const CosNotification::QoSProperties& wanted,
                    CosNotification::NamedPropertyRangeSeq_out available) override {
    available = qos().validate(wanted);
  }

 protected:
  virtual Qos& qos() = 0;
};

// CosNotifyFilter::FilterAdmin, and subscription_change.
template <class Base>
class SelectionPart : public virtual Base {
 public:
  CosNotifyFilter::FilterID add_filter(CosNotifyFilter::Filter_ptr filter) override {
    return selection().addFilter(filters().find(filter));
  }
  void remove_filter(CosNotifyFilter::FilterID id) override { selection().removeFilter(id); }
  CosNotifyFilter::Filter_ptr get_filter(CosNotifyFilter::FilterID id) override {
    return selection().filter(id);
  }
  CosNotifyFilter::FilterIDSeq* get_all_filters() override { return selection().filterIds(); }
  void remove_all_filters() override { selection().removeFilters(); }

  void subscription_change(const CosNotification::EventTypeSeq& added,
                           const CosNotification::EventTypeSeq& removed) override {
    selection().change(added, removed);
  }

 protected:
  virtual Selection& selection() = 0;
  virtual Filters& filters() = 0;
};

// Events have no priorities and no lifetimes here, hence no filters that map
// them: there is none to get, and none can be set.
template <class Base>
class MappingPart : public virtual Base {
 public:
  CosNotifyFilter::MappingFilter_ptr priority_filter() override {
    return CosNotifyFilter::MappingFilter::_nil();
  }
  void priority_filter(CosNotifyFilter::MappingFilter_ptr) override { throw CORBA::NO_IMPLEMENT(); }
  CosNotifyFilter::MappingFilter_ptr lifetime_filter() override {
    return CosNotifyFilter::MappingFilter::_nil();
  }
  void lifetime_filter(CosNotifyFilter::MappingFilter_ptr) override { throw CORBA::NO_IMPLEMENT(); }
};

// The servant for the proxy's type. The caller owns a reference to the result.
PortableServer::Servant makeProxyServant(const std::shared_ptr<SessionChannel>& channel,
                                         const std::shared_ptr<Proxy>& proxy);

}  // namespace zk::agent

#endif
