# Says whether the folder FOLDER may use USED, a folder or a library, as the build would: fails when not.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/PalveraModule.cmake)
if(USED MATCHES "::")
  palvera_check_libraries(${FOLDER} ${USED})
else()
  palvera_check_uses(${FOLDER} ${USED})
endif()
message(STATUS "${FOLDER} may use ${USED}")
