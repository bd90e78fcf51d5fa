// The names of the EMS's map: which value texts are read, into which fields,
// and how they are written.
#include "zk_quornex/names/mapname.h"

#include <gtest/gtest.h>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;
using globaldefs::NVSList_T;

class MapName : public testing::Test {
 protected:
  FixedEmsConfig config_;
};

class NodeName : public MapName {};
class DisplayLinkName : public MapName {};
class SubMapName : public MapName {};
class PhysicalLinkName : public MapName {};

// A value text and the fields it gives, for a path with a parent and an id.
struct Fields {
  const char* text;
  const char* parentId;
  const char* id;
};

// Reads text into an object whose fields hold something else before.
template <class Name>
unsigned long read(Name& name, const char* pairName, const char* text) {
  name.emsName_ = "as before";
  name.parentId_ = "old parent";
  name.id_ = "old id";
  return name.Nms2EmsName(named(pairName, text));
}

template <class Name>
void expectRead(const char* pairName, unsigned long code, const Fields& fields) {
  Name name;
  EXPECT_EQ(read(name, pairName, fields.text), code) << fields.text;
  EXPECT_EQ(name.emsName_, "Quor/1") << fields.text;
  EXPECT_EQ(name.parentId_, fields.parentId) << fields.text;
  EXPECT_EQ(name.id_, fields.id) << fields.text;
}

template <class Name>
std::string written(const char* parentId, const char* id) {
  Name name;
  name.parentId_ = parentId;
  name.id_ = id;
  NVSList_T list = makeName({{"a", "1"}, {"b", "2"}, {"c", "3"}});
  const unsigned long code = name.Ems2NmsName(list);
  return code == OK ? dumpName(list) : std::to_string(code) + " " + dumpName(list);
}

const std::string NOT_WRITTEN = std::to_string(EMPTY_NAME) + " a=1|b=2|c=3";

// Read alike by nodes and display links.
const Fields PATHS_WITH_BOTH[] = {
    {"/parentid=3/id=17", "3", "17"},
    {"/id=17/parentid=3", "3", "17"},
    {"/parentid=3/id=17/id=18", "3", "17"},
    {"/parentid=3/parentid=4/id=17", "3", "17"},
    {"/x=9/parentid=3/y=8/id=17/z", "3", "17"},
    {"/ parentid =3/ id =17", "3", "17"},
    {"/  parentid=3  /  id=17  ", "3", "17"},
    {"/parentid= 3/id= 17", " 3", " 17"},
    {"/parentid=a=b/id==", "a=b", "="},
    {"/parentid=AllSubMap/id=17", "AllSubMap", "17"},
    {"/parentid=AllSubmap/id=17", "AllSubmap", "17"},
    {"/parentid=0/id=VTMAP_PHY_SUBMAP", "0", "VTMAP_PHY_SUBMAP"},
};

// No path at all, or one with an empty layer or a layer without a key.
const char* const BROKEN_PATHS[] = {
    "",
    "/",
    "//",
    "17",
    "id=17",
    " /parentid=3/id=17",
    "parentid=3/id=17",
    "/parentid=3//id=17",
    "//parentid=3/id=17",
    "/parentid=3/id=17/",
    "/parentid=3/ /id=17",
    "/parentid=3/=5/id=17",
    "/parentid=3/id=17/ =5",
};

TEST_F(NodeName, readsParentAndIdByTheirKeys) {
  for (const Fields& fields : PATHS_WITH_BOTH) {
    expectRead<CANodeName>("Node", OK, fields);
  }
}

TEST_F(NodeName, isReadWithoutAParent) {
  for (const Fields& fields :
       {Fields{"/id=17", "", "17"}, Fields{"/parentid=/id=17", "", "17"},
        Fields{"/parentid/id=17", "", "17"}, Fields{"/ParentId=3/id=17", "", "17"},
        Fields{"/PARENTID=3/id=17", "", "17"}}) {
    expectRead<CANodeName>("Node", OK, fields);
  }
}

TEST_F(NodeName, isRefusedWithoutAnId) {
  for (const Fields& fields :
       {Fields{"/parentid=3", "3", ""}, Fields{"/parentid=3/id=", "3", ""},
        Fields{"/parentid=3/id", "3", ""}, Fields{"/parentid=3/ID=17", "3", ""},
        Fields{"/parentid=3/Id=17", "3", ""}, Fields{"/x=1", "", ""}, Fields{"/x", "", ""},
        Fields{"/3/8", "", ""}, Fields{"/id=/id=17", "", ""}}) {
    expectRead<CANodeName>("Node", BAD_NAME, fields);
  }
}

