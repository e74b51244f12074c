# Language level, warnings and sanitizers are set here, once, for every target of the project.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# A log may be far larger than 2 GiB on any machine.
add_compile_definitions(_FILE_OFFSET_BITS=64)

function(vesk_compile_options target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Werror)
    # gcc 12 sees overlapping copies in "text" + std::string where there are none.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
    endif()
    if(VESK_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${VESK_SANITIZE} -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${VESK_SANITIZE})
    endif()
endfunction()

# vesk_library(log SOURCES a.cpp b.cpp HEADERS a.h USES vesk::platform)
# One library per folder; its headers are included as "log/a.h".
function(vesk_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;USES;LINKS" ${ARGN})
    add_library(vesk_${name} STATIC ${ARG_SOURCES} ${ARG_HEADERS})
    add_library(vesk::${name} ALIAS vesk_${name})
    set_target_properties(vesk_${name} PROPERTIES EXPORT_NAME ${name})
    target_include_directories(vesk_${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/vesk>)
    target_compile_features(vesk_${name} PUBLIC cxx_std_20)
    target_link_libraries(vesk_${name} PUBLIC ${ARG_USES} PRIVATE ${ARG_LINKS})
    vesk_compile_options(vesk_${name})
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    install(FILES ${ARG_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vesk/${folder})
    install(TARGETS vesk_${name} EXPORT veskTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()

# vesk_program(vesk SOURCES main.cpp USES vesk::log)
function(vesk_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_USES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    vesk_compile_options(${name})
endfunction()
