// The interface of whoever wants to judge a name by its kind.
#ifndef ZK_NAMES_NAME_VISITOR_H
#define ZK_NAMES_NAME_VISITOR_H

namespace NS_QUORCORBA {

class TEName;
class TEMEName;
class TESubnetworkName;
class TETopoLinkName;

// Only the names of the containment tree are visited; map and AID names check
// themselves when they are read. Each visit returns 0 to accept the name and
// anything else to refuse it.
class Name_Visitor {
 public:
  virtual ~Name_Visitor() = default;
  virtual unsigned long Visit(TEName* name) = 0;
  virtual unsigned long Visit(TEMEName* name) = 0;
  virtual unsigned long Visit(TESubnetworkName* name) = 0;
  virtual unsigned long Visit(TETopoLinkName* name) = 0;
};

}  // namespace NS_QUORCORBA

#endif
