# What is installed: the module with its header set and CMake package and, when it was built, the reference host.
include(CMakePackageConfigHelpers)

set(FTM_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR}/FeatureTreeModule)
set(FTM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/FeatureTreeModule)

# The programming interface and what its headers include; nothing else of the module is for others.
set(FTM_PUBLIC_HEADERS
    model/CTreeBooleanItemValue.h
    model/CTreeEnumationItemValue.h
    model/CTreeFloatItemValue.h
    model/CTreeIntergerItemValue.h
    model/CTreeItemValue.h
    model/CTreeStringItemValue.h
    model/FeatureFileValues.h
    model/FeatureTreeModuleGlobal.h
    model/IVexaFeatureNotify.h
    model/IVexaFeatureWidget.h
    model/VexaPropertyTreeItem.h
    shell/PollingRoles.h
    shell/VexaMainFeatureWidget.h
    tree/VexaFeatureTree.h)
foreach(header IN LISTS FTM_PUBLIC_HEADERS)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${CMAKE_SOURCE_DIR}/${header} DESTINATION ${FTM_HEADER_DIR}/${folder})
endforeach()
install(DIRECTORY ${CMAKE_SOURCE_DIR}/platform/ DESTINATION ${FTM_HEADER_DIR}/platform
    FILES_MATCHING PATTERN "*.h")

install(TARGETS FeatureTreeModule LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
set(FTM_PACKAGED_CLIENT_LIBRARIES "")
if(FTM_BUILD_HOST)
    set(FTM_PACKAGED_CLIENT_LIBRARIES ${FTM_CLIENT_LIBRARIES})
    set_target_properties(${FTM_CLIENT_LIBRARIES} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${FTM_CLIENT_LIBRARIES} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()

set(FTM_INSTALL_LIBDIR ${CMAKE_INSTALL_LIBDIR})
configure_package_config_file(
    ${CMAKE_SOURCE_DIR}/cmake/FeatureTreeModuleConfig.cmake.in
    ${CMAKE_BINARY_DIR}/package/FeatureTreeModuleConfig.cmake
    INSTALL_DESTINATION ${FTM_PACKAGE_DIR}
    PATH_VARS FTM_HEADER_DIR FTM_INSTALL_LIBDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/FeatureTreeModuleConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_BINARY_DIR}/package/FeatureTreeModuleConfig.cmake
    ${CMAKE_BINARY_DIR}/package/FeatureTreeModuleConfigVersion.cmake
    DESTINATION ${FTM_PACKAGE_DIR})
