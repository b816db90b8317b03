# velum_subsystem(NAME HEADERS ... SOURCES ... [BOOST_SOURCES ...] [TESTS ...] [INTERNAL_TESTS ...])
#
# Adds one folder of velum/ to the library.
#   HEADERS         public headers: installed, verified to compile alone
#   SOURCES         sources, and the headers in detail/, which users never see
#   BOOST_SOURCES   sources that include Boost's heavy headers (Spirit, Geometry): they share one precompiled header
#   TESTS           tests that go through the shared library, as users do
#   INTERNAL_TESTS  tests of what stands in detail/: they link the objects, since the library hides those names

function(velum_subsystem name)
  cmake_parse_arguments(arg "" "" "HEADERS;SOURCES;BOOST_SOURCES;TESTS;INTERNAL_TESTS" ${ARGN})
  foreach(list HEADERS SOURCES BOOST_SOURCES TESTS INTERNAL_TESTS)
    list(TRANSFORM arg_${list} PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  endforeach()
  target_sources(velum PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${arg_HEADERS})
  target_sources(velum_objects PRIVATE ${arg_SOURCES})
  target_sources(velum_boost_objects PRIVATE ${arg_BOOST_SOURCES})
  set_property(GLOBAL APPEND PROPERTY VELUM_SUBSYSTEMS ${name})
  if(arg_TESTS)
    set_property(GLOBAL APPEND PROPERTY VELUM_TESTED ${name})
    set_property(GLOBAL PROPERTY VELUM_TESTS_${name} ${arg_TESTS})
  endif()
  if(arg_INTERNAL_TESTS)
    set_property(GLOBAL APPEND PROPERTY VELUM_TESTED_INSIDE ${name})
    set_property(GLOBAL PROPERTY VELUM_INTERNAL_TESTS_${name} ${arg_INTERNAL_TESTS})
  endif()
endfunction()

# What checks the library need not be fast itself; less of the optimizer halves the time that it takes to build.
set(VELUM_TEST_OPTIONS "$<$<CONFIG:Release>:-O1>")
set(VELUM_TEST_LOCALES "${PROJECT_BINARY_DIR}/locales")

# velum_test(TARGET SOURCES ... LIBRARIES ...): a GoogleTest program, each of its tests known to ctest.
function(velum_test target)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE
    ${arg_LIBRARIES} velum_compile_options velum_testing GTest::gmock GTest::gtest_main)
  target_compile_options(${target} PRIVATE ${VELUM_TEST_OPTIONS})
  target_precompile_headers(${target} REUSE_FROM velum_testing)
  if(VELUM_SANITIZE MATCHES "thread")
    # The sanitizer's own operator new is not weak: that of testing/FailingAllocations.cpp must not clash with it.
    target_link_options(${target} PRIVATE "LINKER:-z,muldefs")
  endif()
  include(GoogleTest)
  gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 
    PROPERTIES TIMEOUT 300 ENVIRONMENT "LOCPATH=${VELUM_TEST_LOCALES}")
endfunction()

# Called once the test tools exist.
function(velum_add_subsystem_tests)
  get_property(tested GLOBAL PROPERTY VELUM_TESTED)
  foreach(name IN LISTS tested)
    get_property(sources GLOBAL PROPERTY VELUM_TESTS_${name})
    velum_test(velum_${name}_test SOURCES ${sources} LIBRARIES velum::velum)
  endforeach()
  get_property(tested GLOBAL PROPERTY VELUM_TESTED_INSIDE)
  foreach(name IN LISTS tested)
    get_property(sources GLOBAL PROPERTY VELUM_INTERNAL_TESTS_${name})
    velum_test(velum_${name}_internal_test SOURCES ${sources} LIBRARIES velum_internal)
  endforeach()
endfunction()
