// Notifications about objects, as dumpEvent writes them.
#ifndef ZK_TESTS_SUPPORT_OBJECTEVENT_H
#define ZK_TESTS_SUPPORT_OBJECTEVENT_H

#include <string>

namespace zk::test {

// What every one of them holds; by itself of managed element 7, as the journal's
// clock and pusher have it.
struct ObjectEvent {
  std::string header = "domain|type|event";
  std::string name = "EMS=Quor/1|ManagedElement=7";
  std::string type = "OT_MANAGED_ELEMENT";
  std::string qualifier = "ManagedElement";
  std::string neTime = "20121120094201.0Z";
};

// The event, with the attributes' line if there are any.
inline std::string objectEventText(const ObjectEvent& event, bool edgePointRelated,
                                   const std::string& body, const std::string& attributes = "") {
  return "header=" + event.header +
         "\n0 notificationId=string:0"
         "\n1 objectName=NVSList_T:" +
         event.name + "\n2 objectType=ObjectType_T:" + event.type +
         "\n3 objectTypeQualifier=string:" + event.qualifier +
         "\n4 emsTime=string:20121120094200.0Z"
         "\n5 neTime=string:" +
         event.neTime + "\n6 edgePointRelated=boolean:" + (edgePointRelated ? "true" : "false") +
         (attributes.empty() ? "" : "\n7 attributeList=NVList_T:[" + attributes + "]") +
         "\nbody=" + body + "\n";
}

}  // namespace zk::test

#endif
