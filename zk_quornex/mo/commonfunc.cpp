#include "zk_quornex/mo/commonfunc.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <string>

#include "zk_quornex/names/nameconvert.h"
#include "zk_quornex/notify/notification.h"
#include "zk_quornex/platform/ems.h"
#include "zk_quornex/platform/trace.h"

namespace NS_QUORCORBA {

namespace {

constexpr std::size_t LONGEST_TEXT = 252;

using NameSetter = unsigned long (*)(TEName*, const char*);

// The order of these checks is part of the interface.
unsigned long setByNmsName(const globaldefs::NVSList_T& name, const char* text,
                           NameSetter setByName) {
  if (name.length() == 0) {
    return RESULT_BAD_NAME;
  }
  if (text == nullptr) {
    return RESULT_NULL_ARGUMENT;
  }
  if (std::strlen(text) > LONGEST_TEXT) {
    return RESULT_TEXT_TOO_LONG;
  }
  TEName* converted = nullptr;
  const unsigned long result = TENameConvert::NmsToEmsNameConvert(name, converted);
  const std::unique_ptr<TEName> owned(converted);
  return result != RESULT_OK ? result : setByName(owned.get(), text);
}

bool hasSetters(int nameType) {
  constexpr int WITH[] = {NAME_EMS,  NAME_MANAGED_ELEMENT, NAME_SUBNETWORK,  NAME_TOPOLOGICAL_LINK,
                          NAME_NODE, NAME_SUBMAP,          NAME_DISPLAY_LINK};
  return std::find(std::begin(WITH), std::end(WITH), nameType) != std::end(WITH);
}

void sendChange(TEName* name, const char* attribute, const char* text) {
  notifications::NVList_T changed;
  changed.length(1);
  changed[0].name = CORBA::string_dup(attribute);
  changed[0].value <<= text != nullptr ? text : "";
  TANotification::OnObjectAVC(name, changed, false);
}

void traceUnreported(const char* attribute, const char* reason) {
  NS_CORBA::SetTraceOrigin("commonfunc", __LINE__);
  NS_CORBA::TaDebugWithPara(1, "TANotification::OnObjectAVC failed.attribute=%s,%s", attribute,
                            reason);
}

// The change has been made, whatever becomes of the notification.
void reportChange(TEName* name, const char* attribute, const char* text) {
  try {
    sendChange(name, attribute, text);
  } catch (const CORBA::Exception& failure) {
    traceUnreported(attribute, failure._name());
  } catch (const std::exception& failure) {
    traceUnreported(attribute, failure.what());
  } catch (...) {
    traceUnreported(attribute, "unknown exception");
  }
}

// The EMS knows the object from the request it serves, so no key is handed to
// it: its service takes no arguments.
unsigned long setAttribute(TEName* name, const char* attribute, const char* text,
                           unsigned long (*apply)()) {
  if (name == nullptr) {
    return RESULT_NULL_ARGUMENT;
  }
  if (!hasSetters(name->type_)) {
    return RESULT_NOT_SUPPORTED;
  }
  const unsigned long result = apply();
  if (result != RESULT_OK) {
    return result;
  }
  reportChange(name, attribute, text);
  return RESULT_OK;
}

}  // namespace

unsigned long TECommonFunc::OnSetUserLabel(const globaldefs::NVSList_T& name, const char* userLabel,
                                           bool refused) {
  return refused ? RESULT_NOT_SUPPORTED : setByNmsName(name, userLabel, &OnSetUserLabel);
}

unsigned long TECommonFunc::OnSetUserLabel(TEName* name, const char* userLabel) {
  return setAttribute(name, "userLabel", userLabel, &EMFMOMgrI::setUserLabel);
}

unsigned long TECommonFunc::OnSetOwner(const globaldefs::NVSList_T& name, const char* owner) {
  return setByNmsName(name, owner, &OnSetOwner);
}

unsigned long TECommonFunc::OnSetOwner(TEName* name, const char* owner) {
  return setAttribute(name, "owner", owner, &EMFMOMgrI::setOwner);
}

unsigned long TECommonFunc::OnSetNativeEmsName(TEName* name, const char* nativeEmsName) {
  reportChange(name, "nativeEMSName", nativeEmsName);
  return RESULT_OK;
}

unsigned long TECommonFunc::OnSetNativeEmsName() { return RESULT_NOT_SUPPORTED; }

unsigned long TECommonFunc::OnsetAdditionalInfo() { return RESULT_NOT_SUPPORTED; }

TEEMS* TEEMS::m_pInstance = nullptr;

TEEMS* TEEMS::Instance() {
  if (m_pInstance == nullptr) {
    m_pInstance = new TEEMS;
  }
  return m_pInstance;
}

void TEEMS::Destroy() {
  delete m_pInstance;
  m_pInstance = nullptr;
}

unsigned long TEEMS::SetUserLabel() const { return EMFMOMgrI::setUserLabel(); }

unsigned long TEEMS::SetOwner() const { return EMFMOMgrI::setOwner(); }

}  // namespace NS_QUORCORBA
