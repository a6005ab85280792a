# Shared settings for Zephyrdock's own targets: strict warnings, errors where asked.
# The warnings of our own code; the Apple-target check of the macOS backends uses them too.
set(ZD_WARNING_FLAGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
                     -Wcast-align -Woverloaded-virtual -Wno-missing-field-initializers)
function(zd_strict_warnings target)
  target_compile_options(${target} PRIVATE ${ZD_WARNING_FLAGS})
  # GCC 12's flow analysis reports uninitialised reads and overlapping copies inside
  # libstdc++'s variant and string once inlined at -O2 and above: false alarms in library code.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-Wno-maybe-uninitialized
                                             -Wno-restrict>)
  endif()
  if(ZD_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# Collects the sources of one folder tree, so adding a file needs no CMake edit.
function(zd_glob_sources out)
  set(result)
  foreach(dir ${ARGN})
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${dir}/*.cpp)
    list(APPEND result ${found})
  endforeach()
  set(${out} ${result} PARENT_SCOPE)
endfunction()
