// The interfaces: their bases, and each operation with its parameters in the
// order that both sides marshal by. Read from the stubs' own declarations.
#include <gtest/gtest.h>

#include <type_traits>

#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::test {

namespace {

using CORBA::Boolean;
using CORBA::ULong;
using globaldefs::NamingAttributes_T;
using globaldefs::NamingAttributesIterator_I_out;
using globaldefs::NamingAttributesList_T_out;
using globaldefs::NVSList_T;
using notifications::EventIterator_I_out;
using notifications::EventList_T_out;
using notifications::PerceivedSeverityList_T;
using notifications::ProbableCauseList_T;

// The class whose members are the operations, which is not the same with every
// ORB.
template <class Interface>
using Stub = std::remove_pointer_t<typename Interface::_ptr_type>;

template <class Interface, class Base>
constexpr bool IS_A = std::is_convertible_v<Stub<Interface>*, Stub<Base>*>;

// Operation<Interface, Result, Parameters...>::is(&Stub<Interface>::operation)
template <class Interface, class Result, class... Parameters>
struct Operation {
  using Type = Result (Stub<Interface>::*)(Parameters...);
  template <class Declared>
  static constexpr bool is(Declared) {
    return std::is_same_v<Declared, Type>;
  }
};

TEST(Interfaces, haveTheirBases) {
  using common::Common_I;
  using session::Session_I;
  EXPECT_TRUE((IS_A<nmsSession::NmsSession_I, Session_I>));
  EXPECT_TRUE((IS_A<emsSession::EmsSession_I, Session_I>));
  EXPECT_TRUE((IS_A<emsSessionFactory::EmsSessionFactory_I, mtnmVersion::Version_I>));
  EXPECT_TRUE((IS_A<emsMgr::EMSMgr_I, Common_I>));
  EXPECT_TRUE((IS_A<managedElementManager::ManagedElementMgr_I, Common_I>));
  EXPECT_TRUE((IS_A<multiLayerSubnetwork::MultiLayerSubnetworkMgr_I, Common_I>));
  EXPECT_FALSE((IS_A<Session_I, mtnmVersion::Version_I>));
  EXPECT_FALSE((IS_A<globaldefs::NamingAttributesIterator_I, Common_I>));
}

TEST(Interfaces, ofASession) {
  using I = session::Session_I;
  EXPECT_TRUE((Operation<I, session::Session_I_ptr>::is(&Stub<I>::associatedSession)));
  EXPECT_TRUE((Operation<I, void>::is(&Stub<I>::ping)));
  EXPECT_TRUE((Operation<I, void>::is(&Stub<I>::endSession)));
}

TEST(Interfaces, ofTheNmssSession) {
  using I = nmsSession::NmsSession_I;
  using TwoTexts = Operation<I, void, const char*, const char*>;
  EXPECT_TRUE(TwoTexts::is(&Stub<I>::eventLossOccurred));
  EXPECT_TRUE((Operation<I, void, const char*>::is(&Stub<I>::eventLossCleared)));
  EXPECT_TRUE(TwoTexts::is(&Stub<I>::alarmLossOccurred));
}

TEST(Interfaces, ofTheEmssSession) {
  using I = emsSession::EmsSession_I;
  EXPECT_TRUE((Operation<I, void, emsSession::EmsSession_I::managerNames_T_out>::is(
      &Stub<I>::getSupportedManagers)));
  EXPECT_TRUE((Operation<I, void, const char*, common::Common_I_out>::is(&Stub<I>::getManager)));
  EXPECT_TRUE(
      (Operation<I, void, CosNotifyChannelAdmin::EventChannel_out>::is(&Stub<I>::getEventChannel)));
}

TEST(Interfaces, ofTheFactoryAndTheVersion) {
  using Version = mtnmVersion::Version_I;
  EXPECT_TRUE((Operation<Version, char*>::is(&Stub<Version>::getVersion)));
  using I = emsSessionFactory::EmsSessionFactory_I;
  EXPECT_TRUE((Operation<I, void, const char*, const char*, nmsSession::NmsSession_I_ptr,
                         emsSession::EmsSession_I_out>::is(&Stub<I>::getEmsSession)));
}

TEST(Interfaces, ofEveryManager) {
  using I = common::Common_I;
  using SetText = Operation<I, void, const NamingAttributes_T&, const char*>;
  EXPECT_TRUE(SetText::is(&Stub<I>::setNativeEMSName));
  EXPECT_TRUE((Operation<I, void, const NamingAttributes_T&, const char*, Boolean>::is(
      &Stub<I>::setUserLabel)));
  EXPECT_TRUE(SetText::is(&Stub<I>::setOwner));
  EXPECT_TRUE((Operation<I, void, common::CapabilityList_T_out>::is(&Stub<I>::getCapabilities)));
  EXPECT_TRUE(
      (Operation<I, void, const NamingAttributes_T&, NVSList_T&>::is(&Stub<I>::setAdditionalInfo)));
}

template <class Iterator, class List>
void expectIterator() {
  EXPECT_TRUE((Operation<Iterator, Boolean, ULong, List>::is(&Stub<Iterator>::next_n)));
  EXPECT_TRUE((Operation<Iterator, ULong>::is(&Stub<Iterator>::getLength)));
  EXPECT_TRUE((Operation<Iterator, void>::is(&Stub<Iterator>::destroy)));
}

TEST(Interfaces, ofTheIterators) {
  expectIterator<globaldefs::NamingAttributesIterator_I, NamingAttributesList_T_out>();
  expectIterator<managedElement::ManagedElementIterator_I,
                 managedElement::ManagedElementList_T_out>();
  expectIterator<multiLayerSubnetwork::SubnetworkIterator_I,
                 multiLayerSubnetwork::SubnetworkList_T_out>();
  expectIterator<topologicalLink::TopologicalLinkIterator_I,
                 topologicalLink::TopologicalLinkList_T_out>();
  expectIterator<notifications::EventIterator_I, EventList_T_out>();
}

TEST(Interfaces, ofTheEmssManager) {
  using I = emsMgr::EMSMgr_I;
  using Names =
      Operation<I, void, ULong, NamingAttributesList_T_out, NamingAttributesIterator_I_out>;
  EXPECT_TRUE((Operation<I, void, emsMgr::EMS_T_out>::is(&Stub<I>::getEMS)));
  EXPECT_TRUE((Operation<I, void, ULong, multiLayerSubnetwork::SubnetworkList_T_out,
                         multiLayerSubnetwork::SubnetworkIterator_I_out>::
                   is(&Stub<I>::getAllTopLevelSubnetworks)));
  EXPECT_TRUE(Names::is(&Stub<I>::getAllTopLevelSubnetworkNames));
  EXPECT_TRUE((Operation<I, void, ULong, topologicalLink::TopologicalLinkList_T_out,
                         topologicalLink::TopologicalLinkIterator_I_out>::
                   is(&Stub<I>::getAllTopLevelTopologicalLinks)));
  EXPECT_TRUE(Names::is(&Stub<I>::getAllTopLevelTopologicalLinkNames));
  EXPECT_TRUE(
      (Operation<I, void, const NamingAttributes_T&, topologicalLink::TopologicalLink_T_out>::is(
          &Stub<I>::getTopLevelTopologicalLink)));
  EXPECT_TRUE(
      (Operation<I, void, const ProbableCauseList_T&, const PerceivedSeverityList_T&, ULong,
                 EventList_T_out, EventIterator_I_out>::is(&Stub<I>::getAllEMSAndMEActiveAlarms)));
  EXPECT_TRUE((Operation<I, void, const PerceivedSeverityList_T&, ULong, EventList_T_out,
                         EventIterator_I_out>::is(&Stub<I>::getAllEMSSystemActiveAlarms)));
}

TEST(Interfaces, ofTheElementManager) {
  using I = managedElementManager::ManagedElementMgr_I;
  EXPECT_TRUE((Operation<
               I, void, ULong, managedElement::ManagedElementList_T_out,
               managedElement::ManagedElementIterator_I_out>::is(&Stub<I>::getAllManagedElements)));
  EXPECT_TRUE(
      (Operation<I, void, ULong, NamingAttributesList_T_out, NamingAttributesIterator_I_out>::is(
          &Stub<I>::getAllManagedElementNames)));
  EXPECT_TRUE((Operation<I, void, const NamingAttributes_T&, NamingAttributesList_T_out>::is(
      &Stub<I>::getContainingSubnetworkNames)));
  EXPECT_TRUE(
      (Operation<I, void, const NamingAttributes_T&, managedElement::ManagedElement_T_out>::is(
          &Stub<I>::getManagedElement)));
  EXPECT_TRUE((Operation<I, void, const NamingAttributes_T&, const ProbableCauseList_T&,
                         const PerceivedSeverityList_T&, ULong, EventList_T_out,
                         EventIterator_I_out>::is(&Stub<I>::getAllActiveAlarms)));
}

TEST(Interfaces, ofTheSubnetworkManager) {
  using I = multiLayerSubnetwork::MultiLayerSubnetworkMgr_I;
  using Names = Operation<I, void, const NamingAttributes_T&, ULong, NamingAttributesList_T_out,
                          NamingAttributesIterator_I_out>;
  EXPECT_TRUE((Operation<
               I, void, const NamingAttributes_T&, ULong, managedElement::ManagedElementList_T_out,
               managedElement::ManagedElementIterator_I_out>::is(&Stub<I>::getAllManagedElements)));
  EXPECT_TRUE(Names::is(&Stub<I>::getAllManagedElementNames));
  EXPECT_TRUE((Operation<I, void, const NamingAttributes_T&,
                         multiLayerSubnetwork::MultiLayerSubnetwork_T_out>::
                   is(&Stub<I>::getMultiLayerSubnetwork)));
  EXPECT_TRUE(
      (Operation<
          I, void, const NamingAttributes_T&, ULong, topologicalLink::TopologicalLinkList_T_out,
          topologicalLink::TopologicalLinkIterator_I_out>::is(&Stub<I>::getAllTopologicalLinks)));
  EXPECT_TRUE(Names::is(&Stub<I>::getAllTopologicalLinkNames));
  EXPECT_TRUE(
      (Operation<I, void, const NamingAttributes_T&, topologicalLink::TopologicalLink_T_out>::is(
          &Stub<I>::getTopologicalLink)));
  using Rates = const transmissionParameters::LayerRateList_T&;
  EXPECT_TRUE((
      Operation<I, void, const NamingAttributes_T&, Rates, Rates, ULong, NamingAttributesList_T_out,
                NamingAttributesIterator_I_out>::is(&Stub<I>::getAllEdgePointNames)));
  EXPECT_TRUE(
      (Operation<I, void, const NamingAttributes_T&, Rates, ULong, NamingAttributesList_T_out,
                 NamingAttributesIterator_I_out>::is(&Stub<I>::getAllSubnetworkConnectionNames)));
  EXPECT_TRUE((Operation<I, void, const NamingAttributes_T&, ULong, NamingAttributesList_T_out,
                         NamingAttributesIterator_I_out>::is(&Stub<I>::getAllTPPoolNames)));
}

}  // namespace

}  // namespace zk::test
