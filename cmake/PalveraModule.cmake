# palvera_module(NAME SOURCES file... [HEADERS file...] [USES folder...] [LIBRARIES target...] [PRIVATE_LIBRARIES target...])
#
# One folder under src/ is one static library, palvera_NAME. HEADERS are those without a source file of their own that
# the meta-object compiler must see. USES names other folders, which must stand lower in the
# graph: naming one on the same level or above stops the configure step.

set(palveraLevel_platform 0)
set(palveraLevel_service 1)
set(palveraLevel_session 2)
set(palveraLevel_transfer 2)
set(palveraLevel_transfers 3)
set(palveraLevel_screens 4)
set(palveraLevel_update 4)
set(palveraLevel_app 5)
set(palveraLevel_cli 5)
set(palveraOnly_update platform transfers) # the updater sees what is in flight, nothing else
set(palveraOnly_controls "")                  # building blocks of the face: nothing of ours

function(palvera_check_uses name)
  if(NOT DEFINED palveraLevel_${name} AND NOT DEFINED palveraOnly_${name})
    message(FATAL_ERROR "${name} has no place in the folder graph: give it one in PalveraModule.cmake")
  endif()
  foreach(used IN LISTS ARGN)
    if(DEFINED palveraOnly_${name} AND NOT used IN_LIST palveraOnly_${name})
      message(FATAL_ERROR "${name} must not use ${used}")
    endif()
    if(NOT used STREQUAL "controls" AND NOT palveraLevel_${used} LESS palveraLevel_${name})
      message(FATAL_ERROR "${name} must not use ${used}: dependencies point downwards only")
    endif()
  endforeach()
endfunction()

function(palvera_module name)
  cmake_parse_arguments(arg "" "" "SOURCES;HEADERS;USES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
  palvera_check_uses(${name} ${arg_USES})
  set_property(GLOBAL PROPERTY palveraUses_${name} "${arg_USES}")
  set(target palvera_${name})
  add_library(${target} STATIC ${arg_SOURCES} ${arg_HEADERS})
  palvera_own_sources(${target} ${arg_SOURCES})
  palvera_use_pch(${target})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  list(TRANSFORM arg_USES PREPEND palvera_ OUTPUT_VARIABLE usedTargets)
  target_link_libraries(${target} PUBLIC palvera_options palvera_asio Qt6::Core ${usedTargets} ${arg_LIBRARIES}
                        PRIVATE ${arg_PRIVATE_LIBRARIES})
endfunction()

# One precompiled header for the coroutine machinery: 1.6 s less per translation unit.
function(palvera_use_pch target)
  target_precompile_headers(${target} REUSE_FROM palvera_pch)
endfunction()
