#include "zk_quornex/platform/default/configuration.h"

#include "zk_quornex/platform/default/replaceable.h"

namespace zk::platform {
namespace {

class StandardEmsConfig : public NS_CORBA::CorbaBaseAgentConfig {
 public:
  const std::string& EmsName() const override { return values.emsName; }
  const std::string& EmsVersion() const override { return values.emsVersion; }

  Configuration values;
};

class StandardAgentConfig : public NS_QUORCORBA::CorbaAgentConfig {
 public:
  int GetNotifyModel() const override { return values.notifyModel; }
  long GetCachesize() const override { return values.cachesize; }
  long GetEventlistsize() const override { return values.eventlistsize; }

  Configuration values;
};

Replaceable<NS_CORBA::CorbaBaseAgentConfig>& emsConfig() {
  return replaceable<NS_CORBA::CorbaBaseAgentConfig, StandardEmsConfig>();
}

Replaceable<NS_QUORCORBA::CorbaAgentConfig>& agentConfig() {
  return replaceable<NS_QUORCORBA::CorbaAgentConfig, StandardAgentConfig>();
}

}  // namespace

void configure(const Configuration& configuration) {
  immortal<StandardEmsConfig>().values = configuration;
  immortal<StandardAgentConfig>().values = configuration;
}

NS_CORBA::CorbaBaseAgentConfig* install(NS_CORBA::CorbaBaseAgentConfig* replacement) {
  return emsConfig().install(replacement);
}

NS_QUORCORBA::CorbaAgentConfig* install(NS_QUORCORBA::CorbaAgentConfig* replacement) {
  return agentConfig().install(replacement);
}

}  // namespace zk::platform

namespace NS_CORBA {

CorbaBaseAgentConfig* CorbaBaseAgentConfig::Instance() { return zk::platform::emsConfig().get(); }

}  // namespace NS_CORBA

namespace NS_QUORCORBA {

CorbaAgentConfig* CorbaAgentConfig::Instance() { return zk::platform::agentConfig().get(); }

}  // namespace NS_QUORCORBA
