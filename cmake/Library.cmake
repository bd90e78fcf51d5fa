# The library: its objects, linked into the shared library and, for the tests of
# what it hides, into test programs, which link no more of its parts than they need.

# The contract that an agent's process fulfils: headers only.
add_library(zk_quornex_contract INTERFACE)
add_library(zk_quornex::contract ALIAS zk_quornex_contract)
target_link_libraries(zk_quornex_contract INTERFACE zk_quornex::idl)

# zk_add_library_part(<name> <source>...): the objects zk_quornex_<name>.
function(zk_add_library_part name)
  add_library(zk_quornex_${name} OBJECT ${ARGN})
  target_link_libraries(
    zk_quornex_${name}
    PUBLIC zk_quornex::contract zk_ace
    PRIVATE zk_warnings PkgConfig::SAFEC PkgConfig::JSONCPP)
  set_target_properties(zk_quornex_${name} PROPERTIES CXX_VISIBILITY_PRESET hidden
                                                      VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# What reads texts stands alone; the event cache, and the names with what is told
# about the objects that they name, need it.
zk_add_library_part(
  texts
  zk_quornex/names/debuglog.cpp
  zk_quornex/names/nameparse.cpp
  zk_quornex/names/tptemplates.cpp
  zk_quornex/notify/missingservice.cpp)
zk_add_library_part(
  messages
  zk_quornex/messages/listsignal.cpp
  zk_quornex/messages/messagecache.cpp
  zk_quornex/messages/messagehandle.cpp
  zk_quornex/messages/messagemgr.cpp
  zk_quornex/messages/msgagent.cpp)
zk_add_library_part(
  names
  zk_quornex/mo/commonfunc.cpp
  zk_quornex/mo/moadapter.cpp
  zk_quornex/names/aidname.cpp
  zk_quornex/names/mapname.cpp
  zk_quornex/names/nameconvert.cpp
  zk_quornex/names/pairs.cpp
  zk_quornex/names/tename.cpp
  zk_quornex/notify/notification.cpp)

# What the contract declares stays undefined here: the agent links its own
# implementation, or zk_quornex::platform.
add_library(zk_quornex_common SHARED)
add_library(zk_quornex::common ALIAS zk_quornex_common)
target_link_libraries(
  zk_quornex_common
  PUBLIC zk_quornex::contract zk_ace
  PRIVATE zk_quornex_texts zk_quornex_messages zk_quornex_names PkgConfig::SAFEC)
target_link_options(zk_quornex_common PRIVATE
                    "LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map")
set_target_properties(zk_quornex_common PROPERTIES LINK_DEPENDS
                                                   ${PROJECT_SOURCE_DIR}/cmake/exports.map)
