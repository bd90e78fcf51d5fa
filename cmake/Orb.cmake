# The ORB: which one, where its parts are, and how IDL becomes stubs. The only
# build file that knows.
#
# Gives the target zk_orb (headers and libraries of the ORB and of its
# notification stubs) and the functions zk_add_idl_library and zk_idl_layouts.

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
  find_path(ZK_ORB_INTERNAL_HEADERS SocketCollection.h PATH_SUFFIXES omniORB4/internal REQUIRED)
  find_library(ZK_COS_LIBRARY COS4 REQUIRED)
  find_library(ZK_COS_DYNAMIC_LIBRARY COSDynamic4 REQUIRED)
  target_link_libraries(zk_orb INTERFACE PkgConfig::OMNIORB ${ZK_COS_LIBRARY}
                                         ${ZK_COS_DYNAMIC_LIBRARY})
  # Generated headers name the notification stubs without their folder.
  target_include_directories(zk_orb SYSTEM INTERFACE ${ZK_COS_HEADERS} ${ZK_COS_HEADERS}/COS)
elseif(ZK_ORB STREQUAL "TAO")
  # Kept in the cache, so that a later run of CMake finds them without the
  # environment of the first.
  foreach(root ACE_ROOT TAO_ROOT)
    set(${root} "$ENV{${root}}" CACHE PATH "Where ${root} is installed")
    if(NOT ${root})
      message(FATAL_ERROR "ZK_ORB=TAO needs ${root}: where that is installed")
    endif()
  endforeach()
  find_program(ZK_IDL_COMPILER tao_idl HINTS ${ACE_ROOT}/bin ${TAO_ROOT}/bin
               ${TAO_ROOT}/TAO_IDL REQUIRED)
  # What the IDL compiler asks its environment for.
  set(ZK_IDL_COMMAND
      ${CMAKE_COMMAND} -E env ACE_ROOT=${ACE_ROOT} TAO_ROOT=${TAO_ROOT}
      "LD_LIBRARY_PATH=${ACE_ROOT}/lib:${TAO_ROOT}/lib:$ENV{LD_LIBRARY_PATH}" ${ZK_IDL_COMPILER})
  foreach(
    library
    TAO_CosEvent_Skel
    TAO_CosEvent
    TAO_DynamicAny
    TAO_IORTable
    TAO_Messaging
    TAO_Valuetype
    TAO_PortableServer
    TAO_AnyTypeCode
    TAO
    ACE)
    find_library(ZK_${library} ${library} HINTS ${ACE_ROOT}/lib ${TAO_ROOT}/lib REQUIRED)
    target_link_libraries(zk_orb INTERFACE ${ZK_${library}})
  endforeach()
  target_include_directories(zk_orb SYSTEM INTERFACE ${ACE_ROOT} ${TAO_ROOT} ${TAO_ROOT}/orbsvcs
                                                     ${TAO_ROOT}/orbsvcs/orbsvcs)
  target_compile_definitions(zk_orb INTERFACE ZK_ORB_TAO)
else()
  message(FATAL_ERROR "ZK_ORB is omniORB or TAO, not '${ZK_ORB}'")
endif()

# zk_idl_files(<idl file> <variable>): the file and what it includes of its folder.
function(zk_idl_files idl result)
  set(files ${idl})
  file(STRINGS ${idl} lines REGEX "^#include \"")
  foreach(line ${lines})
    string(REGEX REPLACE "^#include \"(.*)\".*" "\\1" name ${line})
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${name})
      zk_idl_files(${CMAKE_CURRENT_SOURCE_DIR}/${name} more)
      list(APPEND files ${more})
    endif()
  endforeach()
  list(REMOVE_DUPLICATES files)
  set(${result} ${files} PARENT_SCOPE)
endfunction()