TEST_F(NodeName, keepsItsFieldsWhenThePathIsBroken) {
  for (const char* text : BROKEN_PATHS) {
    expectRead<CANodeName>("Node", BAD_NAME, {text, "old parent", "old id"});
  }
}

TEST_F(NodeName, isWrittenAsParentThenId) {
  EXPECT_EQ(written<CANodeName>("3", "17"), "EMS=Quor/1|Node=/parentid=3/id=17");
  EXPECT_EQ(written<CANodeName>(" 3", "a/b"), "EMS=Quor/1|Node=/parentid= 3/id=a/b");
  EXPECT_EQ(written<CANodeName>("3", "/"), "EMS=Quor/1|Node=/parentid=3/id=/");
}

TEST_F(NodeName, isWrittenUnderItsOwnDefaultParent) {
  EXPECT_EQ(written<CANodeName>("", "17"), "EMS=Quor/1|Node=/parentid=AllSubMap/id=17");
}

TEST_F(NodeName, isNotWrittenWithoutAnId) {
  EXPECT_EQ(written<CANodeName>("3", ""), NOT_WRITTEN);
  EXPECT_EQ(written<CANodeName>("", ""), NOT_WRITTEN);
}

TEST_F(DisplayLinkName, readsParentAndIdByTheirKeys) {
  for (const Fields& fields : PATHS_WITH_BOTH) {
    expectRead<CADispLinkName>("DisplayLink", OK, fields);
  }
}

TEST_F(DisplayLinkName, isRefusedWithoutAParentOrAnId) {
  for (const Fields& fields :
       {Fields{"/id=17", "", "17"}, Fields{"/parentid=/id=17", "", "17"},
        Fields{"/ParentID=3/id=17", "", "17"}, Fields{"/parentid=3", "3", ""},
        Fields{"/parentid=3/id=", "3", ""}, Fields{"/x=1", "", ""}}) {
    expectRead<CADispLinkName>("DisplayLink", BAD_NAME, fields);
  }
}

TEST_F(DisplayLinkName, keepsItsFieldsWhenThePathIsBroken) {
  for (const char* text : BROKEN_PATHS) {
    expectRead<CADispLinkName>("DisplayLink", BAD_NAME, {text, "old parent", "old id"});
  }
}

TEST_F(DisplayLinkName, isWrittenWithBothOnly) {
  EXPECT_EQ(written<CADispLinkName>("3", "17"), "EMS=Quor/1|DisplayLink=/parentid=3/id=17");
  EXPECT_EQ(written<CADispLinkName>("", "17"), NOT_WRITTEN);
  EXPECT_EQ(written<CADispLinkName>("3", ""), NOT_WRITTEN);
  EXPECT_EQ(written<CADispLinkName>("", ""), NOT_WRITTEN);
}

TEST_F(SubMapName, readsParentAndIdByTheirPosition) {
  for (const Fields& fields : {
           Fields{"/parentid=3/id=17", "3", "17"},
           Fields{"/x=5/y=9", "5", "9"},
           Fields{"/id=5/parentid=9", "5", "9"},
           Fields{"/3/8", "3", "8"},
           Fields{"/=3/=8", "3", "8"},
           Fields{"/parentid=3/8", "3", "8"},
           Fields{"/3/id=8", "3", "8"},
           Fields{"/a=b=c/d=e=f", "b=c", "e=f"},
           Fields{"/parentid=3/id=17/id=18", "3", "17/id=18"},
           Fields{"/3/8/", "3", "8/"},
           Fields{"/3//8", "3", "/8"},
           Fields{"/3//", "3", "/"},
           Fields{"/3/a/b=c", "3", "c"},
           Fields{"/ parentid= 3 / id= 17 ", " 3 ", " 17 "},
           Fields{"/ / ", " ", " "},
           Fields{"/parentid=AllSubmap/id=17", "AllSubmap", "17"},
           Fields{"/parentid=AllSubMap/id=17", "AllSubMap", "17"},
           Fields{"/parentid=0/id=/", "0", "/"},
       }) {
    expectRead<CASubMapName>("SubMap", OK, fields);
  }
}

TEST_F(SubMapName, readsThePhysicalRootAsASlash) {
  for (const Fields& fields :
       {Fields{"/parentid=0/id=VTMAP_PHY_SUBMAP", "0", "/"},
        Fields{"/0/VTMAP_PHY_SUBMAP", "0", "/"}, Fields{"/0/x=VTMAP_PHY_SUBMAP", "0", "/"}}) {
    expectRead<CASubMapName>("SubMap", OK, fields);
  }
}

