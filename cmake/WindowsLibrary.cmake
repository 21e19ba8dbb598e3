# What a DLL has beside its code: its plain name, zul.dll, and the resource that tells its version.
enable_language(RC)
set_target_properties(zul PROPERTIES PREFIX "")
configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${PROJECT_BINARY_DIR}/version.rc @ONLY)
target_sources(zul PRIVATE ${PROJECT_BINARY_DIR}/version.rc)
