#include "tests/nms/support/fakeagent.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "tests/nms/support/refusing.h"

namespace zk::test {
namespace {

using globaldefs::ProcessingFailureException;

NVSList_T nameOf(const char* kind, unsigned id) {
  NVSList_T name;
  name.length(2);
  name[0].name = "EMS";
  name[0].value = "Quor/1";
  name[1].name = kind;
  name[1].value = std::to_string(id).c_str();
  return name;
}

unsigned idOf(const NVSList_T& name) {
  return name.length() == 2 ? static_cast<unsigned>(std::strtoul(name[1].value.in(), nullptr, 10))
                            : 0;
}

void checkId(const NVSList_T& name, unsigned count) {
  if (idOf(name) < 1 || idOf(name) > count) {
    throw ProcessingFailureException(globaldefs::EXCPT_ENTITY_NOT_FOUND, "no such object");
  }
}

NVSList_T oneInfo() {
  NVSList_T info;
  info.length(1);
  info[0].name = "site";
  info[0].value = "North, 2nd floor";
  return info;
}

transmissionParameters::LayerRateList_T someRates() {
  transmissionParameters::LayerRateList_T rates;
  rates.length(2);
  rates[0] = 1;
  rates[1] = 87;
  return rates;
}

// Gives a list of count entries the way an agent does: up to howMany at once,
// the rest through an iterator.
template <class Interface, class Skeleton, class List, class ListOut, class IteratorOut, class Make>
void serve(PortableServer::POA_ptr poa, FakeNetwork& network, unsigned count, CORBA::ULong howMany,
           ListOut list, IteratorOut iterator, Make make) {
  using Servant = FakeIterator<Skeleton, List, ListOut, Make>;
  PortableServer::Servant_var<Servant> servant(new Servant(poa, network, 1, count, make));
  list = servant->take(howMany)._retn();
  if (count <= howMany) {
    iterator = Interface::_nil();
    return;
  }
  ++network.iteratorsMade;
  iterator = activate<Interface>(poa, servant._retn());
}

void serveNames(PortableServer::POA_ptr poa, FakeNetwork& network, unsigned count,
                CORBA::ULong howMany, const NamesOut& list, const NamesIteratorOut& iterator,
                const char* kind) {
  serve<globaldefs::NamingAttributesIterator_I, POA_globaldefs::NamingAttributesIterator_I,
        globaldefs::NamingAttributesList_T>(poa, network, count, howMany, NamesOut(list),
                                            NamesIteratorOut(iterator),
                                            [kind](unsigned id) { return nameOf(kind, id); });
}

// Takes every change and notes it.
template <class Base>
class Settable : public Base {
 public:
  Settable(FakeNetwork& network, const char* manager) : changed_(network), manager_(manager) {}

  void setUserLabel(const NVSList_T& name, const char* text, CORBA::Boolean unique) override {
    note(name, std::string("setUserLabel '") + text + (unique ? "' unique" : "'"));
  }
  void setOwner(const NVSList_T& name, const char* text) override {
    note(name, std::string("setOwner '") + text + "'");
  }
  void setNativeEMSName(const NVSList_T& name, const char* text) override {
    note(name, std::string("setNativeEMSName '") + text + "'");
  }

 private:
  void note(const NVSList_T& name, const std::string& change) {
    changed_.noteName(name);
    changed_.noteChange(std::string(manager_) + " " + change);
  }

