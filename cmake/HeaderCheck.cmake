# Each public header compiles on its own: one translation unit per header,
# which includes it twice and nothing else, so that no header comes to lean
# on what another one happens to include. Compiled only, never linked.
set(_zelvo_header_check_sources)
foreach(header IN LISTS ZELVO_UNICODE_PUBLIC_HEADERS)
  string(MAKE_C_IDENTIFIER "${header}" name)
  set(source "${PROJECT_BINARY_DIR}/header-check/${name}.cpp")
  file(CONFIGURE OUTPUT "${source}"
    CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
  list(APPEND _zelvo_header_check_sources "${source}")
endforeach()
add_library(zelvo_unicode_header_check OBJECT ${_zelvo_header_check_sources})
target_include_directories(zelvo_unicode_header_check PRIVATE
  "${PROJECT_SOURCE_DIR}")
target_compile_options(zelvo_unicode_header_check PRIVATE
  ${ZELVO_UNICODE_WARNINGS})
