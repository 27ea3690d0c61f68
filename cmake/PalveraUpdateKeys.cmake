# palvera_check_update_keys(): stops the configure step unless PALVERA_UPDATE_KEYS holds one or two public keys, or none
# where nothing is to be published.
function(palvera_check_update_keys)
  list(LENGTH PALVERA_UPDATE_KEYS count)
  if(count GREATER 2)
    message(FATAL_ERROR "PALVERA_UPDATE_KEYS names ${count} keys: two are the most")
  endif()
  foreach(key IN LISTS PALVERA_UPDATE_KEYS)
    string(LENGTH "${key}" digits)
    if(NOT digits EQUAL 64 OR NOT key MATCHES "^[0-9a-fA-F]+$")
      message(FATAL_ERROR "PALVERA_UPDATE_KEYS: ${key} is no public key of 64 hexadecimal digits")
    endif()
  endforeach()
  if(PALVERA_PUBLISHED AND count EQUAL 0)
    message(FATAL_ERROR "What users get names the keys by which its updates are signed: set PALVERA_UPDATE_KEYS, or "
                        "PALVERA_UPDATES=OFF for a copy that is updated by other means")
  endif()
endfunction()
