// A folder of the consumer's own, named as one of the library's is.
#ifndef CONSUMER_PLATFORM_CONFIG_H
#define CONSUMER_PLATFORM_CONFIG_H

namespace consumer {

inline const char* emsName() { return "Installed/1"; }

}  // namespace consumer

#endif
