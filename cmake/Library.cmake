# The library: one set of objects, linked into the shared library and, for the
# tests of what it hides, into test programs.

# The contract that an agent's process fulfils: headers only.
add_library(zk_quornex_contract INTERFACE)
add_library(zk_quornex::contract ALIAS zk_quornex_contract)
target_link_libraries(zk_quornex_contract INTERFACE zk_quornex::idl)

add_library(
  zk_quornex_objects OBJECT
  zk_quornex/names/aidname.cpp
  zk_quornex/names/debuglog.cpp
  zk_quornex/names/mapname.cpp
  zk_quornex/names/nameconvert.cpp
  zk_quornex/names/nameparse.cpp
  zk_quornex/names/pairs.cpp
  zk_quornex/messages/listsignal.cpp
  zk_quornex/messages/messagecache.cpp
  zk_quornex/messages/messagehandle.cpp
  zk_quornex/messages/messagemgr.cpp
  zk_quornex/messages/msgagent.cpp
  zk_quornex/names/tename.cpp
  zk_quornex/names/tptemplates.cpp
  zk_quornex/notify/exceptions.cpp
  zk_quornex/notify/notification.cpp
  zk_quornex/mo/commonfunc.cpp
  zk_quornex/mo/moadapter.cpp)
target_link_libraries(
  zk_quornex_objects
  PUBLIC zk_quornex::contract zk_ace
  PRIVATE zk_warnings PkgConfig::SAFEC PkgConfig::JSONCPP)
set_target_properties(zk_quornex_objects PROPERTIES CXX_VISIBILITY_PRESET hidden
                                                    VISIBILITY_INLINES_HIDDEN ON)

# What the contract declares stays undefined here: the agent links its own
# implementation, or zk_quornex::platform.
add_library(zk_quornex_common SHARED)
add_library(zk_quornex::common ALIAS zk_quornex_common)
target_link_libraries(
  zk_quornex_common
  PUBLIC zk_quornex::contract zk_ace
  PRIVATE zk_quornex_objects PkgConfig::SAFEC)
target_link_options(zk_quornex_common PRIVATE
                    "LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map")
set_target_properties(zk_quornex_common PROPERTIES LINK_DEPENDS
                                                   ${PROJECT_SOURCE_DIR}/cmake/exports.map)
