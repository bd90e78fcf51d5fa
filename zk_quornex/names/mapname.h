// The names of the EMS's own topology map: node, submap, display link and
// physical link. No shared state and no locks. The conversions are those of
// TEName; visiting always accepts, since these names check themselves when
// they are read.
#ifndef ZK_NAMES_MAPNAME_H
#define ZK_NAMES_MAPNAME_H

#include <string>

#include "zk_quornex/names/tename.h"

namespace NS_QUORCORBA {

// ("EMS", EMS name), ("Node", "/parentid=" parent "/id=" id). The keys are
// looked up by name; a missing parent is accepted and written as "AllSubMap".
class ZK_EXPORT CANodeName : public TEName {
 public:
  CANodeName();
  ~CANodeName() override;

  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  std::string id_;
  std::string parentId_;
};

// ("EMS", EMS name), ("SubMap", "/parentid=" parent "/id=" id). Position, not
// key, tells the parent from the id. The physical root, "VTMAP_PHY_SUBMAP" on
// the NMS side, is "/" here and is written as "/"; a missing parent is written
// as "AllSubmap" but not read back as missing.
class ZK_EXPORT CASubMapName : public TEName {
 public:
  CASubMapName();
  ~CASubMapName() override;

  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  std::string id_;
  std::string parentId_;
};

// ("EMS", EMS name), ("DisplayLink", "/parentid=" parent "/id=" id). Read as a
// node is, but the parent is required both ways.
class ZK_EXPORT CADispLinkName : public TEName {
 public:
  CADispLinkName();
  ~CADispLinkName() override;

  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  std::string id_;
  std::string parentId_;
};

// ("EMS", EMS name), ("PhysicalLink", id), the id as it stands. Never made by
// TENameConvert: callers construct it.
class ZK_EXPORT CAPhyLinkName : public TEName {
 public:
  CAPhyLinkName();
  ~CAPhyLinkName() override;

  unsigned long Nms2EmsName(const globaldefs::NVSList_T& name) override;
  unsigned long Ems2NmsName(globaldefs::NVSList_T& name) override;
  unsigned long Accept(Name_Visitor* visitor) override;

  std::string id_;
};

}  // namespace NS_QUORCORBA

#endif
