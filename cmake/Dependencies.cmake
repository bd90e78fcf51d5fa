# What the system takes from the distribution, one target each.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

pkg_check_modules(SAFEC REQUIRED IMPORTED_TARGET libsafec)
pkg_check_modules(JSONCPP REQUIRED IMPORTED_TARGET jsoncpp)
find_package(SQLiteCpp CONFIG REQUIRED)
find_package(spdlog REQUIRED)
find_package(CLI11 REQUIRED)

find_path(ZK_ACE_HEADERS ace/Task.h HINTS ${ACE_ROOT} REQUIRED)
find_library(ZK_ACE_LIBRARY ACE HINTS ${ACE_ROOT}/lib REQUIRED)
add_library(zk_ace INTERFACE)
target_include_directories(zk_ace SYSTEM INTERFACE ${ZK_ACE_HEADERS})
target_link_libraries(zk_ace INTERFACE ${ZK_ACE_LIBRARY} Threads::Threads)
