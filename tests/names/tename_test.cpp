// The names of the containment tree: what each kind does with its identifier.
#include "zk_quornex/names/tename.h"

#include <gtest/gtest.h>

#include "tests/names/names.h"

namespace zk::test {

namespace {

using namespace NS_QUORCORBA;
using globaldefs::NVSList_T;

class TreeName : public testing::Test {
 protected:
  FixedEmsConfig config_;
};

class EmsName : public TreeName {};
class ElementName : public TreeName {};
class SubnetworkName : public TreeName {};
class LinkName : public TreeName {};

TEST_F(EmsName, readsItsOnePair) {
  TEName name;
  name.emsName_ = "as before";
  EXPECT_EQ(name.Nms2EmsName(makeName({{"EMS", "Quor/1"}})), OK);
  EXPECT_EQ(describe(name), "0 Quor/1");
}

TEST_F(EmsName, refusesMalformedNamesUntouched) {
  const NVSList_T refused[] = {makeName({}),
                               makeName({{"EMS", "Quor/1"}, {"EMS", "Quor/1"}}),
                               named("ManagedElement", "7"),
                               makeName({{"EMS", "other"}, {"EMS", "other"}}),
                               makeName({{"ems", "Quor/1"}}),
                               makeName({{"ems", "other"}}),
                               makeName({{"", "Quor/1"}}),
                               makeName({{"EMS ", "Quor/1"}})};
  for (const NVSList_T& list : refused) {
    TEName name;
    name.emsName_ = "as before";
    EXPECT_EQ(name.Nms2EmsName(list), BAD_NAME) << dumpName(list);
    EXPECT_EQ(name.emsName_, "as before") << dumpName(list);
  }
}

TEST_F(EmsName, refusesAnotherEmsUntouched) {
  for (const char* ems : {"other", "quor/1", "Quor/1 ", ""}) {
    TEName name;
    name.emsName_ = "as before";
    EXPECT_EQ(name.Nms2EmsName(makeName({{"EMS", ems}})), OTHER_EMS) << ems;
    EXPECT_EQ(name.emsName_, "as before") << ems;
  }
}

TEST_F(EmsName, refusesNullTexts) {
  TEName name;
  NVSList_T list = makeName({{"EMS", "Quor/1"}});
  list[0].value = static_cast<char*>(nullptr);
  EXPECT_EQ(name.Nms2EmsName(list), OTHER_EMS);
  list[0].name = static_cast<char*>(nullptr);
  EXPECT_EQ(name.Nms2EmsName(list), BAD_NAME);
}

TEST_F(EmsName, leavesExactlyOnePair) {
  for (const CORBA::ULong length : {0U, 1U, 3U}) {
    NVSList_T list;
    list.length(length);
    TEName name;
    EXPECT_EQ(name.Ems2NmsName(list), OK);
    EXPECT_EQ(dumpName(list), "EMS=Quor/1") << length;
  }
}

TEST_F(EmsName, writesItsOwnNameEvenAnEmptyOne) {
  TEName name;
  NVSList_T list;
  name.emsName_ = "elsewhere";
  EXPECT_EQ(name.Ems2NmsName(list), OK);
  EXPECT_EQ(dumpName(list), "EMS=elsewhere");
  name.emsName_.clear();
  EXPECT_EQ(name.Ems2NmsName(list), OK);
  EXPECT_EQ(dumpName(list), "EMS=");
}

// An identifier text and the number it gives.
struct ReadId {
  const char* text;
  unsigned long id;
};

TEST_F(ElementName, readsDecimalNumbersByTheirLow32Bits) {
  const ReadId accepted[] = {{"1", 1},
                             {"7", 7},
                             {" 12 ", 12},
                             {"   12", 12},
                             {"12   ", 12},
                             {"007", 7},
                             {"2147483647", 2147483647},
                             {"2147483648", 18446744071562067968UL},
                             {"4294967295", 18446744073709551615UL},
                             {"4294967297", 1},
                             {"4294967303", 7}};
  for (const ReadId& read : accepted) {
    TEMEName name;
    EXPECT_EQ(name.Nms2EmsName(named("ManagedElement", read.text)), OK) << read.text;
    EXPECT_EQ(name.meId_, read.id) << read.text;
  }
}

TEST_F(ElementName, refusesIdentifiersThatAreNotDigits) {
  for (const char* text : {"", " ", "12a", "a12", "-1", "+1", "1 2", "1.5", "0x7", "\t7", "7\t",
                           "7\n", "1e3", "/7", "\xD9\xA7"}) {
    TEMEName name;
    name.meId_ = 99;
    EXPECT_EQ(name.Nms2EmsName(named("ManagedElement", text)), BAD_NAME) << text;
    EXPECT_EQ(describe(name), "1 Quor/1 me=99") << text;
  }
}

TEST_F(ElementName, refusesZeroAndKeepsIt) {
  for (const char* text : {"0", "000", " 0 ", "4294967296", "8589934592"}) {
    TEMEName name;
    name.meId_ = 99;
    name.emsName_ = "as before";
    EXPECT_EQ(name.Nms2EmsName(named("ManagedElement", text)), NO_ELEMENT_ID) << text;
    EXPECT_EQ(describe(name), "1 Quor/1 me=0") << text;
  }
}

TEST_F(ElementName, isNotWrittenWithoutAnId) {
  TEMEName name;
  NVSList_T list = makeName({{"a", "1"}, {"b", "2"}, {"c", "3"}});
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
  EXPECT_EQ(dumpName(list), "a=1|b=2|c=3");
}

TEST_F(ElementName, isWrittenWithUpToElevenDigits) {
  for (const unsigned long id : {1UL, 7UL, 2147483647UL, 2147483648UL, 4294967295UL, 4294967303UL,
                                 10000000000UL, 99999999999UL}) {
    TEMEName name;
    name.meId_ = id;
    NVSList_T list;
    EXPECT_EQ(name.Ems2NmsName(list), OK) << id;
    EXPECT_EQ(dumpName(list), "EMS=Quor/1|ManagedElement=" + std::to_string(id));
  }
}

TEST_F(ElementName, leavesTheOldValueWhenTheIdHasMoreThanElevenDigits) {
  for (const unsigned long id :
       {100000000000UL, 123456789012UL, 18446744071562067968UL, 18446744073709551615UL}) {
    TEMEName name;
    name.meId_ = id;
    NVSList_T list = makeName({{"a", "1"}, {"b", "2"}, {"c", "3"}});
    EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME) << id;
    EXPECT_EQ(dumpName(list), "EMS=Quor/1|ManagedElement=2") << id;
  }
}

TEST_F(ElementName, addsAnEmptyValueWhenTheIdHasMoreThanElevenDigits) {
  TEMEName name;
  name.meId_ = 100000000000;
  NVSList_T list;
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
  EXPECT_EQ(dumpName(list), "EMS=Quor/1|ManagedElement=");
}

TEST_F(ElementName, comesBackUnchangedUpTo31Bits) {
  for (unsigned long id = 1; id <= 2147483647UL; id = id < 1000 ? id + 1 : id * 2 - id / 3) {
    TEMEName out;
    out.meId_ = id;
    NVSList_T list;
    ASSERT_EQ(out.Ems2NmsName(list), OK);
    TEMEName in;
    ASSERT_EQ(in.Nms2EmsName(list), OK) << dumpName(list);
    ASSERT_EQ(in.meId_, id);
  }
}

TEST_F(ElementName, ofAWrappedIdIsReadButNotWritten) {
  TEMEName name;
  ASSERT_EQ(name.Nms2EmsName(named("ManagedElement", "2147483648")), OK);
  NVSList_T list;
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
}

TEST_F(SubnetworkName, acceptsTheOneSubnetworkOnly) {
  TESubnetworkName name;
  EXPECT_EQ(name.Nms2EmsName(named("MultiLayerSubnetwork", "1")), OK);
  EXPECT_EQ(describe(name), "2 Quor/1 subnet=1");
}

TEST_F(SubnetworkName, keepsTheRefusedIdAsItStands) {
  for (const char* text : {"2", "01", " 1", "1 ", "+1", "1.0", "one", " "}) {
    TESubnetworkName name;
    name.emsName_ = "as before";
    EXPECT_EQ(name.Nms2EmsName(named("MultiLayerSubnetwork", text)), SUBNETWORK_REFUSED) << text;
    EXPECT_EQ(describe(name), std::string("2 Quor/1 subnet=") + text);
  }
}

TEST_F(SubnetworkName, refusesAnEmptyIdAndKeepsTheOldOne) {
  TESubnetworkName name;
  name.subnetId_ = "old";
  EXPECT_EQ(name.Nms2EmsName(named("MultiLayerSubnetwork", "")), BAD_NAME);
  EXPECT_EQ(describe(name), "2 Quor/1 subnet=old");
}

TEST_F(SubnetworkName, isWrittenAsSubnetworkOneWithoutAnyInput) {
  TESubnetworkName name;
  NVSList_T list;
  EXPECT_EQ(name.Ems2NmsName(list), OK);
  EXPECT_EQ(dumpName(list), "EMS=Quor/1|MultiLayerSubnetwork=1");
}

TEST_F(SubnetworkName, isWrittenUncheckedButNotEmpty) {
  TESubnetworkName name;
  NVSList_T list = makeName({{"a", "1"}});
  name.subnetId_.clear();
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
  EXPECT_EQ(dumpName(list), "a=1");
  name.subnetId_ = " 2 ";
  EXPECT_EQ(name.Ems2NmsName(list), OK);
  EXPECT_EQ(dumpName(list), "EMS=Quor/1|MultiLayerSubnetwork= 2 ");
}

TEST_F(LinkName, keepsAnyIdAsItStands) {
  for (const char* text : {"5", " 5 ", "A-Z/1=2", " ", "0"}) {
    TETopoLinkName name;
    EXPECT_EQ(name.Nms2EmsName(named("TopologicalLink", text)), OK) << text;
    EXPECT_EQ(describe(name), std::string("3 Quor/1 link=") + text);
    NVSList_T list;
    EXPECT_EQ(name.Ems2NmsName(list), OK) << text;
    EXPECT_EQ(dumpName(list), dumpName(named("TopologicalLink", text)));
  }
}

TEST_F(LinkName, refusesAnEmptyIdAndKeepsTheOldOne) {
  TETopoLinkName name;
  name.topoLinkId_ = "old";
  EXPECT_EQ(name.Nms2EmsName(named("TopologicalLink", "")), BAD_NAME);
  EXPECT_EQ(describe(name), "3 Quor/1 link=old");
}

TEST_F(LinkName, isNotWrittenWithoutAnId) {
  TETopoLinkName name;
  NVSList_T list = makeName({{"a", "1"}, {"b", "2"}, {"c", "3"}});
  EXPECT_EQ(name.Ems2NmsName(list), EMPTY_NAME);
  EXPECT_EQ(dumpName(list), "a=1|b=2|c=3");
}

// Refuses as a visitor would: reading ends with the object's own Accept.
class RefusingLink : public TETopoLinkName {
 public:
  unsigned long Accept(Name_Visitor* visitor) override {
    visited = visitor;
    return 4711;
  }

  Name_Visitor* visited = nullptr;
};

TEST_F(LinkName, returnsWhatTheObjectsOwnAcceptSays) {
  RefusingLink name;
  EXPECT_EQ(name.Nms2EmsName(named("TopologicalLink", "5")), 4711UL);
  EXPECT_NE(name.visited, nullptr);
  EXPECT_EQ(name.topoLinkId_, "5");
}

}  // namespace

}  // namespace zk::test
