# Installation and the CMake packages VmBase and VmGui:
#     find_package(VmGui CONFIG REQUIRED)   ->   VmGui::VmGui (brings VmBase::VmBase), the tools
#     VmGui::rcattr and VmGui::rctoolbar, the functions vmgui_rcattr and vmgui_rctoolbar, the
#     test kit VmGui::Testing and the function vmgui_add_wine_test
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
# The test kit: its headers, the function that registers a test and the Wine wrapper it runs.
install(TARGETS VmGuiTesting EXPORT VmGuiTargets)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/testing/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_SOURCE_DIR}/cmake/VmGuiWineTest.cmake
    DESTINATION ${VMGUI_CMAKE_DIR}/VmGui)
set(VMGUI_WINE_RUN_INSTALLED ${CMAKE_INSTALL_DATADIR}/VmGui/wine-run.sh)
install(PROGRAMS ${PROJECT_SOURCE_DIR}/tools/wine-run.sh
    DESTINATION ${CMAKE_INSTALL_DATADIR}/VmGui)
if(VMGUI_RUNTIME_DLLS)
    install(FILES ${VMGUI_RUNTIME_DLLS} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(EXPORT VmBaseTargets NAMESPACE VmBase:: DESTINATION ${VMGUI_CMAKE_DIR}/VmBase)
install(EXPORT VmGuiTargets NAMESPACE VmGui:: DESTINATION ${VMGUI_CMAKE_DIR}/VmGui)

# The build-time functions vmgui_rcattr and vmgui_rctoolbar, which run the installed tools.
install(FILES ${PROJECT_SOURCE_DIR}/cmake/VmGuiRcAttr.cmake
              ${PROJECT_SOURCE_DIR}/cmake/VmGuiRcToolBar.cmake
    DESTINATION ${VMGUI_CMAKE_DIR}/VmGui)

set(VMGUI_DLL_DIR_INSTALLED ${CMAKE_INSTALL_BINDIR})
foreach(package VmBase VmGui)
    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/${package}Config.cmake.in
        ${CMAKE_BINARY_DIR}/${package}Config.cmake
        INSTALL_DESTINATION ${VMGUI_CMAKE_DIR}/${package}
        PATH_VARS VMGUI_WINE_RUN_INSTALLED VMGUI_DLL_DIR_INSTALLED)
    write_basic_package_version_file(${CMAKE_BINARY_DIR}/${package}ConfigVersion.cmake
        VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
    install(FILES ${CMAKE_BINARY_DIR}/${package}Config.cmake
                  ${CMAKE_BINARY_DIR}/${package}ConfigVersion.cmake
        DESTINATION ${VMGUI_CMAKE_DIR}/${package})
endforeach()
