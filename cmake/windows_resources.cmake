# add_windows_resources(<target>): gives a program of windows its icon, its version and the manifest
# for today's controls and for displays of any resolution.
# The manifest leaves the code page alone: what a player's legacy code page can hold is measured in
# the system's own.
function(add_windows_resources target)
    find_program(RSVG_CONVERT rsvg-convert REQUIRED)
    find_program(ICOTOOL icotool REQUIRED)
    set(SONTARO_ICON ${CMAKE_CURRENT_BINARY_DIR}/sontaro.ico)
    set(pictures "")
    foreach(size 16 20 24 32 40 48 64 128 256)
        set(picture ${CMAKE_CURRENT_BINARY_DIR}/sontaro-${size}.png)
        add_custom_command(OUTPUT ${picture}
            COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${picture}
                ${CMAKE_SOURCE_DIR}/resources/sontaro.svg
            DEPENDS ${CMAKE_SOURCE_DIR}/resources/sontaro.svg)
        list(APPEND pictures ${picture})
    endforeach()
    add_custom_command(OUTPUT ${SONTARO_ICON}
        COMMAND ${ICOTOOL} --create --output=${SONTARO_ICON} ${pictures}
        DEPENDS ${pictures})
    configure_file(${CMAKE_SOURCE_DIR}/resources/windows/sontaro.rc.in
        ${CMAKE_CURRENT_BINARY_DIR}/sontaro.rc @ONLY)
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/sontaro.rc PROPERTIES
        COMPILE_DEFINITIONS "wxUSE_RC_MANIFEST=1;wxUSE_DPI_AWARE_MANIFEST=2"
        OBJECT_DEPENDS ${SONTARO_ICON})
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/sontaro.rc)
endfunction()
