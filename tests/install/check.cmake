# Installs, moves what was installed, and builds and runs programs against it. Stops at the first thing that fails.

function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${what}: ${result}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect what text)
  string(FIND "${output}" "${text}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "${what}: there is no \"${text}\" in\n${output}")
  endif()
endfunction()

set(configure ${CMAKE_COMMAND} -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${CXX} -D CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
              -D CMAKE_BUILD_TYPE=Debug)
set(installed ${WORK}/moved)
file(REMOVE_RECURSE ${WORK}/first ${installed} ${WORK}/consumer ${WORK}/inside ${WORK}/examples)

foreach(component development runtime)
  run("install ${component}" ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first --component ${component})
endforeach()
file(RENAME ${WORK}/first ${installed})

run("configure a consumer" ${configure} -S ${SOURCE}/tests/install/consumer -B ${WORK}/consumer
    -D CMAKE_PREFIX_PATH=${installed} -D GEOMETRY_ONLY=${GEOMETRY_ONLY})
run("build a consumer" ${CMAKE_COMMAND} --build ${WORK}/consumer)
run("run the geometry consumer" ${WORK}/consumer/geometry)
expect("the geometry consumer" "area 1")
if(NOT GEOMETRY_ONLY)
  run("run the consumer" ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${WORK}/consumer/components)
  expect("the consumer" "box1 stands in scene1")

  # The examples, each of which finds the library by itself.
  run("configure the examples" ${configure} -S ${SOURCE}/examples -B ${WORK}/examples -D CMAKE_PREFIX_PATH=${installed})
  run("build the examples" ${CMAKE_COMMAND} --build ${WORK}/examples)
endif()

# A component that is not there is refused in words.
execute_process(COMMAND ${configure} -S ${SOURCE}/tests/install/consumer -B ${WORK}/refused
                        -D CMAKE_PREFIX_PATH=${installed} -D GEOMETRY_ONLY=ON -D MORE=Nonsense
                RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result EQUAL 0)
  message(FATAL_ERROR "the component Nonsense was found")
endif()
expect("a component that is not there" "Nonsense")

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  file(GLOB_RECURSE pc ${installed}/*/zkogl-geometry.pc)
  cmake_path(GET pc PARENT_PATH folder)
  set(ENV{PKG_CONFIG_PATH} ${folder})
  run("pkg-config" ${PKG_CONFIG} --cflags --libs zkogl-geometry)
  separate_arguments(flags UNIX_COMMAND "${output}")
  run("build with pkg-config" ${CXX} -std=c++20 ${SOURCE}/tests/install/consumer/geometry.cpp -o ${WORK}/with-pkg-config ${flags})
  run("run what pkg-config built" ${WORK}/with-pkg-config)
  expect("what pkg-config built" "area 1")
endif()

run("configure with the sources inside" ${configure} -S ${SOURCE}/tests/install/consumer -B ${WORK}/inside
    -D GEOMETRY_ONLY=ON -D ZKOGL_SOURCE=${SOURCE})
run("build with the sources inside" ${CMAKE_COMMAND} --build ${WORK}/inside)
run("run what was built with the sources inside" ${WORK}/inside/geometry)
expect("what was built with the sources inside" "area 1")
file(REMOVE_RECURSE ${WORK}/inside ${WORK}/refused ${WORK}/examples)
