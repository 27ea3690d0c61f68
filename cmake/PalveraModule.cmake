# palvera_module(NAME SOURCES file... [USES folder...] [LIBRARIES target...] [PRIVATE_LIBRARIES target...])
#
# One folder under src/ is one static library, palvera_NAME; a room within a folder is named by its own name. USES names
# other folders, which must stand lower in the graph: naming one on the same level or above stops the configure step, and
# so does a library that another folder keeps for itself.

set(palveraLevel_text 0)
set(palveraLevel_async 1)
set(palveraLevel_files 2)
set(palveraLevel_http 3)
set(palveraLevel_desktop 3)
set(palveraLevel_service 4)
set(palveraLevel_session 5)
set(palveraLevel_transfer 5)
set(palveraLevel_transfers 6)
set(palveraLevel_screens 7)
set(palveraLevel_update 7)
set(palveraLevel_assets 8) # the rooms of screens/
set(palveraLevel_deliverables 8)
set(palveraLevel_panel 8)
set(palveraLevel_signin 8) # the rooms of app/
set(palveraLevel_shell 8)
set(palveraLevel_app 9)
set(palveraLevel_cli 9)
set(palveraOnly_controls "") # building blocks of the face: nothing of ours

# Which folders may link what lies outside of Qt Core and Asio.
set(palveraOwners_CURL::libcurl http)
set(palveraOwners_OpenSSL::SSL http)
set(palveraOwners_OpenSSL::Crypto http)
set(palveraOwners_Qt6::DBus desktop)
set(palveraOwners_systemd desktop)
set(palveraOwners_xcb desktop)
set(palveraOwners_fido2 desktop)
set(palveraOwners_Qt6::Quick controls)
set(palveraOwners_CLI11::CLI11 cli)

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

function(palvera_check_libraries name)
  foreach(library IN LISTS ARGN)
    if(DEFINED palveraOwners_${library} AND NOT name IN_LIST palveraOwners_${library})
      message(FATAL_ERROR "${name} must not link ${library}: ${palveraOwners_${library}} does")
    endif()
  endforeach()
endfunction()

function(palvera_module name)
  cmake_parse_arguments(arg "" "" "SOURCES;USES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
  palvera_check_uses(${name} ${arg_USES})
  palvera_check_libraries(${name} ${arg_LIBRARIES} ${arg_PRIVATE_LIBRARIES})
  set_property(GLOBAL PROPERTY palveraUses_${name} "${arg_USES}")
  set(target palvera_${name})
  add_library(${target} STATIC ${arg_SOURCES})
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
