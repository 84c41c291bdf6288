# Copies the sample suite into the build tree, leaving what the program
# wrote there (its working database, its records) in place.
if(EXISTS "${SOURCE}")
    file(COPY "${SOURCE}/" DESTINATION "${DESTINATION}")
else()
    file(MAKE_DIRECTORY "${DESTINATION}")
endif()
