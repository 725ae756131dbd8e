# Installs, moves what was installed, and builds and runs programs against it. Stops at the first thing that fails.

cmake_minimum_required(VERSION 3.25)

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

# read_example(<file> <language> <variable>): the first example in that language in a Markdown file.
function(read_example file language variable)
  file(READ ${file} text)
  string(FIND "${text}" "```${language}\n" begin)
  if(begin EQUAL -1)
    message(FATAL_ERROR "${file} has no example in ${language}")
  endif()
  string(SUBSTRING "${text}" ${begin} -1 text)
  string(FIND "${text}" "\n" begin)
  string(FIND "${text}" "\n```" end)
  math(EXPR length "${end} - ${begin}")
  string(SUBSTRING "${text}" ${begin} ${length} text)
  set(${variable} "${text}\n" PARENT_SCOPE)
endfunction()

set(configure ${CMAKE_COMMAND} -G ${GENERATOR} -D CMAKE_CXX_COMPILER=${CXX} -D CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
              -D CMAKE_BUILD_TYPE=)
set(installed ${WORK}/moved)
file(REMOVE_RECURSE ${WORK}/first ${installed} ${WORK}/consumer ${WORK}/inside ${WORK}/examples ${WORK}/gallery
     ${WORK}/shared ${WORK}/documents ${WORK}/whole)

foreach(component development libraries runtime)
  run("install ${component}" ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first --component ${component})
endforeach()
file(RENAME ${WORK}/first ${installed})

# All of it, the components unnamed, stays below the prefix.
run("install everything" ${CMAKE_COMMAND} -E env DESTDIR=${WORK}/whole ${CMAKE_COMMAND} --install ${BUILD} --prefix /prefix)
file(GLOB_RECURSE files RELATIVE ${WORK}/whole ${WORK}/whole/*)
list(LENGTH files count)
list(FILTER files EXCLUDE REGEX "^prefix/")
if(files OR count LESS 20)
  message(FATAL_ERROR "of ${count} files these are installed elsewhere than below the prefix: ${files}")
endif()
file(REMOVE_RECURSE ${WORK}/whole)

run("configure a consumer" ${configure} -S ${SOURCE}/tests/install/consumer -B ${WORK}/consumer
    -D CMAKE_PREFIX_PATH=${installed} -D GEOMETRY_ONLY=${GEOMETRY_ONLY} -D COMPILED=${WORK}/sources.txt)
run("build a consumer" ${CMAKE_COMMAND} --build ${WORK}/consumer)
run("run the geometry consumer" ${WORK}/consumer/geometry)
expect("the geometry consumer" "area 1")
expect("the geometry consumer" "told: Normalvektor 0")
if(NOT GEOMETRY_ONLY)
  run("run the consumer" ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${WORK}/consumer/components)
  expect("the consumer" "box1 stands in scene1")

  # The examples, each of which finds the library by itself. Those that the gallery compiles are not built here, too.
  run("configure the examples" ${configure} -S ${SOURCE}/examples -B ${WORK}/examples -D CMAKE_PREFIX_PATH=${installed})
  file(GLOB examples RELATIVE ${SOURCE}/examples ${SOURCE}/examples/[0-9]*)
  file(READ ${SOURCE}/examples/gallery/CMakeLists.txt gallery)
  foreach(example IN LISTS examples)
    string(FIND "${gallery}" ${example} at)
    if(NOT at EQUAL -1)
      list(REMOVE_ITEM examples ${example})
    endif()
  endforeach()
  list(LENGTH examples count)
  if(count LESS 3)
    message(FATAL_ERROR "of the examples only these are built by themselves: ${examples}")
  endif()
  list(TRANSFORM examples REPLACE "^[0-9]+-" "")
  run("build the examples" ${CMAKE_COMMAND} --build ${WORK}/examples --target ${examples})

  # The gallery by itself; its many files in one go, to take less time. Another test runs it.
  run("configure the gallery" ${configure} -S ${SOURCE}/examples/gallery -B ${WORK}/gallery
      -D CMAKE_PREFIX_PATH=${installed} -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=0)
  run("build the gallery" ${CMAKE_COMMAND} --build ${WORK}/gallery)

  # What the documents have for CMake, the README's program with it.
  read_example(${SOURCE}/README.md cpp program)
  read_example(${SOURCE}/README.md cmake project)
  read_example(${SOURCE}/docs/forms.md cmake viewer)
  file(WRITE ${WORK}/documents/main.cpp "${program}")
  file(COPY ${SOURCE}/tests/docs/scene.ui DESTINATION ${WORK}/documents)
  file(WRITE ${WORK}/documents/CMakeLists.txt "${project}${viewer}")
  run("configure the documents' projects" ${configure} -S ${WORK}/documents -B ${WORK}/documents/build
      -D CMAKE_PREFIX_PATH=${installed})
  run("build the documents' projects" ${CMAKE_COMMAND} --build ${WORK}/documents/build)

  # The programs find their libraries where they were moved to. This one says how it is used.
  file(GLOB doctor ${installed}/*/zkogl-doctor)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${doctor} nonsense
                  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  expect("zkogl-doctor" "usage: zkogl-doctor")
endif()

