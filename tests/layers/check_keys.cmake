# Says whether a build with these keys, apart by colons, may be made, as the configure step would: fails when not.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/PalveraUpdateKeys.cmake)
string(REPLACE ":" ";" PALVERA_UPDATE_KEYS "${KEYS}")
palvera_check_update_keys()
message(STATUS "it may be built")
