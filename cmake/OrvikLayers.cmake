# The layers of the program, lowest first. A library of one layer links only
# libraries of the layers below it, and its sources see only the headers of
# its own layer and of the layers it links. The core's layers are made by
# orvik_add_layer in the top CMakeLists.txt, lowest first; above them come
# orvik_formats (src/formats), orvik_cli_lib (src/cli) and the window
# application (src/gui).
#
# ORVIK_CORE_LAYERS lists the core's libraries lowest first, and
# ORVIK_LAYER_FOLDERS the source folders of every layer, one entry per
# layer, the folders of one layer joined by "," (tests/core checks the
# includes of every folder against it).
set(ORVIK_CORE_LAYERS "")
set(ORVIK_LAYER_FOLDERS "")

# orvik_include_root(TARGET FOLDER...): makes the headers of the source
# folders FOLDER... reachable for TARGET and everything linking it as
# "folder/header.h", through a directory in the build tree that holds only
# those folders (as links). Headers of other folders are then not found
# unless a linked library brings them: including a higher layer's header
# fails to compile.
function(orvik_include_root target)
  set(root ${PROJECT_BINARY_DIR}/include_roots/${target})
  file(MAKE_DIRECTORY ${root})
  # A link left from an earlier configuration goes (the link only, never
  # what it points to).
  file(GLOB entries LIST_DIRECTORIES true ${root}/*)
  foreach(entry IN LISTS entries)
    get_filename_component(name ${entry} NAME)
    if(NOT name IN_LIST ARGN)
      file(REMOVE ${entry})
    endif()
  endforeach()
  foreach(folder IN LISTS ARGN)
    if(NOT IS_SYMLINK ${root}/${folder})
      file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
    endif()
  endforeach()
  target_include_directories(${target} PUBLIC ${root})
endfunction()

# orvik_add_layer(TARGET FOLDERS folder... [LINKS library...]): the static
# library of the next core layer, built from the sources its folders' CMake
# files add with target_sources(TARGET ...). Call it from the top directory.
function(orvik_add_layer target)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "FOLDERS;LINKS")
  list(JOIN layer_FOLDERS "," folders)
  set(ORVIK_CORE_LAYERS ${ORVIK_CORE_LAYERS} ${target} PARENT_SCOPE)
  set(ORVIK_LAYER_FOLDERS ${ORVIK_LAYER_FOLDERS} ${folders} PARENT_SCOPE)
  add_library(${target} STATIC)
  orvik_include_root(${target} ${layer_FOLDERS})
  if(layer_LINKS)
    target_link_libraries(${target} PUBLIC ${layer_LINKS})
  endif()
  foreach(folder IN LISTS layer_FOLDERS)
    add_subdirectory(${PROJECT_SOURCE_DIR}/src/${folder} ${PROJECT_BINARY_DIR}/src/${folder})
  endforeach()
endfunction()
