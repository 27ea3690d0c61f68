# What the face needs beside plain C++: QML modules, symbols, fonts and languages.

# What a program with all screens links, beside palvera_app.
add_library(palvera_qmlplugins INTERFACE)

# palvera_qml(NAME URI uri QML file... [SINGLETONS file...] [DEPENDS uri...]): the QML module of the folder's library
# palvera_NAME, which palvera_module has made; DEPENDS names modules whose types its own types speak of. Programs link
# palvera_NAMEplugin, which imports itself: importing it once more hides its types.
function(palvera_qml name)
  cmake_parse_arguments(arg "" "URI" "QML;SINGLETONS;DEPENDS" ${ARGN})
  set(target palvera_${name})
  set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  set_target_properties(${target} PROPERTIES AUTOMOC ON)
  string(REPLACE "." "/" path ${arg_URI})
  set(cache)
  if(NOT PALVERA_QML_CACHE)
    set(cache NO_CACHEGEN)
  endif()
  qt_add_qml_module(${target}
      URI ${arg_URI}
      VERSION 1.0
      RESOURCE_PREFIX /qt/qml
      ${cache}
      DEPENDENCIES QtQuick ${arg_DEPENDS}
      OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${path}
      IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
      QML_FILES ${arg_SINGLETONS} ${arg_QML})
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}) # generated code includes by file name
  target_link_libraries(palvera_qmlplugins INTERFACE ${target}plugin)
endfunction()

# palvera_bundle(TARGET PREFIX prefix FILE file ALIAS alias ...): files of installed packages as resources. One that is
# missing stops the configure step with its path.
function(palvera_bundle target prefix)
  set(files)
  set(pairs ${ARGN})
  while(pairs)
    list(POP_FRONT pairs file alias)
    if(NOT EXISTS ${file})
      message(FATAL_ERROR "${alias}: there is no ${file}; scripts/setup installs it")
    endif()
    set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${alias})
    list(APPEND files ${file})
  endwhile()
  string(MAKE_C_IDENTIFIER ${prefix} id)
  qt_add_resources(${target} palvera${id} PREFIX ${prefix} FILES ${files})
endfunction()

# palvera_translate(TARGET): the texts of the face in every language that translations/ has, as resources.
function(palvera_translate target)
  find_program(PALVERA_LRELEASE lrelease PATHS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS} NO_DEFAULT_PATH)
  if(NOT PALVERA_LRELEASE)
    message(FATAL_ERROR "There is no lrelease for Qt 6; scripts/setup installs it")
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/translations/*.ts)
  set(made)
  foreach(source IN LISTS sources)
    cmake_path(GET source STEM name)
    set(file ${CMAKE_CURRENT_BINARY_DIR}/${name}.qm)
    add_custom_command(OUTPUT ${file} COMMAND ${PALVERA_LRELEASE} -silent ${source} -qm ${file} DEPENDS ${source} VERBATIM)
    set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${name}.qm)
    list(APPEND made ${file})
  endforeach()
  qt_add_resources(${target} palveratranslations PREFIX /palvera/translations FILES ${made})
endfunction()
