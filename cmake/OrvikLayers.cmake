# The layers of the program, lowest first. A library of one layer links only
# libraries of the layers below it, and its sources see only the headers of
# its own layer and of the layers it links:
#   orvik_stats      src/stats       the statistical library
#   orvik_worksheet  src/worksheet   worksheet, selection, cell numbers
#   orvik_shell      src/shell       session log, result records, message
#                                    boxes, dialog models, the host interface
#                                    and the command declaration
#   orvik_analyses   src/charts, src/capability, src/analyses
#   orvik_commands   src/commands    the registry of commands and dialogs
# These five are the core; above them come orvik_formats (src/formats),
# orvik_cli_lib (src/cli) and the window application (src/gui).
# tests/core/check_layering.cmake reads the same order from
# ORVIK_LAYER_FOLDERS, one entry per layer, folders of a layer joined by ",".
set(ORVIK_CORE_LAYERS orvik_stats orvik_worksheet orvik_shell orvik_analyses orvik_commands)
set(ORVIK_LAYER_FOLDERS "stats" "worksheet" "shell" "charts,capability,analyses" "commands" "formats" "cli" "gui")

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
# library of one core layer, built from the sources its folders' CMake
# files add with target_sources(TARGET ...).
function(orvik_add_layer target)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "FOLDERS;LINKS")
  add_library(${target} STATIC)
  orvik_include_root(${target} ${layer_FOLDERS})
  if(layer_LINKS)
    target_link_libraries(${target} PUBLIC ${layer_LINKS})
  endif()
  foreach(folder IN LISTS layer_FOLDERS)
    add_subdirectory(${PROJECT_SOURCE_DIR}/src/${folder} ${PROJECT_BINARY_DIR}/src/${folder})
  endforeach()
endfunction()