# A component that is not there is refused in words.
execute_process(COMMAND ${configure} -S ${SOURCE}/tests/install/consumer -B ${WORK}/refused
                        -D CMAKE_PREFIX_PATH=${installed} -D GEOMETRY_ONLY=ON -D MORE=Nonsense
                RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result EQUAL 0)
  message(FATAL_ERROR "the component Nonsense was found")
endif()
expect("a component that is not there" "Nonsense")

# What the libraries show to others where they are shared. Static ones are linked to shared ones here, without being
# compiled again.
file(GLOB_RECURSE archives ${installed}/libzkogl_*.a)
file(GLOB_RECURSE libraries ${installed}/libzkogl_*.so)
if(LINKS_ELF AND archives)
  file(MAKE_DIRECTORY ${WORK}/shared)
  foreach(archive IN LISTS archives)
    cmake_path(GET archive STEM name)
    run("link ${name}" ${CXX} -shared -o ${WORK}/shared/${name}.so -Wl,--version-script=${SOURCE}/cmake/exports.map
        -Wl,--whole-archive ${archive} -Wl,--no-whole-archive)
    list(APPEND libraries ${WORK}/shared/${name}.so)
  endforeach()
  # The programs from above with these: nothing is missing.
  file(GLOB objects ${WORK}/consumer/CMakeFiles/geometry.dir/*.o)
  set(geometry ${libraries})
  list(FILTER geometry INCLUDE REGEX "_zkxy|_zkmath")
  run("link a geometry consumer" ${CXX} ${objects} -o ${WORK}/shared/geometry -Wl,--no-as-needed ${geometry}
      -Wl,-rpath,${WORK}/shared)
  run("run the geometry consumer with shared libraries" ${WORK}/shared/geometry)
  expect("the geometry consumer with shared libraries" "told: Normalvektor 0")
  if(NOT GEOMETRY_ONLY)
    file(GLOB objects ${WORK}/consumer/CMakeFiles/components.dir/*.o)
    run("link a consumer" ${CXX} ${objects} -o ${WORK}/shared/components -Wl,--no-as-needed ${libraries}
        ${SYSTEM_LIBRARIES} -Wl,-rpath,${WORK}/shared)
    run("run the consumer with shared libraries"
        ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${WORK}/shared/components)
    expect("the consumer with shared libraries" "box1 stands in scene1")
  endif()
endif()
# Every name that they show is one of the installed headers.
if(LINKS_ELF)
  list(LENGTH libraries count)
  if(count LESS 3)
    message(FATAL_ERROR "there are ${count} libraries in ${installed}")
  endif()
  foreach(name metaObject qt_metacall qt_metacast) # what moc adds to a class
    set(known_${name} ON)
  endforeach()
  file(GLOB_RECURSE headers ${installed}/include/*.h)
  foreach(header IN LISTS headers)
    file(READ ${header} text)
    string(REGEX MATCHALL "[A-Za-z_0-9]+" names "${text}")
    foreach(name IN LISTS names)
      set(known_${name} ON)
    endforeach()
  endforeach()
  foreach(library IN LISTS libraries)
    run("nm" ${NM} -DC --defined-only ${library})
    string(REGEX REPLACE "\n" ";" symbols "${output}")
    list(LENGTH symbols count)
    if(count LESS 5)
      message(FATAL_ERROR "${library} shows ${count} names:\n${output}")
    endif()
    foreach(symbol IN LISTS symbols)
      string(REGEX REPLACE "^[0-9a-f]+ . |[(].*" "" symbol "${symbol}")
      string(REGEX REPLACE "^.* (for|to) " "" symbol "${symbol}")
      string(REGEX MATCHALL "[A-Za-z_0-9]+" names "${symbol}")
      foreach(name IN LISTS names)
        if(NOT known_${name})
          message(FATAL_ERROR "${library} shows ${symbol}, which no installed header has")
        endif()
      endforeach()
    endforeach()
  endforeach()
endif()

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  file(GLOB_RECURSE pc ${installed}/*/zkogl-geometry.pc)
  cmake_path(GET pc PARENT_PATH folder)
  set(ENV{PKG_CONFIG_PATH} ${folder})
  run("pkg-config" ${PKG_CONFIG} --cflags --libs zkogl-geometry)
  separate_arguments(flags UNIX_COMMAND "${output}")
  run("build with pkg-config" ${CXX} -std=c++20 ${SOURCE}/tests/install/consumer/geometry.cpp -o ${WORK}/with-pkg-config ${flags}
      -Wl,-rpath,${folder}/..)
  run("run what pkg-config built" ${WORK}/with-pkg-config)
  expect("what pkg-config built" "area 1")
endif()

# With the flags of this build, so that a compiler's cache has the units already.
run("configure with the sources inside" ${configure} -S ${SOURCE}/tests/install/consumer -B ${WORK}/inside
    -D GEOMETRY_ONLY=ON -D ZKOGL_SOURCE=${SOURCE} -D CMAKE_BUILD_TYPE=RelWithDebInfo "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=${FLAGS}")
run("build with the sources inside" ${CMAKE_COMMAND} --build ${WORK}/inside)
run("run what was built with the sources inside" ${WORK}/inside/geometry)
expect("what was built with the sources inside" "area 1")
file(REMOVE_RECURSE ${WORK}/inside ${WORK}/refused ${WORK}/examples)