  FakeNetwork& changed_;
  const char* const manager_;
};

notifications::EventList_T wantedAlarms(const FakeNetwork& network, const ProbableCauseList_T& not1,
                                        const PerceivedSeverityList_T& not2) {
  notifications::EventList_T result;
  for (const FakeAlarm& alarm : network.alarms) {
    bool wanted = true;
    for (CORBA::ULong i = 0; i < not1.length(); ++i) {
      wanted = wanted && alarm.cause != not1[i].in();
    }
    for (CORBA::ULong i = 0; i < not2.length(); ++i) {
      wanted = wanted && alarm.severity != not2[i];
    }
    if (wanted) {
      added(result) = fakeAlarm(alarm.element, alarm.cause, alarm.severity, alarm.text);
    }
  }
  return result;
}

void serveAlarms(PortableServer::POA_ptr poa, FakeNetwork& network,
                 const notifications::EventList_T& alarms, CORBA::ULong howMany,
                 const EventList_T_out& list, const EventIterator_I_out& iterator) {
  serve<notifications::EventIterator_I, POA_notifications::EventIterator_I,
        notifications::EventList_T>(
      poa, network, alarms.length(), howMany, EventList_T_out(list), EventIterator_I_out(iterator),
      [alarms](unsigned id) { return CosNotification::StructuredEvent(alarms[id - 1]); });
}

class ElementMgr : public Settable<RefusingElementMgr> {
 public:
  ElementMgr(PortableServer::POA_ptr poa, FakeNetwork& network)
      : Settable(network, "ManagedElement"),
        poa_(PortableServer::POA::_duplicate(poa)),
        network_(network) {}

  void getAllActiveAlarms(const NVSList_T& name, const ProbableCauseList_T& causes,
                          const PerceivedSeverityList_T& severities, CORBA::ULong howMany,
                          EventList_T_out list, EventIterator_I_out iterator) override {
    network_.noteName(name);
    checkId(name, network_.elements);
    const FakeNetwork::Locked guard(network_);
    serveAlarms(poa_.in(), network_, wantedAlarms(network_, causes, severities), howMany, list,
                iterator);
  }

  void getAllManagedElements(CORBA::ULong howMany, managedElement::ManagedElementList_T_out list,
                             managedElement::ManagedElementIterator_I_out iterator) override {
    serve<managedElement::ManagedElementIterator_I, POA_managedElement::ManagedElementIterator_I,
          managedElement::ManagedElementList_T>(
        poa_.in(), network_, network_.elements, howMany,
        managedElement::ManagedElementList_T_out(list),
        managedElement::ManagedElementIterator_I_out(iterator),
        [this](unsigned id) { return element(id); });
  }

  void getAllManagedElementNames(CORBA::ULong howMany, NamesOut list,
                                 NamesIteratorOut iterator) override {
    serveNames(poa_.in(), network_, network_.elements, howMany, list, iterator, "ManagedElement");
  }

  void getManagedElement(const NVSList_T& name, managedElement::ManagedElement_T_out me) override {
    network_.noteName(name);
    network_.onGetElement();
    checkId(name, network_.elements);
    me = new managedElement::ManagedElement_T(element(idOf(name)));
  }

 private:
  managedElement::ManagedElement_T element(unsigned id) const {
    managedElement::ManagedElement_T me;
    me.name = nameOf("ManagedElement", id);
    me.userLabel = network_.elementLabel.c_str();
    me.nativeEMSName = ("ne-" + std::to_string(id)).c_str();
    me.owner = "";
    me.location = "Oslo";
    me.version = "1.0";
    me.productName = "QX-100";
    me.communicationState =
        id % 2 == 1 ? managedElement::CS_AVAILABLE : managedElement::CS_UNAVAILABLE;
    me.emsInSyncState = id % 2 == 1;
    me.supportedRates = someRates();
    me.additionalInfo = oneInfo();
    return me;
  }

  PortableServer::POA_var poa_;
  FakeNetwork& network_;
};

multiLayerSubnetwork::MultiLayerSubnetwork_T subnetwork(unsigned id) {
  multiLayerSubnetwork::MultiLayerSubnetwork_T result;
  result.name = nameOf("MultiLayerSubnetwork", id);
  result.userLabel = "ring";
  result.nativeEMSName = "sn";
  result.owner = "ops";
  result.subnetworkType = multiLayerSubnetwork::TOPO_OPEN_PSR;
  result.supportedRates = someRates();
  return result;
}

topologicalLink::TopologicalLink_T link(unsigned id) {
  topologicalLink::TopologicalLink_T result;
  result.name = nameOf("TopologicalLink", id);
  result.userLabel = "fibre";
  result.nativeEMSName = "tl";
  result.owner = "ops";
  result.direction = globaldefs::CD_BI;
  result.rate = 47;
  result.aEndTP = nameOf("ManagedElement", id);
  result.zEndTP = nameOf("ManagedElement", id + 1);
  return result;
}

class SubnetworkMgr : public Settable<RefusingSubnetworkMgr> {
 public:
  explicit SubnetworkMgr(FakeNetwork& network)
      : Settable(network, "MultiLayerSubnetwork"), network_(network) {}

