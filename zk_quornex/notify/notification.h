// Building and sending TMF 814 notifications. No shared state: every call
// builds its own event; any thread may call, as far as the platform's PushEvent,
// fillFixedHeader and getUTCTime allow.
#ifndef ZK_NOTIFY_NOTIFICATION_H
#define ZK_NOTIFY_NOTIFICATION_H

#include <cstdint>
#include <string>

#include "zk_quornex/idl/events.h"
#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/codes.h"
#include "zk_quornex/names/tename.h"

namespace NS_QUORCORBA {

// The state of a history-alarm file's transfer, by the numbers of
// notifications::FileTransferStatus_T. Other values travel too: see the
// overload of SendNotification that takes it.
enum EnFileTransfStatus : std::int32_t {
  FILE_TRANSFER_IN_PROGRESS = 0,
  FILE_TRANSFER_FAILED = 1,
  FILE_TRANSFER_COMPLETED = 2
};

// The entries for changes of objects drop the event silently when the name is
// null, cannot be written in the NMS's form, or is of a kind without an object
// type. The caller keeps what it passes.
class ZK_EXPORT TANotification {
 public:
  // The event's body is a copy of object, except for a connection termination
  // point, which is announced without.
  static void OnObjectCreated(TEName* name, bool edgePointRelated, CORBA::Any& object);
  static void OnObjectDeleted(TEName* name, bool edgePointRelated);
  static void OnObjectAVC(TEName* name, const notifications::NVList_T& attributes,
                          bool edgePointRelated);
  static void OnObjectStateChanged(TEName* name, const notifications::NVList_T& attributes,
                                   bool edgePointRelated);

  // What the four entries above do: finds the NMS's form and the object type of
  // name and sends the notification.
  static void SendObjectNotification(const char* type, TEName* name, bool edgePointRelated,
                                     const CORBA::Any& body,
                                     const notifications::NVList_T& attributes);

  // Builds one object notification and pushes it. type must not be null. A null
  // qualifier leaves "objectTypeQualifier" out, an empty one does not; empty
  // attributes leave "attributeList" out. body is sent only with
  // "NT_OBJECT_CREATION", and not for a connection termination point. When an
  // ORB type throws, nothing has been pushed.
  static void SendNotification(const char* type, notifications::ObjectType_T objectType,
                               const globaldefs::NVSList_T& objectName, bool edgePointRelated,
                               const notifications::NVList_T& attributes, const CORBA::Any& body,
                               char* qualifier);

  // Tells the state of a history-alarm file's transfer. type must not be null;
  // filePath is sent in state 2 only. An unknown state is sent too, without any
  // property.
  static void SendNotification(const char* type, const EnFileTransfStatus& status,
                               const int& fileId, std::string filePath);

  // Maps the kind of a name to a TMF 814 object type and a qualifier text.
  // Returns 0, or 0x41180053 with an empty qualifier and objectType as it was,
  // for a null name and for kinds without an object type.
  static unsigned int GetOjectType(TEName* name, notifications::ObjectType_T& objectType,
                                   std::string& qualifier);
};

}  // namespace NS_QUORCORBA

#endif
