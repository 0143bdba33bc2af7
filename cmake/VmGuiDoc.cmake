# The API reference (target "doc", part of the default build): HTML from the public headers,
# written to doc/html in the build tree and installed to share/doc/VmGui/html. Doxygen fails
# the build on any warning, among them a public member without a comment.
option(VMGUI_BUILD_DOCS "Build the API reference with Doxygen" ON)
if(NOT VMGUI_BUILD_DOCS)
    return()
endif()

find_package(Doxygen)
find_program(VMGUI_AWK NAMES awk gawk mawk)
if(NOT DOXYGEN_FOUND OR NOT VMGUI_AWK)
    message(WARNING "Doxygen or awk missing: no API reference (tools/setup.sh installs them)")
    return()
endif()

set(VMGUI_DOC_DIR ${CMAKE_BINARY_DIR}/doc)
configure_file(${PROJECT_SOURCE_DIR}/doc/Doxyfile.in ${VMGUI_DOC_DIR}/Doxyfile @ONLY)
file(GLOB vmgui_doc_inputs CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/include/*.h
    ${PROJECT_SOURCE_DIR}/vmbase/include/*.h
    ${PROJECT_SOURCE_DIR}/doc/*.md)
add_custom_command(
    OUTPUT ${VMGUI_DOC_DIR}/html/index.html
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${VMGUI_DOC_DIR}/html
    COMMAND Doxygen::doxygen ${VMGUI_DOC_DIR}/Doxyfile
    DEPENDS ${vmgui_doc_inputs}
            ${PROJECT_SOURCE_DIR}/doc/Doxyfile.in
            ${PROJECT_SOURCE_DIR}/doc/doxygen-filter.awk
    WORKING_DIRECTORY ${VMGUI_DOC_DIR}
    COMMENT "Writing the API reference"
    VERBATIM)
add_custom_target(doc ALL DEPENDS ${VMGUI_DOC_DIR}/html/index.html)

install(DIRECTORY ${VMGUI_DOC_DIR}/html/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html)
