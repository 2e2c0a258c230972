# Installs the built library (without its Qt component, so that nothing here
# needs Qt) into WORK_DIR/prefix, compiles each installed header alone, then
# configures, builds and runs examples/beam_check against it, as a
# calculation program would.
file(REMOVE_RECURSE ${WORK_DIR})
include(${CMAKE_CURRENT_LIST_DIR}/run_step.cmake)
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix --component zelkora)
# Every installed header compiles on its own against the installed tree,
# cleanly under the warnings a program's build commonly turns on.
file(GLOB_RECURSE headers RELATIVE ${WORK_DIR}/prefix/include ${WORK_DIR}/prefix/include/*.h)
foreach(header ${headers})
  set(unit ${WORK_DIR}/headers/${header}.cpp)
  file(WRITE ${unit} "#include \"${header}\"\n")
  run(${CXX} -std=c++20 -fsyntax-only -Wall -Wextra -Wshadow -Werror -I${WORK_DIR}/prefix/include
      ${unit})
endforeach()
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/examples/beam_check -B ${WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_CXX_COMPILER=${CXX})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build -j2)
run(${WORK_DIR}/build/beam_check 250 500 C30 HRB400 180)
message(STATUS "${output}")
foreach(expected "梁宽 b ＝ 250mm" "选用 3Φ25")
  string(FIND "${output}" "${expected}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "the example's output lacks \"${expected}\":\n${output}")
  endif()
endforeach()
