# The ORB: which one, where its parts are, and how IDL becomes stubs. The only
# build file that knows.
#
# Gives the target zk_orb (headers and libraries of the ORB and of its
# notification stubs) and the function zk_add_idl_library.

set(ZK_ORB omniORB CACHE STRING "The ORB to build with: omniORB or TAO")
set_property(CACHE ZK_ORB PROPERTY STRINGS omniORB TAO)

add_library(zk_orb INTERFACE)

if(ZK_ORB STREQUAL "omniORB")
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(OMNIORB REQUIRED IMPORTED_TARGET omniORB4 omniDynamic4)
  find_program(ZK_IDL_COMPILER omniidl REQUIRED)
  find_path(ZK_COS_HEADERS COS/CosNotifyChannelAdmin.hh REQUIRED)
  find_path(ZK_COS_IDL COS/CosNotifyChannelAdmin.idl PATH_SUFFIXES idl/omniORB
            PATHS /usr/share REQUIRED)
  find_library(ZK_COS_LIBRARY COS4 REQUIRED)
  find_library(ZK_COS_DYNAMIC_LIBRARY COSDynamic4 REQUIRED)
  target_link_libraries(zk_orb INTERFACE PkgConfig::OMNIORB ${ZK_COS_LIBRARY}
                                         ${ZK_COS_DYNAMIC_LIBRARY})
  # Generated headers name the notification stubs without their folder.
  target_include_directories(zk_orb SYSTEM INTERFACE ${ZK_COS_HEADERS} ${ZK_COS_HEADERS}/COS)
elseif(ZK_ORB STREQUAL "TAO")
  foreach(root TAO_ROOT ACE_ROOT)
    if(NOT ${root})
      set(${root} $ENV{${root}})
    endif()
    if(NOT ${root})
      message(FATAL_ERROR "ZK_ORB=TAO needs ${root}: where that is installed")
    endif()
  endforeach()
  find_program(ZK_IDL_COMPILER tao_idl HINTS ${ACE_ROOT}/bin ${TAO_ROOT}/bin REQUIRED)
  foreach(library TAO_CosNotification_Skel TAO_CosNotification TAO_CosEvent TAO_PortableServer
                  TAO_AnyTypeCode TAO ACE)
    find_library(ZK_${library} ${library} HINTS ${ACE_ROOT}/lib ${TAO_ROOT}/lib REQUIRED)
    target_link_libraries(zk_orb INTERFACE ${ZK_${library}})
  endforeach()
  target_include_directories(zk_orb SYSTEM INTERFACE ${ACE_ROOT} ${TAO_ROOT}
                                                     ${TAO_ROOT}/orbsvcs)
  target_compile_definitions(zk_orb INTERFACE ZK_ORB_TAO)
else()
  message(FATAL_ERROR "ZK_ORB is omniORB or TAO, not '${ZK_ORB}'")
endif()

# zk_idl_commands(<module> <idl file> <output folder> <variable for the sources>)
function(zk_idl_commands module idl folder result)
  if(ZK_ORB STREQUAL "omniORB")
    set(outputs ${folder}/${module}SK.cc ${folder}/${module}DynSK.cc)
    set(also ${folder}/${module}.hh)
    set(command ${ZK_IDL_COMPILER} -bcxx -Wba -Wbuse_quotes -Wbkeep_inc_path -C${folder}
                -I${CMAKE_CURRENT_SOURCE_DIR} -I${ZK_COS_IDL}/COS -I${ZK_COS_IDL} ${idl})
  else()
    set(outputs ${folder}/${module}C.cpp ${folder}/${module}S.cpp)
    set(also ${folder}/${module}C.h ${folder}/${module}S.h)
    set(command ${ZK_IDL_COMPILER} -Sa- -St- -o ${folder} -I${CMAKE_CURRENT_SOURCE_DIR}
                -I${TAO_ROOT}/orbsvcs/orbsvcs -I${TAO_ROOT}/orbsvcs -I${TAO_ROOT} ${idl})
  endif()
  file(GLOB all CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.idl
       ${CMAKE_CURRENT_SOURCE_DIR}/*/*.idl)
  add_custom_command(OUTPUT ${outputs} ${also} COMMAND ${command} DEPENDS ${all}
                     COMMENT "IDL ${module}" VERBATIM)
  set(${result} ${outputs} PARENT_SCOPE)
endfunction()

# zk_add_idl_library(<target> <module>...): one shared library of stubs and
# servant bases, with its generated headers. A module may be given with its
# folder.
function(zk_add_idl_library target)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/stubs)
  file(MAKE_DIRECTORY ${folder})
  set(sources)
  foreach(path ${ARGN})
    get_filename_component(module ${path} NAME)
    zk_idl_commands(${module} ${CMAKE_CURRENT_SOURCE_DIR}/${path}.idl ${folder} generated)
    list(APPEND sources ${generated})
  endforeach()
  add_library(${target} SHARED ${sources})
  target_link_libraries(${target} PUBLIC zk_orb)
  target_include_directories(${target} SYSTEM PUBLIC $<BUILD_INTERFACE:${folder}>
                             $<INSTALL_INTERFACE:include/zk_quornex/stubs>)
endfunction()
