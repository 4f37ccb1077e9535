# What `cmake --install` puts on a system: library and reference host with their headers in one folder,
# package files for CMake and pkg-config, the program with its manual page, the example boards.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(header_folder ${CMAKE_INSTALL_INCLUDEDIR}/switchmanager)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/SwitchManager)

foreach(target switchmanager referencehost)
    target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${header_folder}>)
endforeach()
install(TARGETS switchmanager referencehost EXPORT SwitchManagerTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

# Helpers and the chips' register tables are nothing that a host compiles against.
set(no_interface "/(BitField|ElapsedTime|OwnedMap|Polling|SwitchDocument|XmlNodes|XmlText)\\.hpp$"
    "/(CounterNumbers|VitessePortAccess|WatermarkFields|[A-Za-z0-9]*Registers)\\.hpp$")
file(GLOB headers RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/host/*.hpp ${PROJECT_SOURCE_DIR}/model/*.hpp ${PROJECT_SOURCE_DIR}/manager/*.hpp
    ${PROJECT_SOURCE_DIR}/marvell/*.hpp ${PROJECT_SOURCE_DIR}/vitesse/*.hpp)
foreach(pattern IN LISTS no_interface)
    list(FILTER headers EXCLUDE REGEX ${pattern})
endforeach()
foreach(class DeviceMemory HostApplication LogSink PhysicalMemory StreamLog XmlDocument)
    list(APPEND headers reference_host/${class}.hpp)
endforeach()
foreach(header IN LISTS headers)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${header} DESTINATION ${header_folder}/${folder})
endforeach()

install(EXPORT SwitchManagerTargets NAMESPACE SwitchManager:: DESTINATION ${package_folder})
configure_package_config_file(cmake/SwitchManagerConfig.cmake.in
    ${PROJECT_BINARY_DIR}/cmake/SwitchManagerConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/SwitchManagerConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/cmake/SwitchManagerConfig.cmake
    ${PROJECT_BINARY_DIR}/cmake/SwitchManagerConfigVersion.cmake
    DESTINATION ${package_folder})

# The prefix is relative to the file's own place, so that a tree can be installed anywhere and moved.
file(RELATIVE_PATH prefix_from_pkgconfig
    /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
foreach(package switchmanager referencehost)
    configure_file(cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/cmake/${package}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/cmake/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

file(RELATIVE_PATH libraries_from_programs
    /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
set_target_properties(switchctl PROPERTIES INSTALL_RPATH $ORIGIN/${libraries_from_programs})
set_target_properties(referencehost PROPERTIES INSTALL_RPATH $ORIGIN)
install(TARGETS switchctl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY docs/schemas DESTINATION ${CMAKE_INSTALL_DATADIR}/switchmanager FILES_MATCHING PATTERN *.json)
install(FILES switchctl/check/board.rng DESTINATION ${CMAKE_INSTALL_DATADIR}/switchmanager)
set(completion ${PROJECT_SOURCE_DIR}/switchctl/completion/completion)
install(FILES ${completion}.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME switchctl)
install(FILES ${completion}.zsh DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _switchctl)
install(FILES ${completion}.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME switchctl.fish)
install(FILES LICENSE CHANGELOG.md docs/trace-format.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/switchmanager)
install(FILES docs/switchctl.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/switchmanager/examples
    FILES_MATCHING PATTERN *.xml PATTERN *.cpp)
