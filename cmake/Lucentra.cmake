# What every target of the project has in common, and the three kinds of target there are.

add_library(lucentra-common INTERFACE)
target_compile_features(lucentra-common INTERFACE cxx_std_20)
target_compile_options(lucentra-common INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
    -Wno-missing-field-initializers) # what a designated initializer leaves out has its default
target_compile_definitions(lucentra-common INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_KEYWORDS QT_NO_FOREACH)
if(LUCENTRA_SANITIZE)
    target_compile_options(lucentra-common INTERFACE
        -fsanitize=${LUCENTRA_SANITIZERS} -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(lucentra-common INTERFACE -fsanitize=${LUCENTRA_SANITIZERS})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND NOT LUCENTRA_SANITIZERS STREQUAL "thread")
        target_compile_options(lucentra-common INTERFACE -fsanitize=fuzzer-no-link) # tells fuzzers which way a call took
    endif()
endif()
# Links each of the many test programs in a tenth of the time.
find_program(LUCENTRA_MOLD mold)
if(LUCENTRA_MOLD)
    target_link_options(lucentra-common INTERFACE -fuse-ld=mold)
endif()

# What nearly every file reads first, compiled once: most of the time of a build goes into the toolkit's headers. A file
# includes what it needs all the same.
add_library(lucentra-precompiled OBJECT "${CMAKE_CURRENT_LIST_DIR}/precompiled.cpp")
target_link_libraries(lucentra-precompiled PRIVATE lucentra-common Qt6::Core tl::expected)
target_precompile_headers(lucentra-precompiled PRIVATE
    <QByteArray> <QDateTime> <QHash> <QJsonDocument> <QJsonObject> <QList> <QObject> <QRectF> <QString>
    <QStringList> <QThreadPool> <QUuid> <QVariant> <algorithm> <chrono> <functional> <memory> <optional> <tl/expected.hpp>)

if(LUCENTRA_UNITY_BUILD)
    # What is local to one file is seen by its neighbours then.
    target_compile_options(lucentra-common INTERFACE -Wno-shadow -Wno-unused-function
        $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

# lucentra_library(<name> [MOC] SOURCES <file>... [PUBLIC <target>...] [PRIVATE <target>...])
# One folder of the program. Its own directory is its only include path, so that a folder sees just those that it
# links: an include against the direction of the arrows isn't found. MOC: it has classes with Q_OBJECT.
function(lucentra_library name)
    cmake_parse_arguments(arg "MOC" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC lucentra-common Qt6::Core tl::expected ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
    set_target_properties(${name} PROPERTIES
        AUTOMOC ${arg_MOC} UNITY_BUILD ${LUCENTRA_UNITY_BUILD} UNITY_BUILD_BATCH_SIZE 12)
    target_precompile_headers(${name} REUSE_FROM lucentra-precompiled)
endfunction()

# lucentra_wayland_protocols(<name> <XML file>...): the client's side of protocols, in headers named <protocol>-client.h.
function(lucentra_wayland_protocols name)
    find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
    set(generated)
    foreach(xml ${ARGN})
        cmake_path(GET xml STEM protocol)
        add_custom_command(OUTPUT ${protocol}-client.h ${protocol}.c
            COMMAND ${WAYLAND_SCANNER} client-header ${xml} ${protocol}-client.h
            COMMAND ${WAYLAND_SCANNER} private-code ${xml} ${protocol}.c
            DEPENDS ${xml} VERBATIM)
        list(APPEND generated ${CMAKE_CURRENT_BINARY_DIR}/${protocol}.c ${CMAKE_CURRENT_BINARY_DIR}/${protocol}-client.h)
    endforeach()
    add_library(${name} STATIC ${generated})
    target_include_directories(${name} SYSTEM PUBLIC "${CMAKE_CURRENT_BINARY_DIR}")
    target_link_libraries(${name} PUBLIC PkgConfig::WaylandClient)
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()

# lucentra_tests(<name> CLASSES <class>... [SOURCES <file>...] LINK <target>... [LABELS <label>...])
# A program of QtTest classes, each in <class>.cpp, which may name a subfolder. It runs the class that its first argument
# names: CTest runs each in a process of its own, headless, with a home directory of its own.
# Labels: "service" tests need real services or much time and aren't run under the sanitizers; of "cost" tests a part is
# skipped there.
function(lucentra_tests name)
    cmake_parse_arguments(arg "" "" "CLASSES;SOURCES;LINK;LABELS" ${ARGN})
    if(NOT LUCENTRA_BUILD_SANITIZED_TESTS AND NOT arg_LABELS)
        return()
    endif()
    set(files ${arg_CLASSES})
    list(TRANSFORM files APPEND .cpp)
    add_executable(${name} ${files} ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES
        AUTOMOC ON UNITY_BUILD ${LUCENTRA_UNITY_BUILD} UNITY_BUILD_BATCH_SIZE 12)
    if(LUCENTRA_SANITIZE AND "service" IN_LIST arg_LABELS)
        set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON) # such tests have time limits
    endif()
    target_link_libraries(${name} PRIVATE lucentra-test-program ${arg_LINK})
    target_precompile_headers(${name} REUSE_FROM lucentra-precompiled)
    foreach(class ${arg_CLASSES})
        cmake_path(GET class FILENAME class)
        add_test(NAME ${class} COMMAND ${name} ${class})
        set(home "${CMAKE_CURRENT_BINARY_DIR}/${class}.home")
        set_tests_properties(${class} PROPERTIES
            LABELS "unit;${arg_LABELS}"
            TIMEOUT 600
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;HOME=${home};XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_RUNTIME_DIR=${home}/run;DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent;LANG=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0")
    endforeach()
endfunction()

# lucentra_benchmark(<name> SOURCES <file>... LINK <target>...): one Google Benchmark program.
function(lucentra_benchmark name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE lucentra-common benchmark::benchmark ${arg_LINK})
    target_precompile_headers(${name} REUSE_FROM lucentra-precompiled)
endfunction()