  void getMultiLayerSubnetwork(const NVSList_T& name,
                               multiLayerSubnetwork::MultiLayerSubnetwork_T_out out) override {
    network_.noteName(name);
    checkId(name, network_.subnetworks);
    out = new multiLayerSubnetwork::MultiLayerSubnetwork_T(subnetwork(idOf(name)));
  }

 private:
  FakeNetwork& network_;
};

topologyMap::MapObject_T mapObject(const char* kind, const std::string& parent, unsigned id) {
  topologyMap::MapObject_T result;
  result.name = nameOf(kind, id);
  result.name[1].value = ("/parentid=" + parent + "/id=" + std::to_string(id)).c_str();
  result.userLabel = "drawn";
  result.nativeEMSName = kind;
  result.owner = "";
  result.additionalInfo = oneInfo();
  return result;
}

class MapMgr : public Settable<RefusingMapMgr> {
 public:
  MapMgr(PortableServer::POA_ptr poa, FakeNetwork& network)
      : Settable(network, "TopologyMap"),
        poa_(PortableServer::POA::_duplicate(poa)),
        network_(network) {}

  void getAllNodes(CORBA::ULong howMany, topologyMap::MapObjectList_T_out list,
                   topologyMap::MapObjectIterator_I_out iterator) override {
    serveMap(howMany, list, iterator, network_.nodes,
             [](unsigned id) { return mapObject("Node", id == 1 ? "AllSubMap" : "2", id); });
  }
  void getAllSubMaps(CORBA::ULong howMany, topologyMap::MapObjectList_T_out list,
                     topologyMap::MapObjectIterator_I_out iterator) override {
    serveMap(howMany, list, iterator, network_.nodes,
             [](unsigned id) { return mapObject("SubMap", "AllSubmap", id); });
  }
  void getAllDisplayLinks(CORBA::ULong howMany, topologyMap::MapObjectList_T_out list,
                          topologyMap::MapObjectIterator_I_out iterator) override {
    serveMap(howMany, list, iterator, network_.nodes,
             [](unsigned) { return mapObject("DisplayLink", "2", 1); });
  }
  void getMapObject(const NVSList_T& name, topologyMap::MapObject_T_out object) override {
    network_.noteName(name);
    object = new topologyMap::MapObject_T(mapObject(name[1].name.in(), "2", 1));
  }

 private:
  template <class Make>
  void serveMap(CORBA::ULong howMany, const topologyMap::MapObjectList_T_out& list,
                const topologyMap::MapObjectIterator_I_out& iterator, unsigned count, Make make) {
    serve<topologyMap::MapObjectIterator_I, POA_topologyMap::MapObjectIterator_I,
          topologyMap::MapObjectList_T>(poa_.in(), network_, count, howMany,
                                        topologyMap::MapObjectList_T_out(list),
                                        topologyMap::MapObjectIterator_I_out(iterator), make);
  }

  PortableServer::POA_var poa_;
  FakeNetwork& network_;
};

class EmsMgr : public Settable<RefusingEmsMgr> {
 public:
  EmsMgr(PortableServer::POA_ptr poa, FakeNetwork& network)
      : Settable(network, "EMS"), poa_(PortableServer::POA::_duplicate(poa)), network_(network) {}

  void getAllEMSAndMEActiveAlarms(const ProbableCauseList_T& causes,
                                  const PerceivedSeverityList_T& severities, CORBA::ULong howMany,
                                  EventList_T_out list, EventIterator_I_out iterator) override {
    const FakeNetwork::Locked guard(network_);
    serveAlarms(poa_.in(), network_, wantedAlarms(network_, causes, severities), howMany, list,
                iterator);
  }

