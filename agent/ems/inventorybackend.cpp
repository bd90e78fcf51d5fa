#include "agent/ems/inventorybackend.h"

#include <utility>

#include "zk_quornex/platform/trace.h"

namespace zk::agent {

namespace {

thread_local const EmsRequest* innermost = nullptr;

template <class Step>
unsigned long withoutThrowing(const char* operation, Step&& step) {
  try {
    return codeOf(step());
  } catch (const std::exception& error) {
    NS_CORBA::SetTraceOrigin("inventorybackend", __LINE__);
    NS_CORBA::TaDebugWithPara(1, "InventoryBackend::%s failed.%s", operation, error.what());
    return codeOf(Result::STORAGE_FAILURE);
  }
}

}  // namespace

EmsRequest::EmsRequest(ObjectKey target, std::string text, bool enforceUniqueness)
    : target_(std::move(target)),
      text_(std::move(text)),
      enforceUniqueness_(enforceUniqueness),
      outer_(std::exchange(innermost, this)) {}

EmsRequest::~EmsRequest() { innermost = outer_; }

const EmsRequest* EmsRequest::current() { return innermost; }

unsigned long InventoryBackend::setOwner() { return apply(Attribute::OWNER); }

unsigned long InventoryBackend::setUserLabel() { return apply(Attribute::USER_LABEL); }

unsigned long InventoryBackend::apply(Attribute attribute) {
  const EmsRequest* request = EmsRequest::current();
  if (request == nullptr) {
    return codeOf(Result::NO_REQUEST);
  }
  const ChangeOptions options{request->enforceUniqueness(), Origin::NMS};
  return withoutThrowing("setAttribute", [&] {
    return inventory_.setAttribute(request->target(), attribute, request->text(), options);
  });
}

unsigned long InventoryBackend::getVersionOfDev(int deviceId, std::string& version) {
  return copyText("getVersionOfDev", deviceId, &DeviceRecord::version, version);
}

unsigned long InventoryBackend::getLocationOfDev(long deviceId, std::string& location) {
  return copyText("getLocationOfDev", deviceId, &DeviceRecord::location, location);
}

unsigned long InventoryBackend::copyText(const char* operation, long deviceId,
                                         std::string DeviceRecord::*text, std::string& out) const {
  return withoutThrowing(operation, [&] {
    const std::optional<DeviceRecord> device = inventory_.device(deviceId);
    if (device) {
      out = (*device).*text;
    }
    return device ? Result::DONE : Result::NO_SUCH_OBJECT;
  });
}

}  // namespace zk::agent
