# Flags that every target shares, so that one precompiled header serves them all.

add_library(palvera_options INTERFACE)
target_compile_options(palvera_options INTERFACE -fPIC -fno-omit-frame-pointer)
target_compile_definitions(palvera_options INTERFACE
    QT_NO_KEYWORDS                     # Qt's `emit` macro breaks asio::cancellation_signal::emit
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH
    BOOST_ASIO_SEPARATE_COMPILATION
    BOOST_ASIO_NO_DEPRECATED
    BOOST_BEAST_SEPARATE_COMPILATION)
if(PALVERA_SANITIZE)
  target_compile_options(palvera_options INTERFACE -fsanitize=${PALVERA_SANITIZE} -fno-sanitize-recover=all)
  target_link_options(palvera_options INTERFACE -fsanitize=${PALVERA_SANITIZE})
  if(PALVERA_SANITIZE MATCHES "thread")
    target_compile_definitions(palvera_options INTERFACE BOOST_ASIO_DISABLE_STD_ATOMIC) # TSan does not see its fences
    target_compile_options(palvera_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-tsan>)
  endif()
endif()
if(PALVERA_HARDENED)
  # What the compiler and the loader can do for a program that parses what strangers send.
  target_compile_options(palvera_options INTERFACE -fstack-protector-strong -fstack-clash-protection
      -fcf-protection=full)
  target_compile_definitions(palvera_options INTERFACE _FORTIFY_SOURCE=3 _GLIBCXX_ASSERTIONS)
  target_link_options(palvera_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  # What never runs takes no memory, and the loader reads a short list of the addresses that it has to put right.
  target_compile_options(palvera_options INTERFACE -ffunction-sections -fdata-sections)
  target_link_options(palvera_options INTERFACE -Wl,--gc-sections,-z,pack-relative-relocs)
endif()
if(PALVERA_FUZZ)
  target_compile_options(palvera_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
target_link_options(palvera_options INTERFACE -Wl,--as-needed) # the command line shares libraries with what has windows
target_link_libraries(palvera_options INTERFACE Threads::Threads)

# palvera_find_beside(TARGET): the program takes the libraries of the folder "lib" beside its own before the system's,
# and so do these libraries; where there is none, as in a build folder, the system's. Older than RUNPATH, which counts
# for the program itself alone.
function(palvera_find_beside target)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "\$ORIGIN/../lib" BUILD_WITH_INSTALL_RPATH ON)
  target_link_options(${target} PRIVATE -Wl,--disable-new-dtags)
endfunction()

# Strict warnings, for our own sources only: generated code (moc) would fail under them.
set(palveraWarnings -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wimplicit-fallthrough -Wunused -Werror
    -Wno-missing-designated-field-initializers) # naming the fields that matter is the point of them

function(palvera_own_sources target)
  set(own ${ARGN})
  list(FILTER own INCLUDE REGEX "\\.cpp$")
  set_property(SOURCE ${own} TARGET_DIRECTORY ${target} APPEND PROPERTY COMPILE_OPTIONS ${palveraWarnings})
endfunction()
