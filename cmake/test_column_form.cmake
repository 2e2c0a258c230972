# Builds examples/column_form, the Qt calculation program, the way a program
# takes Zelkora, and runs it without a window (QT_QPA_PLATFORM=offscreen):
#   ROUTE=installed     installs BUILD_DIR with its Qt component into
#                       WORK_DIR/prefix, asks the package for components it
#                       has and has not, and builds the example against it;
#   ROUTE=subdirectory  builds the example's target alone in the project of
#                       examples/column_form/subdirectory, which takes the
#                       source tree through add_subdirectory.
# The runs save the values to a project file, open them again and calculate.
file(REMOVE_RECURSE ${WORK_DIR})
include(${CMAKE_CURRENT_LIST_DIR}/run_step.cmake)
set(generator_options -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})

if(ROUTE STREQUAL "installed")
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
  # Without the component nothing about Qt is needed; an unknown one fails.
  file(WRITE ${WORK_DIR}/probe/CMakeLists.txt [=[
cmake_minimum_required(VERSION 3.22)
project(probe LANGUAGES CXX)
find_package(zelkora REQUIRED)
if(TARGET zelkora::qt OR TARGET Qt6::Widgets)
  message(FATAL_ERROR "the package looked for Qt unasked")
endif()
find_package(zelkora COMPONENTS nosuch)
if(zelkora_FOUND OR NOT zelkora_NOT_FOUND_MESSAGE MATCHES "no component \"nosuch\"")
  message(FATAL_ERROR "an unknown component was not refused: ${zelkora_NOT_FOUND_MESSAGE}")
endif()
]=])
  run(${CMAKE_COMMAND} -S ${WORK_DIR}/probe -B ${WORK_DIR}/probe/build
      -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON ${generator_options})
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/examples/column_form -B ${WORK_DIR}/build
      -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix ${generator_options})
  run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
  set(program ${WORK_DIR}/build/column_form)
else()
  # Built fast: no optimisation, no debugging information.
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/examples/column_form/subdirectory -B ${WORK_DIR}/build
      -DCMAKE_BUILD_TYPE= -DCMAKE_CXX_FLAGS=-O0 ${generator_options})
  run(${CMAKE_COMMAND} --build ${WORK_DIR}/build --target column_form)
  set(program ${WORK_DIR}/build/column_form/column_form)
endif()

# Runs the program with ARGN; its exit code must be `code` and its output
# hold each of the texts in the list `expected`.
function(check code expected)
  execute_process(COMMAND ${program} --check ${ARGN} RESULT_VARIABLE result
                  OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result STREQUAL code)
    message(FATAL_ERROR "column_form --check ${ARGN}: exit ${result}, not ${code}\n${out}\n${err}")
  endif()
  foreach(text IN LISTS expected)
    string(FIND "${out}" "${text}" at)
    if(at EQUAL -1)
      message(FATAL_ERROR "column_form --check ${ARGN}: no \"${text}\" in\n${out}\n${err}")
    endif()
  endforeach()
endfunction()
set(project_file ${WORK_DIR}/KZ-1.zks)
# C30, HRB400, 400 × 400, l0 = 6000: l0/b = 15, φ halfway between 0.92 and 0.87.
check(0 "l0/b ＝ 15;φ ＝ 0.895;Nu ＝ 0.9φ(fcA + f'yA's) ＝ 2412.5kN;，满足要求。"
      --save ${project_file} 5=6000)
# The file gives l0 back; the larger force fails.
check(1 "φ ＝ 0.895;N ＝ 3000.0kN ＞ Nu，不满足要求。" --open ${project_file} 7=3000)
check(1 "截面宽度 b" 3=-400)
check(1 "超出了表中的范围" 5=30000)
check(2 "" --open ${WORK_DIR}/missing.zks)
