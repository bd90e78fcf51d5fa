#include "agent/admin/kinds.h"

#include <array>

#include "agent/base/log.h"
#include "agent/tmf/errors.h"

namespace zk::agent {

namespace {

template <class Value>
struct Named {
  const char* name;
  Value value;
};

constexpr std::array<Named<ObjectKind>, 8> KINDS{{{"ems", ObjectKind::Ems},
                                                  {"subnetwork", ObjectKind::Subnetwork},
                                                  {"device", ObjectKind::Device},
                                                  {"link", ObjectKind::Link},
                                                  {"node", ObjectKind::Node},
                                                  {"submap", ObjectKind::SubMap},
                                                  {"display-link", ObjectKind::DisplayLink},
                                                  {"physical-link", ObjectKind::PhysicalLink}}};

constexpr std::array<Named<Attribute>, 3> LABELS{{{"userLabel", Attribute::UserLabel},
                                                  {"owner", Attribute::Owner},
                                                  {"nativeEMSName", Attribute::NativeName}}};

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

}  // namespace

ObjectKind kindNamed(const char* text) { return valueNamed(KINDS, "kind of object", text); }

Attribute labelNamed(const char* text) { return valueNamed(LABELS, "label", text); }

std::string describe(const char* kind, const char* id) {
  return std::string(kind) + (*id == '\0' ? "" : " " + printable(id));
}

}  // namespace zk::agent
