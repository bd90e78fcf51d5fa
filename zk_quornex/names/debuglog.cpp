#include "zk_quornex/names/debuglog.h"

#include <safeclib/safe_str_lib.h>

namespace NS_QUORCORBA {

void assertionFailed(const char* file, int line, const char* expression) {
  char text[512] = {};
  snprintf_s(text, sizeof(text), "ASSERT: file %s, line %d assertion failed for '%s'.\n", file,
             line, expression);
  debugLog().Write(text);
}

}  // namespace NS_QUORCORBA
