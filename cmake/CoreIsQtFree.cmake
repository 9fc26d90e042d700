# The core must never reach Qt: a link to any Qt target from any core
# library stops the configure step, and the test core_sources_are_qt_free
# rejects a Qt include in a core source file. Nor may the core reach the
# libraries of the file formats: they belong to orvik_formats alone.
# Each layer of the core links only layers below it (cmake/OrvikLayers.cmake);
# the test sources_include_only_lower_layers checks the includes.
set(lower_layers "")
foreach(core_target IN LISTS ORVIK_CORE_LAYERS ITEMS orvik_core)
  get_target_property(core_links ${core_target} LINK_LIBRARIES)
  get_target_property(core_interface ${core_target} INTERFACE_LINK_LIBRARIES)
  foreach(lib IN LISTS core_links core_interface)
    if(lib MATCHES "-NOTFOUND$")
      continue()
    endif()
    if(lib MATCHES "Qt|qcustomplot|QCustomPlot")
      message(FATAL_ERROR "${core_target} links ${lib}; the core must stay free of Qt")
    endif()
    if(lib MATCHES "SQLite|sqlite|zip|xlsxwriter|freexl|EXPAT|expat|mdb|orvik_formats")
      message(FATAL_ERROR "${core_target} links ${lib}; file formats belong to orvik_formats")
    endif()
    if(NOT core_target STREQUAL "orvik_core" AND NOT lib IN_LIST lower_layers)
      message(FATAL_ERROR "${core_target} links ${lib}; a core layer links only the layers below it")
    endif()
  endforeach()
  list(APPEND lower_layers ${core_target})
endforeach()
