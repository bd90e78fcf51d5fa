#include "agent/orb/nils.h"

#include "zk_quornex/idl/admin.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::agent {

namespace {

template <class... Interfaces>
void make() {
  (static_cast<void>(Interfaces::_nil()), ...);
}

void makeTheOrbs() {
  make<CORBA::Object, CORBA::ORB, CORBA::TypeCode, CORBA::Policy>();
  using namespace PortableServer;
  make<POA, POAManager, AdapterActivator, ServantManager, ServantActivator, ServantLocator>();
  using namespace DynamicAny;
  make<DynAny, DynAnyFactory, DynArray, DynEnum, DynFixed, DynSequence, DynStruct, DynUnion>();
}

void makeTheChannels() {
  {
    using namespace CosEventComm;
    make<PullConsumer, PullSupplier, PushConsumer, PushSupplier>();
  }
  {
    using namespace CosEventChannelAdmin;
    make<ConsumerAdmin, EventChannel, ProxyPullConsumer, ProxyPullSupplier, ProxyPushConsumer,
         ProxyPushSupplier, SupplierAdmin>();
  }
  {
    using namespace CosNotifyComm;
    make<NotifyPublish, NotifySubscribe, PullConsumer, PullSupplier, PushConsumer, PushSupplier,
         SequencePullConsumer, SequencePullSupplier, SequencePushConsumer, SequencePushSupplier,
         StructuredPullConsumer, StructuredPullSupplier, StructuredPushConsumer,
         StructuredPushSupplier>();
  }
  {
    using namespace CosNotifyFilter;
    make<Filter, FilterAdmin, FilterFactory, MappingFilter>();
    make<CosNotification::QoSAdmin, CosNotification::AdminPropertiesAdmin>();
  }
  using namespace CosNotifyChannelAdmin;
  make<ConsumerAdmin, EventChannel, EventChannelFactory, ProxyConsumer, ProxyPullConsumer,
       ProxyPullSupplier, ProxyPushConsumer, ProxyPushSupplier, ProxySupplier,
       SequenceProxyPullConsumer, SequenceProxyPullSupplier, SequenceProxyPushConsumer,
       SequenceProxyPushSupplier, StructuredProxyPullConsumer, StructuredProxyPullSupplier,
       StructuredProxyPushConsumer, StructuredProxyPushSupplier, SupplierAdmin>();
}

void makeTheManagers() {
  make<session::Session_I, nmsSession::NmsSession_I, emsSession::EmsSession_I,
       emsSessionFactory::EmsSessionFactory_I, mtnmVersion::Version_I, common::Common_I,
       emsMgr::EMSMgr_I, managedElementManager::ManagedElementMgr_I,
       multiLayerSubnetwork::MultiLayerSubnetworkMgr_I, topologyMap::TopologyMapMgr_I,
       emsAdmin::EmsAdmin_I>();
  make<globaldefs::NamingAttributesIterator_I, managedElement::ManagedElementIterator_I,
       multiLayerSubnetwork::SubnetworkIterator_I, notifications::EventIterator_I,
       topologicalLink::TopologicalLinkIterator_I, topologyMap::MapObjectIterator_I>();
}

}  // namespace

void makeNilReferences() {
  makeTheOrbs();
  makeTheChannels();
  makeTheManagers();
}

}  // namespace zk::agent
