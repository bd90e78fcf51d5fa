// Names and notifications as text, so that whole ones can be compared at once
// and a failure prints what was there.
#ifndef ZK_TESTS_SUPPORT_DUMP_H
#define ZK_TESTS_SUPPORT_DUMP_H

#include <initializer_list>
#include <string>
#include <utility>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/names.h"

namespace zk::test {

using NamePair = std::pair<const char*, const char*>;

// {{"EMS", "Quor/1"}, {"ManagedElement", "7"}} as a list.
globaldefs::NVSList_T makeName(std::initializer_list<NamePair> pairs);

// "EMS=Quor/1|ManagedElement=7"; an empty list gives "".
std::string dumpName(const globaldefs::NVSList_T& name);

// "type:value", such as
//   empty
//   string:20121120094200.0Z
//   boolean:true
//   long:7
//   ObjectType_T:OT_MANAGED_ELEMENT
//   NVSList_T:EMS=Quor/1|ManagedElement=7
//   NVList_T:[userLabel=string:north|owner=string:]
// and for anything else, such as a record, the name of its type alone:
//   ManagedElement_T
std::string dumpAny(const CORBA::Any& any);

// "[name=type:value|name=type:value]"
std::string dumpAttributes(const notifications::NVList_T& attributes);

// One line a position, each ended by a newline:
//   header=domain name|type name|event name
//   variable name=type:value              (none when there is no variable header)
//   0 notificationId=string:0             (filterable properties by position)
//   1 objectName=NVSList_T:EMS=Quor/1
//   body=empty
std::string dumpEvent(const CosNotification::StructuredEvent& event);

}  // namespace zk::test

#endif
