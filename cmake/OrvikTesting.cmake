# add_orvik_test(NAME source...): one GoogleTest executable with the shared
# test main, linked to the core and the file formats, its cases registered
# with ctest one by one.
find_package(GTest REQUIRED)
include(GoogleTest)

function(add_orvik_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE orvik_cli_lib orvik_formats orvik_core orvik_test_main GTest::gtest)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  # The case tables under tests/ are read from the source tree.
  target_compile_definitions(${name} PRIVATE ORVIK_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
                       PROPERTIES ENVIRONMENT "ORVIK_SOURCE_DIR=${PROJECT_SOURCE_DIR}")
endfunction()
