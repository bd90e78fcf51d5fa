#include "tests/agent/orb/decoding.h"

#include <omniORB4/codeSets.h>

#include <map>
#include <memory>
#include <vector>

#include "tests/agent/constraint/events.h"
#include "zk_quornex/idl/admin.h"
#include "zk_quornex/idl/channel.h"
#include "zk_quornex/idl/managers.h"
#include "zk_quornex/idl/sessions.h"

namespace zk::test {

namespace {

using CosNotification::PropertySeq;
using CosNotification::StructuredEvent;

template <class Value>
Value decoded(cdrStream& in) {
  Value value;
  value <<= in;
  const Value copy(value);
  cdrMemoryStream out;
  copy >>= out;
  return value;
}

template <class... Values>
void decodeAll(cdrStream& in) {
  (decoded<Values>(in), ...);
}

template <class Interface>
void decodeReference(cdrStream& in) {
  typename Interface::_var_type reference = Interface::_unmarshalObjRef(in);
}

void decodeText(cdrStream& in) { CORBA::String_var text = in.unmarshalString(); }

void decodeLogin(cdrStream& in) {
  decodeText(in);
  decodeText(in);
  decodeReference<nmsSession::NmsSession_I>(in);
}

void decodeMapping(cdrStream& in) {
  decodeText(in);
  decodeAll<CORBA::Any>(in);
}

const std::vector<std::unique_ptr<const agent::Constraint>>& constraints() {
  static const auto* const made = [] {
    auto* list = new std::vector<std::unique_ptr<const agent::Constraint>>;
    for (const char* text :
         {"$perceivedSeverity == PS_CRITICAL", "$objectName(EMS) == 'x'",
          "$objectName[0].value == 'x' or $objectName._length > 2",
          "$attributeList[0].value == 'x' or $attributeList(userLabel) == 'y'",
          "$.remainder_of_body.name[0].value == 'x' or $.remainder_of_body._type_id == 'y'",
          "$.filterable_data[0].value == 1 or $.header.variable_header[0].value._repos_id == 'z'",
          "exist $affectedTPList[0][0].name and $affectedTPList._length == 1"}) {
      list->push_back(parsed(text));
    }
    return list;
  }();
  return *made;
}

void decodeEvent(cdrStream& in) {
  const auto event = decoded<StructuredEvent>(in);
  for (const auto& constraint : constraints()) {
    constraint->matches(event);
  }
}

using Decode = void (*)(cdrStream&);

const std::map<std::string_view, Decode> DECODERS = {
    {"set_qos", decodeAll<PropertySeq>},
    {"validate_qos", decodeAll<PropertySeq>},
    {"validate_event_qos", decodeAll<PropertySeq>},
    {"set_admin", decodeAll<PropertySeq>},
    {"match_typed", decodeAll<PropertySeq>},
    {"match", decodeAll<CORBA::Any>},
    {"match_structured", decodeEvent},
    {"push_structured_events", decodeAll<CosNotification::EventBatch>},
    {"create_mapping_filter", decodeMapping},
    {"add_constraints", decodeAll<CosNotifyFilter::ConstraintExpSeq>},
    {"modify_constraints",
     decodeAll<CosNotifyFilter::ConstraintIDSeq, CosNotifyFilter::ConstraintInfoSeq>},
    {"add_mapping_constraints", decodeAll<CosNotifyFilter::MappingConstraintPairSeq>},
    {"subscription_change",
     decodeAll<CosNotification::EventTypeSeq, CosNotification::EventTypeSeq>},
    {"getEmsSession", decodeLogin},
    {"connect_structured_push_consumer", decodeReference<CosNotifyComm::StructuredPushConsumer>},
    {"add_filter", decodeReference<CosNotifyFilter::Filter>},
    {"createTopologicalLink", decodeAll<topologicalLink::TLCreateData_T>},
    {"setAdditionalInfo", decodeAll<globaldefs::NVSList_T, globaldefs::NVSList_T>},
    {"getMapObject", decodeAll<globaldefs::NamingAttributes_T>},
};

// In memory of exactly the message's size, where alignment counts from its
// beginning.
bool decodedIn(CORBA::ULong texts, const std::string& message, const agent::Request& request,
               Decode decode) {
  const std::unique_ptr<char[]> bytes(new char[message.size()]);
  message.copy(bytes.get(), message.size());
  cdrMemoryStream in(bytes.get(), static_cast<CORBA::ULong>(message.size()));
  in.setByteSwapFlag(request.littleEndian);
  in.TCS_C(omni::omniCodeSet::getTCS_C(texts, {1, 2}));
  in.skipInput(static_cast<CORBA::ULong>(request.parametersAt));
  try {
    decode(in);
    return true;
  } catch (const CORBA::Exception&) {
    return false;
  }
}

}  // namespace

bool decodedByOrb(const std::string& message, const agent::Request& request) {
  const auto decode = DECODERS.find(request.operation);
  if (decode == DECODERS.end()) {
    return true;
  }
  const bool inLatin = decodedIn(omni::omniCodeSet::ID_8859_1, message, request, decode->second);
  const bool inUtf8 = decodedIn(omni::omniCodeSet::ID_UTF_8, message, request, decode->second);
  return inLatin && inUtf8;
}

}  // namespace zk::test