  void getEMS(emsMgr::EMS_T_out out) override {
    network_.onGetEms();
    emsMgr::EMS_T_var ems = new emsMgr::EMS_T;
    ems->name = nameOf("", 0);
    ems->name.length(1);
    ems->userLabel = "Main";
    ems->nativeEMSName = "quor";
    ems->owner = "";
    ems->emsVersion = "4.2";
    ems->type = "fake";
    ems->additionalInfo = oneInfo();
    out = ems._retn();
  }

  void getAllTopLevelSubnetworks(CORBA::ULong howMany,
                                 multiLayerSubnetwork::SubnetworkList_T_out list,
                                 multiLayerSubnetwork::SubnetworkIterator_I_out iterator) override {
    serve<multiLayerSubnetwork::SubnetworkIterator_I,
          POA_multiLayerSubnetwork::SubnetworkIterator_I, multiLayerSubnetwork::SubnetworkList_T>(
        poa_.in(), network_, network_.subnetworks, howMany,
        multiLayerSubnetwork::SubnetworkList_T_out(list),
        multiLayerSubnetwork::SubnetworkIterator_I_out(iterator), subnetwork);
  }

  void getAllTopLevelSubnetworkNames(CORBA::ULong howMany, NamesOut list,
                                     NamesIteratorOut iterator) override {
    serveNames(poa_.in(), network_, network_.subnetworks, howMany, list, iterator,
               "MultiLayerSubnetwork");
  }

  void getAllTopLevelTopologicalLinks(
      CORBA::ULong howMany, topologicalLink::TopologicalLinkList_T_out list,
      topologicalLink::TopologicalLinkIterator_I_out iterator) override {
    serve<topologicalLink::TopologicalLinkIterator_I,
          POA_topologicalLink::TopologicalLinkIterator_I, topologicalLink::TopologicalLinkList_T>(
        poa_.in(), network_, network_.links, howMany,
        topologicalLink::TopologicalLinkList_T_out(list),
        topologicalLink::TopologicalLinkIterator_I_out(iterator), link);
  }

  void getAllTopLevelTopologicalLinkNames(CORBA::ULong howMany, NamesOut list,
                                          NamesIteratorOut iterator) override {
    serveNames(poa_.in(), network_, network_.links, howMany, list, iterator, "TopologicalLink");
  }

  void getTopLevelTopologicalLink(const NVSList_T& name,
                                  topologicalLink::TopologicalLink_T_out out) override {
    network_.noteName(name);
    checkId(name, network_.links);
    out = new topologicalLink::TopologicalLink_T(link(idOf(name)));
  }

 private:
  PortableServer::POA_var poa_;
  FakeNetwork& network_;
};

class EmsSession : public POA_emsSession::EmsSession_I {
 public:
  EmsSession(PortableServer::POA_ptr poa, FakeNetwork& network, nmsSession::NmsSession_I_ptr client)
      : poa_(PortableServer::POA::_duplicate(poa)),
        network_(network),
        client_(nmsSession::NmsSession_I::_duplicate(client)) {}

  session::Session_I_ptr associatedSession() override {
    return session::Session_I::_duplicate(client_.in());
  }
  void ping() override {}
  void endSession() override { ++network_.sessionsEnded; }
  void getSupportedManagers(emsSession::EmsSession_I::managerNames_T_out) override { refuse(); }
  void getEventChannel(CosNotifyChannelAdmin::EventChannel_out channel) override {
    channel = makeFakeChannel(poa_.in(), network_.events);
  }

  void getManager(const char* name, common::Common_I_out manager) override {
    const std::string wanted(name);
    if (wanted == "EMS") {
      manager = activate<common::Common_I>(poa_.in(), new EmsMgr(poa_.in(), network_));
    } else if (wanted == "ManagedElement") {
      manager = activate<common::Common_I>(poa_.in(), new ElementMgr(poa_.in(), network_));
    } else if (wanted == "MultiLayerSubnetwork") {
      manager = activate<common::Common_I>(poa_.in(), new SubnetworkMgr(network_));
    } else if (wanted == "TopologyMap" && network_.nodes > 0) {
      manager = activate<common::Common_I>(poa_.in(), new MapMgr(poa_.in(), network_));
    } else {
      refuse();
    }
  }

