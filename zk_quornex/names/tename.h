// The names of the containment tree: the EMS, a managed element, the
// multi-layer subnetwork, a topological link. No shared state and no locks: an
// object belongs to one thread at a time.
//
// A name is filled once, by Nms2EmsName or by setting its fields, read, and
// deleted through TEName*. Both conversions return 0 or a code of
// names/codes.h:
//
// - Nms2EmsName(name) fills the object. After a failure the object may be half
//   filled and is to be discarded.
// - Ems2NmsName(name) writes the list and sets its length. After a failure the
//   list is as it was, unless a class says otherwise.
// - Accept(visitor) returns 0 when the visitor accepts the name, and otherwise
//   the one code of the class, whatever the visitor's own code: the caller
//   learns which kind of name was refused. A null visitor is a failed
//   assertion, written to the debug log, and refuses; when the log service is
//   not registered, InterfaceNotExistException leaves instead.
#ifndef ZK_NAMES_TENAME_H
#define ZK_NAMES_TENAME_H

#include <string>

#include "zk_quornex/idl/names.h"
#include "zk_quornex/names/codes.h"

namespace NS_QUORCORBA {

class TEName;
class TEMEName;
class TESubnetworkName;
class TETopoLinkName;

// The interface of whoever wants to judge a name by its kind. Only the names of
// the containment tree are visited; map and AID names check themselves when they
// are read. Each visit returns 0 to accept the name and anything else to refuse
// it.
class Name_Visitor {
 public:
  virtual ~Name_Visitor() = default;
  virtual unsigned long Visit(TEName* name) = 0;
  virtual unsigned long Visit(TEMEName* name) = 0;
  virtual unsigned long Visit(TESubnetworkName* name) = 0;
  virtual unsigned long Visit(TETopoLinkName* name) = 0;
};

// The EMS itself, and the base of every other name: ("EMS", EMS name).
class ZK_EXPORT TEName {
 public:
  // Born with the configured EMS name.
  TEName();
  virtual ~TEName();
  TEName(const TEName&) = default;
  TEName& operator=(const TEName&) = default;

  virtual unsigned long Nms2EmsName(const globaldefs::NVSList_T& name);
  // Always succeeds: an empty EMS name is written as it is.
  virtual unsigned long Ems2NmsName(globaldefs::NVSList_T& name);
  virtual unsigned long Accept(Name_Visitor* visitor);

  int type_;  // a NameType
  std::string emsName_;
};

// ("EMS", EMS name), ("ManagedElement", id in decimal).
class ZK_EXPORT TEMEName : public TEName {
 public:
  TEMEName();
  ~TEMEName() override;

  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  // An id of more than 11 digits does not fit its text: the list is then left
  // with two pairs of which the second has no value yet.
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  unsigned long meId_;  // 0: not set
};

// ("EMS", EMS name), ("MultiLayerSubnetwork", id).
class ZK_EXPORT TESubnetworkName : public TEName {
 public:
  TESubnetworkName();
  ~TESubnetworkName() override;

  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  // The EMS has one subnetwork, so a name built without input names it.
  std::string subnetId_;
};

// ("EMS", EMS name), ("TopologicalLink", id).
class ZK_EXPORT TETopoLinkName : public TEName {
 public:
  TETopoLinkName();
  ~TETopoLinkName() override;

  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  std::string topoLinkId_;
};

}  // namespace NS_QUORCORBA

#endif