# zk_idl_commands(<idl file> <output folder> <variable for the sources>): stubs and
# servant bases of one module. What comes out as it was is left alone, so that
# nothing is built again for it.
function(zk_idl_commands idl folder result)
  get_filename_component(module ${idl} NAME_WE)
  set(made ${CMAKE_CURRENT_BINARY_DIR}/made/${module})
  if(ZK_ORB STREQUAL "omniORB")
    set(sources ${module}SK.cc ${module}DynSK.cc)
    set(headers ${module}.hh)
    set(command ${ZK_IDL_COMPILER} -bcxx -Wba -Wbuse_quotes -Wbkeep_inc_path -C${made}
                -I${CMAKE_CURRENT_SOURCE_DIR} -I${ZK_COS_IDL}/COS -I${ZK_COS_IDL} ${idl})
  else()
    # -as: an anonymous sequence stays one, or its TypeCode would be another.
    set(sources ${module}C.cpp ${module}S.cpp)
    set(headers ${module}C.h ${module}C.inl ${module}S.h)
    set(command ${ZK_IDL_COMMAND} -as ${ARGN} -o ${made} -I${CMAKE_CURRENT_SOURCE_DIR}
                -I${TAO_ROOT}/orbsvcs/orbsvcs -I${TAO_ROOT}/orbsvcs -I${TAO_ROOT} ${idl})
  endif()
  zk_idl_files(${idl} needed)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${needed})
  list(TRANSFORM sources PREPEND ${folder}/ OUTPUT_VARIABLE outputs)
  list(TRANSFORM headers PREPEND ${folder}/ OUTPUT_VARIABLE also)
  list(TRANSFORM sources PREPEND ${made}/ OUTPUT_VARIABLE made_sources)
  list(TRANSFORM headers PREPEND ${made}/ OUTPUT_VARIABLE made_headers)
  file(MAKE_DIRECTORY ${made})
  add_custom_command(
    OUTPUT ${outputs} ${also}
    COMMAND ${command}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${made_sources} ${made_headers} ${folder}
    DEPENDS ${needed}
    COMMENT "IDL ${module}"
    VERBATIM)
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
    zk_idl_commands(${CMAKE_CURRENT_SOURCE_DIR}/${path}.idl ${folder} generated)
    list(APPEND sources ${generated})
  endforeach()
  if(ZK_ORB STREQUAL "TAO")
    # The ORB leaves every pull interface out of its own notification stubs. These
    # stand in their place, under their own names.
    foreach(module CosNotification CosNotifyComm CosNotifyFilter CosNotifyChannelAdmin)
      zk_idl_commands(${TAO_ROOT}/orbsvcs/orbsvcs/${module}.idl ${folder} generated
                      -DTAO_HAS_NOTIFY_PULL_INTERFACES)
      list(APPEND sources ${generated})
    endforeach()
  endif()
  add_library(${target} SHARED ${sources})
  target_link_libraries(${target} PUBLIC zk_orb)
  if(ZK_ORB STREQUAL "TAO")
    target_compile_definitions(${target} PUBLIC TAO_HAS_NOTIFY_PULL_INTERFACES)
    # GCC takes the generated skeletons' arrays for too short.
    target_compile_options(${target} PRIVATE -Wno-array-bounds)
  endif()
  target_include_directories(${target} SYSTEM BEFORE PUBLIC $<BUILD_INTERFACE:${folder}>
                             $<INSTALL_INTERFACE:include/zk_quornex/stubs>)
endfunction()

# zk_idl_layouts(<file>): the layouts of all that our IDL and the notification IDL
# declare, for what reads requests without the ORB. Whichever that is, omniidl
# reads the IDL for it.
function(zk_idl_layouts file)
  find_program(ZK_OMNIIDL omniidl REQUIRED)
  find_path(ZK_COS_IDL COS/CosNotifyChannelAdmin.idl PATH_SUFFIXES idl/omniORB
            PATHS /usr/share REQUIRED)
  set(idl ${PROJECT_SOURCE_DIR}/zk_quornex/idl)
  file(GLOB modules CONFIGURE_DEPENDS RELATIVE ${idl} ${idl}/*.idl ${idl}/own/*.idl)
  list(TRANSFORM modules REPLACE "(.+)" "#include \"\\1\"\n" OUTPUT_VARIABLE includes)
  string(JOIN "" includes ${includes} "#include <CosNotifyChannelAdmin.idl>\n"
         "#include <TimeBase.idl>\n")
  file(CONFIGURE OUTPUT ${file}.idl CONTENT "${includes}" @ONLY)
  list(TRANSFORM modules PREPEND ${idl}/)
  add_custom_command(
    OUTPUT ${file}
    COMMAND
      ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1 ${ZK_OMNIIDL}
      -p${PROJECT_SOURCE_DIR}/cmake -blayouts -Wb${file} -I${idl} -I${ZK_COS_IDL}/COS
      -I${ZK_COS_IDL} ${file}.idl
    DEPENDS ${modules} ${file}.idl ${PROJECT_SOURCE_DIR}/cmake/layouts.py
    COMMENT "IDL layouts"
    VERBATIM)
endfunction()
