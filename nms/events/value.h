// What a property holds, whatever its type, as JSON.
#ifndef ZK_NMS_EVENTS_VALUE_H
#define ZK_NMS_EVENTS_VALUE_H

#include <json/value.h>

#include <string>

#include "zk_quornex/idl/corba.h"

namespace zk::nms {

// Any thread may call it; the ORB of the factory must live.
class ValueReader {
 public:
  explicit ValueReader(DynamicAny::DynAnyFactory_ptr factory)
      : factory_(DynamicAny::DynAnyFactory::_duplicate(factory)) {}

  // Structs become objects, lists arrays, enums the names of their values; a
  // value declared to be an object's name becomes a typed name. What cannot be
  // read, or is nested deeper than anything sane, becomes a text in angle
  // brackets. Throws nothing of the ORB's.
  Json::Value read(const CORBA::Any& value) const;

  // Likewise, of a value within another. Throws what the ORB throws.
  Json::Value readWithin(const CORBA::Any& value, int depth) const;

 private:
  DynamicAny::DynAnyFactory_var factory_;
};

// The pairs of a name, as read, as a typed name; a text stays itself.
std::string nameText(const Json::Value& value);

// A value on one line for people: texts as they are, pairs as NAME=VALUE, lists
// in brackets.
std::string valueText(const Json::Value& value);

}  // namespace zk::nms

#endif
