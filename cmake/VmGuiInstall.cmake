# Installation and the CMake packages VmBase and VmGui:
#     find_package(VmGui CONFIG REQUIRED)   ->   VmGui::VmGui (brings VmBase::VmBase), the tools
#     VmGui::rcattr and VmGui::rctoolbar, and the functions vmgui_rcattr and vmgui_rctoolbar
include(CMakePackageConfigHelpers)

set(VMGUI_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake)

install(TARGETS VmBase EXPORT VmBaseTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS VmGui EXPORT VmGuiTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/vmbase/include/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VmBase)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VmGui)
if(VMGUI_RUNTIME_DLLS)
    install(FILES ${VMGUI_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(EXPORT VmBaseTargets NAMESPACE VmBase:: DESTINATION ${VMGUI_CMAKE_DIR}/VmBase)
install(EXPORT VmGuiTargets NAMESPACE VmGui:: DESTINATION ${VMGUI_CMAKE_DIR}/VmGui)

# The build-time functions vmgui_rcattr and vmgui_rctoolbar, which run the installed tools.
install(FILES ${PROJECT_SOURCE_DIR}/cmake/VmGuiRcAttr.cmake
              ${PROJECT_SOURCE_DIR}/cmake/VmGuiRcToolBar.cmake
    DESTINATION ${VMGUI_CMAKE_DIR}/VmGui)

foreach(package VmBase VmGui)
    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/${package}Config.cmake.in
        ${CMAKE_BINARY_DIR}/${package}Config.cmake
        INSTALL_DESTINATION ${VMGUI_CMAKE_DIR}/${package})
    write_basic_package_version_file(${CMAKE_BINARY_DIR}/${package}ConfigVersion.cmake
        VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
    install(FILES ${CMAKE_BINARY_DIR}/${package}Config.cmake
                  ${CMAKE_BINARY_DIR}/${package}ConfigVersion.cmake
        DESTINATION ${VMGUI_CMAKE_DIR}/${package})
endforeach()
