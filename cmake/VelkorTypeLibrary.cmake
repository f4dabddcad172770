# Type libraries by widl, the interface compiler of the package mingw-w64-tools.
#
# velkor_add_type_library(target idl): a library target from an interface definition NAME.idl. Who
# links it includes "NAME.h" and has its identifiers (IID_, DIID_, CLSID_, LIBID_) defined.
# velkor_embed_type_library(program target): puts that target's type library into a program or a
# library as its resource 1 of type TYPELIB.
#
# A library is made by the tool of its word size: the system refuses one of the other (E_FAIL).
find_program(WIDL ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-widl REQUIRED)
# The system's own definitions and type libraries, which a cross compiler brings none of; they are only
# read, so those of one word size serve both.
find_path(WIDL_INCLUDES oaidl.idl REQUIRED NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
                /usr/include/wine-development/windows)
file(GLOB wine_folders /usr/lib*/wine /usr/lib/*/wine)
find_path(WIDL_LIBRARIES stdole2.tlb REQUIRED NO_CMAKE_FIND_ROOT_PATH
          PATHS ${wine_folders} PATH_SUFFIXES x86_64-windows)

function(velkor_add_type_library target idl)
  get_filename_component(name ${idl} NAME_WE)
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${idl})
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target})
  file(MAKE_DIRECTORY ${folder})
  set(options -t -h -u)
  set(endings .tlb .h _i.cpp)
  set(made)
  foreach(option ending IN ZIP_LISTS options endings)
    add_custom_command(OUTPUT ${folder}/${name}${ending}
      COMMAND ${WIDL} -I${WIDL_INCLUDES} -L${WIDL_LIBRARIES} ${option} -o ${folder}/${name}${ending}
              ${source}
      DEPENDS ${source} VERBATIM)
    list(APPEND made ${folder}/${name}${ending})
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/${name}.rc CONTENT "1 TYPELIB \"${name}.tlb\"\n")
  set_source_files_properties(${folder}/${name}_i.cpp PROPERTIES COMPILE_OPTIONS -w)
  add_library(${target} STATIC ${made})
  target_include_directories(${target} SYSTEM PUBLIC ${folder})
  set_target_properties(${target} PROPERTIES VELKOR_TYPE_LIBRARY ${folder}/${name})
endfunction()

function(velkor_embed_type_library program target)
  get_target_property(library ${target} VELKOR_TYPE_LIBRARY)
  get_filename_component(folder ${library} DIRECTORY)
  set_source_files_properties(${library}.rc TARGET_DIRECTORY ${program} PROPERTIES
    LANGUAGE RC OBJECT_DEPENDS ${library}.tlb INCLUDE_DIRECTORIES ${folder})
  target_sources(${program} PRIVATE ${library}.rc)
  target_link_libraries(${program} PRIVATE ${target})
  add_dependencies(${program} ${target})
endfunction()
