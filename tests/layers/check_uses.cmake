# Says whether the folder FOLDER may use the folder USED, as the build would: fails when not.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/PalveraModule.cmake)
palvera_check_uses(${FOLDER} ${USED})
message(STATUS "${FOLDER} may use ${USED}")
