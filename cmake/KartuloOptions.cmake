# One place for warnings and defines; every target of the project links it.
add_library(kartulo_options INTERFACE)
target_compile_options(kartulo_options INTERFACE -Wall -Wextra)
if(KARTULO_WERROR)
  target_compile_options(kartulo_options INTERFACE -Werror)
endif()
target_compile_definitions(kartulo_options INTERFACE
  QT_USE_QSTRINGBUILDER
  QT_DISABLE_DEPRECATED_BEFORE=0x050F00
  QT_NO_CAST_FROM_BYTEARRAY)
# For fuzzing every target is built with the sanitizers and the fuzzer's coverage; the
# fuzzer's own main goes only into the fuzz targets (tests/fuzz). Undefined behaviour ends
# a run like a crash, else it would scroll past as a warning.
if(KARTULO_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "KARTULO_FUZZ needs clang: configure with CC=clang CXX=clang++")
  endif()
  target_compile_options(kartulo_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  target_link_options(kartulo_options INTERFACE -fsanitize=address,undefined)
endif()

# AddressSanitizer and UndefinedBehaviorSanitizer for every target, tests
# included; the first report ends the program, so a test fails on it. Leaks
# are checked, with two allocations Qt itself keeps to the end of the process
# excepted (tests/sanitizer/lsan.supp).
if(KARTULO_SANITIZE)
  set(_sanitizer -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(kartulo_options INTERFACE ${_sanitizer})
  target_link_options(kartulo_options INTERFACE ${_sanitizer})
  set(KARTULO_ASAN_OPTIONEN "detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=1")
  set(KARTULO_TEST_UMGEBUNG
    "ASAN_OPTIONS=${KARTULO_ASAN_OPTIONEN}"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/sanitizer/lsan.supp:print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1")
endif()

# Adds a QtTest executable, linked with the given test toolkit, to CTest; every
# test runs on the offscreen platform.
function(kartulo_add_test name toolkit)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE ${toolkit} kartulo_options)
  # Each test program in a network namespace of its own: the window joins the
  # LAN, and programs run side by side must neither reach the machine's
  # network nor find each other.
  add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/netns.sh $<TARGET_FILE:${name}>)
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=qt.qpa.*=false;${KARTULO_TEST_UMGEBUNG}"
    TIMEOUT 300)
endfunction()