TEST_F(SubMapName, readsOnlyTheExactTextAsThePhysicalRoot) {
  for (const Fields& fields : {
           Fields{"/0/id=VTMAP_PHY_SUBMAP ", "0", "VTMAP_PHY_SUBMAP "},
           Fields{"/0/id=vtmap_phy_submap", "0", "vtmap_phy_submap"},
           Fields{"/0/id=VTMAP_PHY_SUBMAP/1", "0", "VTMAP_PHY_SUBMAP/1"},
           Fields{"/0/id==VTMAP_PHY_SUBMAP", "0", "=VTMAP_PHY_SUBMAP"},
           Fields{"/parentid=VTMAP_PHY_SUBMAP/id=8", "VTMAP_PHY_SUBMAP", "8"},
       }) {
    expectRead<CASubMapName>("SubMap", OK, fields);
  }
}

TEST_F(SubMapName, keepsItsFieldsWhenThereAreNotTwoSegments) {
  for (const char* text :
       {"", "3", "3/8", " /3/8", "parentid=3/id=8", "/", "/3", "/parentid=3", "/id=8"}) {
    expectRead<CASubMapName>("SubMap", BAD_NAME, {text, "old parent", "old id"});
  }
}

TEST_F(SubMapName, keepsWhatItReadWhenOneOfTheTwoIsEmpty) {
  for (const Fields& fields :
       {Fields{"//8", "", "8"}, Fields{"/parentid=/id=8", "", "8"}, Fields{"/3/", "3", ""},
        Fields{"/parentid=3/id=", "3", ""}, Fields{"//", "", ""}, Fields{"/=/=", "", ""},
        Fields{"//VTMAP_PHY_SUBMAP", "", "/"}}) {
    expectRead<CASubMapName>("SubMap", BAD_NAME, fields);
  }
}

TEST_F(SubMapName, isWrittenAsParentThenId) {
  EXPECT_EQ(written<CASubMapName>("3", "17"), "EMS=Quor/1|SubMap=/parentid=3/id=17");
}

TEST_F(SubMapName, isWrittenUnderItsOwnDefaultParent) {
  EXPECT_EQ(written<CASubMapName>("", "17"), "EMS=Quor/1|SubMap=/parentid=AllSubmap/id=17");
}

TEST_F(SubMapName, isNotWrittenWithoutAnId) {
  EXPECT_EQ(written<CASubMapName>("3", ""), NOT_WRITTEN);
  EXPECT_EQ(written<CASubMapName>("", ""), NOT_WRITTEN);
}

TEST_F(PhysicalLinkName, takesTheWholeTextAsItsId) {
  for (const char* text : {"42", "/id=5", "/", " ", " 42 ", "a=b", "VTMAP_PHY_SUBMAP", "0"}) {
    CAPhyLinkName name;
    name.emsName_ = "as before";
    EXPECT_EQ(name.Nms2EmsName(named("PhysicalLink", text)), OK) << text;
    EXPECT_EQ(describe(name), std::string("19 Quor/1 id=") + text);
    NVSList_T list;
    EXPECT_EQ(name.Ems2NmsName(list), OK) << text;
    EXPECT_EQ(dumpName(list), dumpName(named("PhysicalLink", text)));
  }
}

TEST_F(PhysicalLinkName, refusesAnEmptyTextAndKeepsItsId) {
  CAPhyLinkName name;
  name.id_ = "old";
  EXPECT_EQ(name.Nms2EmsName(named("PhysicalLink", "")), BAD_NAME);
  EXPECT_EQ(describe(name), "19 Quor/1 id=old");
}

TEST_F(PhysicalLinkName, isNotWrittenWithoutAnId) {
  CAPhyLinkName name;
  NVSList_T list = makeName({{"a", "1"}});
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
  EXPECT_EQ(dumpName(list), "a=1");
}

TEST_F(PhysicalLinkName, asksTheConfigurationForTheEmsWhenWritten) {
  CAPhyLinkName name;
  name.id_ = "42";
  name.emsName_ = "elsewhere";
  config_.emsName = "Quor/2";
  NVSList_T list;
  EXPECT_EQ(name.Ems2NmsName(list), OK);
  EXPECT_EQ(dumpName(list), "EMS=Quor/2|PhysicalLink=42");
}

}  // namespace

}  // namespace zk::test
