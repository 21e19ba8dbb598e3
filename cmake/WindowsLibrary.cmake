# What a DLL has beside its code: its plain name, zul.dll, and the resource that tells its version.
enable_language(RC)
set_target_properties(zul PROPERTIES PREFIX "")
configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${PROJECT_BINARY_DIR}/version.rc @ONLY)
target_sources(zul PRIVATE ${PROJECT_BINARY_DIR}/version.rc)

# Where the runtime is not linked in, its DLLs stand beside zul.dll; a host that builds the library has its own.
if(MINGW AND PROJECT_IS_TOP_LEVEL AND NOT ZUL_STATIC_RUNTIME)
  include(GNUInstallDirs)
  foreach(runtime libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}.dll OUTPUT_VARIABLE runtime_dll
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    file(COPY ${runtime_dll} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    install(FILES ${runtime_dll} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  endforeach()
endif()
