# The core must never reach Qt: a link to any Qt target stops the configure
# step, and the test core_sources_are_qt_free rejects a Qt include in a core
# source file.
foreach(core_target orvik_core)
  get_target_property(core_links ${core_target} LINK_LIBRARIES)
  get_target_property(core_interface ${core_target} INTERFACE_LINK_LIBRARIES)
  foreach(lib IN LISTS core_links core_interface)
    if(lib MATCHES "Qt|qcustomplot|QCustomPlot")
      message(FATAL_ERROR "${core_target} links ${lib}; the core must stay free of Qt")
    endif()
  endforeach()
endforeach()

# Nor may the core reach the libraries of the file formats: they belong to
# orvik_formats alone.
foreach(lib IN LISTS core_links core_interface)
  if(lib MATCHES "SQLite|sqlite|zip|xlsxwriter|freexl|EXPAT|expat|mdb|orvik_formats")
    message(FATAL_ERROR "orvik_core links ${lib}; file formats belong to orvik_formats")
  endif()
endforeach()
