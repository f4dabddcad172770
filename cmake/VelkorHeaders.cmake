# Every header compiles alone, so that none leans on what another one happened to include: one that
# its own source file includes first is compiled so there, all others as the first and only include
# of a file made for it. The headers of the Windows face are compiled by the cross build,
# and only they: the core's headers hold nothing that differs there.
set(folders support platform model view categories exchange print control refresh calendar hosts
            tools bench tests)
list(TRANSFORM folders PREPEND ${CMAKE_SOURCE_DIR}/)
list(TRANSFORM folders APPEND /*.h OUTPUT_VARIABLE patterns)
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR} ${patterns})
list(FILTER headers EXCLUDE REGEX "^tests/data/")
if(WIN32)
  list(FILTER headers INCLUDE REGEX "^platform/windows/|^hosts/windows/")
else()
  list(FILTER headers EXCLUDE REGEX "/windows/")
endif()

set(units)
foreach(header ${headers})
  string(REGEX REPLACE "h$" "cpp" source ${CMAKE_SOURCE_DIR}/${header})
  if(EXISTS ${source})
    file(STRINGS ${source} first REGEX "^#include" LIMIT_COUNT 1)
    if(first STREQUAL "#include \"${header}\"")
      continue()
    endif()
  endif()
  set(unit ${CMAKE_BINARY_DIR}/headers/${header}.cpp)
  # Twice: the second time shows a missing guard.
  file(CONFIGURE OUTPUT ${unit} CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
  list(APPEND units ${unit})
endforeach()
if(units)
  add_library(headers_alone OBJECT ${units})
  target_compile_options(headers_alone PRIVATE -O0)
  target_link_libraries(headers_alone PRIVATE gmock)
  # Programs that tests start; the value does not matter here.
  target_compile_definitions(headers_alone PRIVATE VKR_REFRESH="" YEARPLAN="")
  if(NOT WIN32)
    find_package(Qt6 REQUIRED COMPONENTS Widgets PrintSupport Svg Test)
    target_link_libraries(headers_alone PRIVATE Qt6::Widgets Qt6::PrintSupport Qt6::Svg Qt6::Test)
  endif()
endif()
