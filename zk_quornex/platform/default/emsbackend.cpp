#include "zk_quornex/platform/default/emsbackend.h"

#include "zk_quornex/platform/default/replaceable.h"

namespace zk::platform {
namespace {

Replaceable<EmsBackend>& backend() { return replaceable<EmsBackend, EmsBackend>(); }

}  // namespace

EmsBackend* install(EmsBackend* replacement) { return backend().install(replacement); }

}  // namespace zk::platform

unsigned long EMFMOMgrI::setOwner() { return zk::platform::backend().get()->setOwner(); }

unsigned long EMFMOMgrI::setUserLabel() { return zk::platform::backend().get()->setUserLabel(); }

unsigned long EMFTopoI::getVersionOfDev(int deviceId, std::string& version) {
  return zk::platform::backend().get()->getVersionOfDev(deviceId, version);
}

unsigned long EMFTopoI::getLocationOfDev(long deviceId, std::string& location) {
  return zk::platform::backend().get()->getLocationOfDev(deviceId, location);
}
