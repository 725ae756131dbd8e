# Has the gallery that was built on the installed library and the one of this build take a picture of their windows.

cmake_minimum_required(VERSION 3.25)

file(REMOVE ${WORK}/installed.png ${WORK}/own.png)
foreach(program installed own)
  set(path ${GALLERY})
  if(program STREQUAL "own")
    set(path ${OWN_GALLERY})
  endif()
  execute_process(COMMAND ${path} --picture ${WORK}/${program}.png RESULT_VARIABLE result OUTPUT_VARIABLE output
                  ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${path} --picture: ${result}\n${output}")
  endif()
endforeach()

# A window without what OpenGL draws into it, or without its controls, has less to write down.
file(SIZE ${WORK}/installed.png size)
if(size LESS 20000)
  message(FATAL_ERROR "${WORK}/installed.png has ${size} bytes")
endif()
file(SHA256 ${WORK}/installed.png installed)
file(SHA256 ${WORK}/own.png own)
if(NOT installed STREQUAL own)
  message(FATAL_ERROR "${WORK}/installed.png and ${WORK}/own.png are not the same")
endif()
