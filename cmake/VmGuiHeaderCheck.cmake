# Every public header (the test kit's too) compiles alone, first in its translation unit,
# with the strict warnings a user of the library may have on: target "header_check", part of
# the default build, so that each compiler the project is built with checks the headers.
set(vmgui_header_check_dir ${CMAKE_BINARY_DIR}/header_check)
file(GLOB vmgui_public_headers CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/include/*.h
    ${PROJECT_SOURCE_DIR}/vmbase/include/*.h
    ${PROJECT_SOURCE_DIR}/testing/*.h
    ${PROJECT_SOURCE_DIR}/testing/VmGuiTesting/*.h)
set(vmgui_header_check_sources "")
foreach(header IN LISTS vmgui_public_headers)
    get_filename_component(name ${header} NAME_WE)
    get_filename_component(folder ${header} DIRECTORY)
    get_filename_component(folder ${folder} NAME)
    set(source ${vmgui_header_check_dir}/${folder}_${name}.cpp)
    set(text "#include \"${header}\"\n")
    if(EXISTS ${source})
        file(READ ${source} old)
    else()
        set(old "")
    endif()
    if(NOT old STREQUAL text)
        file(WRITE ${source} "${text}")
    endif()
    list(APPEND vmgui_header_check_sources ${source})
endforeach()

add_library(header_check OBJECT ${vmgui_header_check_sources})
target_link_libraries(header_check PRIVATE VmGuiTesting) # brings VmGui
if(MSVC)
    target_compile_options(header_check PRIVATE /W4 /WX /permissive-)
else()
    target_compile_options(header_check PRIVATE -Wall -Wextra -pedantic -Werror)
endif()
set_target_properties(header_check PROPERTIES CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON
                                              CXX_EXTENSIONS OFF)
