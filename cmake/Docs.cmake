# The API reference: `cmake --build build --target docs` writes HTML of the
# public headers to build/docs/html. Configured only where Doxygen is found,
# and never built by default. Any warning fails it, an undocumented public
# name among them.
find_package(Doxygen QUIET)
if(NOT DOXYGEN_FOUND)
  return()
endif()
set(DOXYGEN_PROJECT_NAME "zelvo-unicode")
set(DOXYGEN_PROJECT_NUMBER "${PROJECT_VERSION}")
set(DOXYGEN_PROJECT_BRIEF "Unicode text handling, with the data of Unicode 7.0.0")
set(DOXYGEN_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/docs")
set(DOXYGEN_STRIP_FROM_PATH "${PROJECT_SOURCE_DIR}")
set(DOXYGEN_STRIP_FROM_INC_PATH "${PROJECT_SOURCE_DIR}")
set(DOXYGEN_EXTRACT_ALL NO)
set(DOXYGEN_WARN_IF_UNDOCUMENTED YES)
set(DOXYGEN_WARN_AS_ERROR YES)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
# One comment before a run of overloads, between @{ and @}, documents each.
set(DOXYGEN_DISTRIBUTE_GROUP_DOC YES)
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_QUIET YES)
list(TRANSFORM ZELVO_UNICODE_PUBLIC_HEADERS
  PREPEND "${PROJECT_SOURCE_DIR}/" OUTPUT_VARIABLE _zelvo_docs_inputs)
doxygen_add_docs(docs ${_zelvo_docs_inputs}
  COMMENT "API reference of the public headers")
