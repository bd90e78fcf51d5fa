#include "agent/tmf/objectkinds.h"

#include <algorithm>
#include <array>
#include <string>

#include "agent/base/log.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

struct Kind {
  const char* name;
  ObjectKind value;
  const char* pairName;
};

constexpr std::array<Kind, 8> KINDS{{{"ems", ObjectKind::EMS, "EMS"},
                                     {"subnetwork", ObjectKind::SUBNETWORK, "MultiLayerSubnetwork"},
                                     {"device", ObjectKind::DEVICE, "ManagedElement"},
                                     {"link", ObjectKind::LINK, "TopologicalLink"},
                                     {"node", ObjectKind::NODE, ""},
                                     {"submap", ObjectKind::SUB_MAP, ""},
                                     {"display-link", ObjectKind::DISPLAY_LINK, ""},
                                     {"physical-link", ObjectKind::PHYSICAL_LINK, ""}}};

struct Label {
  const char* name;
  Attribute value;
};

constexpr std::array<Label, 3> LABELS{{{"userLabel", Attribute::USER_LABEL},
                                       {"owner", Attribute::OWNER},
                                       {"nativeEMSName", Attribute::NATIVE_NAME}}};

template <class Table>
auto valueNamed(const Table& table, const char* what, const char* text) {
  std::string known;
  for (const auto& row : table) {
    if (std::string(row.name) == text) {
      return row.value;
    }
    known += (known.empty() ? "" : ", ") + std::string(row.name);
  }
  throw refusal(globaldefs::EXCPT_INVALID_INPUT, std::string("no ") + what + " is called '" +
                                                     printable(text) + "'; there are " + known);
}

// Every value has its row.
template <class Table, class Value>
const auto& rowOf(const Table& table, Value value) {
  return *std::find_if(table.begin(), table.end(),
                       [value](const auto& row) { return row.value == value; });
}

}  // namespace

ObjectKind kindNamed(const char* text) { return valueNamed(KINDS, "kind of object", text); }

Attribute labelNamed(const char* text) { return valueNamed(LABELS, "label", text); }

const char* nameOfLabel(Attribute label) { return rowOf(LABELS, label).name; }

const char* pairNameOf(ObjectKind kind) { return rowOf(KINDS, kind).pairName; }

}  // namespace zk::agent
