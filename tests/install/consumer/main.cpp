// The least that a user of the installed library does: convert a name, hold an
// event cache, and adapt a record. Its own platform/config.h is not the library's.
#include <iostream>

#include "platform/config.h"
#include "zk_quornex/messages/messagecach.h"
#include "zk_quornex/mo/commonfunc.h"
#include "zk_quornex/mo/moadapter.h"
#include "zk_quornex/names/nameconvert.h"
#include "zk_quornex/names/namevalidate.h"
#include "zk_quornex/notify/exceptions.h"
#include "zk_quornex/notify/notification.h"
#include "zk_quornex/platform/default/configuration.h"

int main() {
  zk::platform::Configuration configuration;
  configuration.emsName = consumer::emsName();
  zk::platform::configure(configuration);

  NS_QUORCORBA::TEMEName element;
  element.meId_ = 7;
  globaldefs::NVSList_T name;
  if (NS_QUORCORBA::TENameConvert::EmsToNmsNameConvert(&element, name) != 0) {
    return 1;
  }
  std::cout << name[0].name.in() << '=' << name[0].value.in() << ' ' << name[1].name.in() << '='
            << name[1].value.in() << '\n';

  NS_QUORCORBA::Name_Validate_Visitor visitor;
  emsMgr::EMS_T ems;
  notifications::EventList_T* events = nullptr;
  const bool fine = element.Accept(&visitor) == 0 &&
                    NS_QUORCORBA::CAMOAdapter::AdapterEms(ems) == 0 &&
                    NS_QUORCORBA::NXMessageMgr::Instance()->getMsgList(8, 1, events) == 0 &&
                    NS_QUORCORBA::TECommonFunc::OnSetNativeEmsName() != 0;
  return fine ? 0 : 1;
}
