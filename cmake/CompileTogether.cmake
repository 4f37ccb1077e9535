# Most of what a small source file takes to compile is the headers that its neighbours read as well.

option(SWITCHMANAGER_COMPILE_TOGETHER "Compile neighbouring sources of tools and models in one go" ON)

# Compiles sources of a target that stand in one folder in one go: all, or all but those named after APART,
# which have names of their own that another one has too, or have to stay an object of their own. The name
# tells the groups of a target apart. To be called in the folder, after the target has the sources.
function(compile_together target name)
    cmake_parse_arguments(ARG "" "" "APART" ${ARGN})
    if(NOT SWITCHMANAGER_COMPILE_TOGETHER)
        return()
    endif()
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        get_filename_component(path ${source} ABSOLUTE)
        get_filename_component(folder ${path} DIRECTORY)
        get_filename_component(class ${path} NAME_WE)
        if(folder STREQUAL CMAKE_CURRENT_SOURCE_DIR AND NOT class IN_LIST ARG_APART)
            set_source_files_properties(${path} TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP ${name})
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
