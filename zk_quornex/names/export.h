// Marks what the shared library exports; everything else stays hidden.
#ifndef ZK_NAMES_EXPORT_H
#define ZK_NAMES_EXPORT_H

#define ZK_EXPORT __attribute__((visibility("default")))

#endif
