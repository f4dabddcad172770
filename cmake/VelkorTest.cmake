# velkor_add_test(target): registers one GoogleTest program with ctest.
#
# Natively a test runs in a time zone other than UTC and a locale other than English, off-screen,
# with a home folder of its own; a cross-built one runs under Wine by scripts/wine-run.sh. Each
# case's result goes to test-results/<target>.json in the build folder, where test.sh counts them.
# The working folder is the build folder.
set(VELKOR_TEST_LOCALE de_DE.UTF-8)
set(VELKOR_TEST_LOCALES ${CMAKE_BINARY_DIR}/locale)
set(VELKOR_TEST_HOME ${CMAKE_BINARY_DIR}/test-home)
file(MAKE_DIRECTORY ${VELKOR_TEST_HOME} ${VELKOR_TEST_LOCALES})

# The locale is compiled into the build folder: a fresh machine has none but C.
find_program(LOCALEDEF localedef)
if(LOCALEDEF AND NOT EXISTS ${VELKOR_TEST_LOCALES}/${VELKOR_TEST_LOCALE}/LC_TIME)
  execute_process(COMMAND ${LOCALEDEF} -i de_DE -f UTF-8
                          ${VELKOR_TEST_LOCALES}/${VELKOR_TEST_LOCALE}
                  OUTPUT_QUIET ERROR_QUIET)
endif()
if(NOT EXISTS ${VELKOR_TEST_LOCALES}/${VELKOR_TEST_LOCALE}/LC_TIME)
  message(WARNING "The locale ${VELKOR_TEST_LOCALE} cannot be made (package locales): "
                  "tests run in the C locale.")
endif()

# A test's own code runs for moments; most of its time goes into its compilation, and under the cross
# compiler into its linking, which takes many times longer where nothing is inlined. What is
# precompiled serves only programs of equal options, so all take the one that Qt demands of its users.
function(velkor_compile_as_test target)
  if(WIN32)
    target_compile_options(${target} PRIVATE -O1)
  else()
    target_compile_options(${target} PRIVATE -O0 -fPIC)
  endif()
endfunction()

function(velkor_add_test target)
  velkor_compile_as_test(${target})
  add_test(NAME ${target}
           COMMAND ${target} --gtest_output=json:test-results/${target}.json --gtest_brief=1
           WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
  set_tests_properties(${target} PROPERTIES ENVIRONMENT
    "TZ=America/St_Johns;LC_ALL=${VELKOR_TEST_LOCALE};LANGUAGE=de;LOCPATH=${VELKOR_TEST_LOCALES};HOME=${VELKOR_TEST_HOME};XDG_CACHE_HOME=${VELKOR_TEST_HOME}/.cache;XDG_CONFIG_HOME=${VELKOR_TEST_HOME}/.config;QT_QPA_PLATFORM=offscreen")
  if(CMAKE_CROSSCOMPILING)
    # Much of their time is waiting, so they run side by side, each in a prefix of its own. Those that
    # drive processes take longest and begin first.
    set_property(TEST ${target} APPEND PROPERTY ENVIRONMENT "VELKOR_WINE_PREFIX=${target}")
    set_tests_properties(${target} PROPERTIES TIMEOUT 300)
    if(target MATCHES "hosts|refresh|windows")
      set_tests_properties(${target} PROPERTIES COST 100)
    endif()
    # Its dialogs are waited for by the clock, which a busy machine upsets.
    if(target STREQUAL "windows_tests")
      set_tests_properties(${target} PROPERTIES RUN_SERIAL TRUE)
    endif()
  else()
    set_tests_properties(${target} PROPERTIES TIMEOUT 180)
  endif()
endfunction()
