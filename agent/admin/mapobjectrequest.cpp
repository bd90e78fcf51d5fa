#include "agent/admin/mapobjectrequest.h"

#include <map>

#include "agent/admin/kinds.h"
#include "agent/base/log.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

[[noreturn]] void refuseInput(const std::string& reason) {
  throw refusal(globaldefs::EXCPT_INVALID_INPUT, reason);
}

// The attributes of a request. Each is taken once; what nobody takes does not
// belong to the kind.
class Attributes {
 public:
  explicit Attributes(const globaldefs::NVSList_T& list) {
    for (CORBA::ULong i = 0; i < list.length(); ++i) {
      const std::string name(list[i].name);
      if (!values_.emplace(name, list[i].value).second) {
        refuseInput("given twice: " + printable(name.c_str()));
      }
    }
  }

  std::string optional(const char* name) {
    const auto found = values_.find(name);
    if (found == values_.end()) {
      return {};
    }
    std::string value = found->second;
    values_.erase(found);
    return value;
  }

  std::string required(const char* name) {
    const std::string value = optional(name);
    return value.empty()
               ? throw refusal(globaldefs::EXCPT_INVALID_INPUT, std::string("missing: ") + name)
               : value;
  }

  void expectNoMore() const {
    if (!values_.empty()) {
      refuseInput("not an attribute of this kind: " + printable(values_.begin()->first.c_str()));
    }
  }

 private:
  std::map<std::string, std::string> values_;
};

long deviceIn(const std::string& text) {
  const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
  if (!digits || text.size() > 10) {
    refuseInput("not the id of a device: " + printable(text.c_str()));
  }
  return std::stol(text);
}

void readPlace(Attributes& attributes, Labels& labels, std::string& id, std::string& parentId) {
  labels.nativeName = attributes.required("name");
  id = attributes.optional("id");
  parentId = attributes.required("parent");
}

template <class Record>
std::string create(Inventory& inventory, const Attributes& attributes, Record record) {
  attributes.expectNoMore();
  refuseFailure(inventory.create(record), "the new object");
  return record.id;
}

std::string createNode(Inventory& inventory, Attributes& attributes) {
  NodeRecord node;
  readPlace(attributes, node, node.id, node.parentId);
  node.deviceId = deviceIn(attributes.required("device"));
  return create(inventory, attributes, std::move(node));
}

std::string createSubMap(Inventory& inventory, Attributes& attributes) {
  SubMapRecord subMap;
  readPlace(attributes, subMap, subMap.id, subMap.parentId);
  return create(inventory, attributes, std::move(subMap));
}

std::string createDisplayLink(Inventory& inventory, Attributes& attributes) {
  DisplayLinkRecord link;
  readPlace(attributes, link, link.id, link.parentId);
  link.aEndId = attributes.required("aEnd");
  link.zEndId = attributes.required("zEnd");
  return create(inventory, attributes, std::move(link));
}

std::string createPhysicalLink(Inventory& inventory, Attributes& attributes) {
  PhysicalLinkRecord link;
  link.id = attributes.optional("id");
  link.linkId = attributes.required("link");
  return create(inventory, attributes, std::move(link));
}

}  // namespace

void refuseFailure(Result result, const std::string& about) {
  if (result != Result::Done) {
    const unsigned long code = codeOf(result);
    throw refusal(exceptionTypeOf(code), reasonOf(code) + ": " + about);
  }
}

std::string createMapObject(Inventory& inventory, const char* kind,
                            const globaldefs::NVSList_T& attributes) {
  Attributes given(attributes);
  switch (kindNamed(kind)) {
    case ObjectKind::Node:
      return createNode(inventory, given);
    case ObjectKind::SubMap:
      return createSubMap(inventory, given);
    case ObjectKind::DisplayLink:
      return createDisplayLink(inventory, given);
    case ObjectKind::PhysicalLink:
      return createPhysicalLink(inventory, given);
    default:
      refuseInput(std::string("not an object of the map: ") + kind);
  }
}

}  // namespace zk::agent