 private:
  PortableServer::POA_var poa_;
  FakeNetwork& network_;
  nmsSession::NmsSession_I_var client_;
};

class Factory : public POA_emsSessionFactory::EmsSessionFactory_I {
 public:
  Factory(PortableServer::POA_ptr poa, FakeNetwork& network)
      : poa_(PortableServer::POA::_duplicate(poa)), network_(network) {}

  char* getVersion() override { return CORBA::string_dup("3.0"); }

  void getEmsSession(const char* user, const char* password, nmsSession::NmsSession_I_ptr client,
                     emsSession::EmsSession_I_out session) override {
    network_.handOver();
    network_.onLogin();
    if (std::string(user) != "admin" || std::string(password) != "secret") {
      throw ProcessingFailureException(globaldefs::EXCPT_ACCESS_DENIED, "wrong user or password");
    }
    client->ping();
    ++network_.pingsAnswered;
    network_.setClient(client);
    ++network_.logins;
    session =
        activate<emsSession::EmsSession_I>(poa_.in(), new EmsSession(poa_.in(), network_, client));
  }

 private:
  PortableServer::POA_var poa_;
  FakeNetwork& network_;
};

std::string text(CORBA::Object_ptr object) {
  CORBA::String_var reference = testOrb()->object_to_string(object);
  return reference.in();
}

}  // namespace

void FakeNetwork::noteName(const globaldefs::NVSList_T& name) {
  std::string noted;
  for (CORBA::ULong i = 0; i < name.length(); ++i) {
    noted += std::string(i == 0 ? "" : " ") + name[i].name.in() + ":" + name[i].value.in();
  }
  const std::lock_guard<std::mutex> guard(mutex_);
  lastName_ = noted;
}

std::string FakeNetwork::lastName() {
  const std::lock_guard<std::mutex> guard(mutex_);
  return lastName_;
}

void FakeNetwork::noteChange(const std::string& change) {
  const std::lock_guard<std::mutex> guard(mutex_);
  changes_.push_back(change);
}

std::vector<std::string> FakeNetwork::changes() {
  const std::lock_guard<std::mutex> guard(mutex_);
  return changes_;
}

void FakeNetwork::setClient(nmsSession::NmsSession_I_ptr client) {
  const std::lock_guard<std::mutex> guard(mutex_);
  client_ = nmsSession::NmsSession_I::_duplicate(client);
}

nmsSession::NmsSession_I_var FakeNetwork::client() {
  const std::lock_guard<std::mutex> guard(mutex_);
  return client_;
}

FakeAgent::FakeAgent(FakeNetwork& network) : network_(network) {
  PortableServer::POAManager_var manager = testRootPoa()->the_POAManager();
  poa_ = testRootPoa()->create_POA("fake", manager.in(), CORBA::PolicyList());
}

FakeAgent::~FakeAgent() { poa_->destroy(true, true); }

std::string FakeAgent::reference() const {
  emsSessionFactory::EmsSessionFactory_I_var factory =
      activate<emsSessionFactory::EmsSessionFactory_I>(poa_.in(), new Factory(poa_.in(), network_));
  return text(factory.in());
}

std::string FakeAgent::referenceOfSomethingElse() const {
  common::Common_I_var manager =
      activate<common::Common_I>(poa_.in(), new EmsMgr(poa_.in(), network_));
  return text(manager.in());
}

int runDyingAgent(const char* referenceFile) {
  FakeNetwork network;
  network.elements = 20;
  network.onNext = [] { _exit(0); };
  const FakeAgent agent(network);
  std::ofstream(referenceFile) << agent.reference() << std::endl;
  testOrb()->run();
  return 0;
}

int runEventsAgent(const char* referenceFile) {
  FakeNetwork network;
  network.events.onConnected = [&network] {
    network.events.raise({fakeEvent("NT_HEARTBEAT", {{"notificationId", "1"}}),
                          fakeEvent("NT_HEARTBEAT", {{"notificationId", "2"}})});
  };
  const FakeAgent agent(network);
  std::ofstream(referenceFile) << agent.reference() << std::endl;
  testOrb()->run();
  return 0;
}

}  // namespace zk::test
