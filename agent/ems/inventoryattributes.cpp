// The inventory's operations that change an attribute.
#include <utility>
#include <variant>

#include "agent/ems/inventory.h"
#include "agent/ems/inventoryimpl.h"
#include "agent/ems/tables.h"

namespace zk::agent {

namespace {

using Calls = std::vector<ListenerCall>;

std::string* textOf(Labels& labels, Attribute attribute) {
  switch (attribute) {
    case Attribute::UserLabel:
      return &labels.userLabel;
    case Attribute::Owner:
      return &labels.owner;
    case Attribute::NativeName:
      break;
  }
  return &labels.nativeName;
}

std::string* textOf(DeviceRecord& device, Attribute attribute) {
  switch (attribute) {
    case Attribute::UserLabel:
      return &device.userLabel;
    case Attribute::Owner:
      return &device.owner;
    case Attribute::NativeName:
      break;
  }
  return &device.name;
}

std::string* textOf(PhysicalLinkRecord&, Attribute) { return nullptr; }

const char* columnOf(Attribute attribute) {
  switch (attribute) {
    case Attribute::UserLabel:
      return "user_label";
    case Attribute::Owner:
      return "owner";
    case Attribute::NativeName:
      break;
  }
  return "native_name";
}

Result checkText(Database& database, const ObjectKey& key, Attribute attribute,
                 const std::string& text, const ChangeOptions& options) {
  if (key.kind == ObjectKind::Device && attribute == Attribute::NativeName && text.empty()) {
    return Result::BadValue;
  }
  const bool mustBeUnique = attribute == Attribute::UserLabel && options.uniqueLabel;
  return mustBeUnique && labelTaken(database, key.kind, text, key.id) ? Result::LabelInUse
                                                                      : Result::Done;
}

Result storeAttribute(Database& database, const ObjectKey& key, AttributeChange change,
                      Calls& calls) {
  std::string* text =
      std::visit([&](auto& record) { return textOf(record, change.attribute); }, change.record);
  if (text == nullptr) {
    return Result::NoSuchObject;
  }
  if (*text == change.after) {
    return Result::Done;
  }
  database.execute(std::string("UPDATE ") + tableOf(key.kind).name + " SET " +
                       columnOf(change.attribute) + " = ? WHERE id = ?",
                   change.after, key.id);
  change.before = std::exchange(*text, change.after);
  calls.push_back(
      [told = std::move(change)](ChangeListener& listener) { listener.attributeChanged(told); });
  return Result::Done;
}

}  // namespace

Result Inventory::setAttribute(const ObjectKey& key, Attribute attribute, const std::string& text,
                               const ChangeOptions& options) {
  return impl_->change([&](Database& database, Calls& calls) {
    std::optional<ObjectRecord> record = find(database, key);
    if (!record) {
      return Result::NoSuchObject;
    }
    const Result allowed = checkText(database, key, attribute, text, options);
    if (allowed != Result::Done) {
      return allowed;
    }
    return storeAttribute(database, key, {std::move(*record), attribute, {}, text, options.origin},
                          calls);
  });
}

Result Inventory::renameDevice(long id, const std::string& name) {
  return setNativeName({ObjectKind::Device, std::to_string(id), {}}, name);
}

}  // namespace zk::agent
