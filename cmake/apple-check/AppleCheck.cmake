# The Apple-target check of the macOS backends, run on Linux: every .mm is compiled by clang
# for x86_64-apple-macos13.0 against GNUstep's Foundation and AppKit plus our transcription of
# what GNUstep lacks (sdk/ZdAppleSdk.h), once for syntax and types with the project's warnings
# as errors, once through the static analyzer with its findings as errors. Nothing is linked
# or run: see README.md, "macOS", for what this can't catch.

find_program(ZD_APPLE_CHECK_CLANG NAMES clang++ clang++-16 clang++-15 clang++-14)
find_path(ZD_GNUSTEP_INCLUDE AppKit/AppKit.h PATHS /usr/include/GNUstep /usr/GNUstep/System/Library/Headers)
file(GLOB ZD_GCC_OBJC_RUNTIME /usr/lib/gcc/*/*/include/objc/runtime.h)
find_path(ZD_BLOCKS_INCLUDE Block.h)
file(GLOB ZD_LIBSTDCXX_DIRS LIST_DIRECTORIES true /usr/include/c++/[0-9]*)

set(ZD_APPLE_CHECK_SOURCES_DIR ${CMAKE_SOURCE_DIR}/src/platform/macos)
# The backends, and their tests that run on a Mac only.
file(GLOB ZD_APPLE_CHECK_SOURCES CONFIGURE_DEPENDS ${ZD_APPLE_CHECK_SOURCES_DIR}/*.mm
     ${CMAKE_SOURCE_DIR}/tests/macos-native/*.mm)

if(NOT ZD_APPLE_CHECK_CLANG OR NOT ZD_GNUSTEP_INCLUDE OR NOT ZD_GCC_OBJC_RUNTIME
   OR NOT ZD_BLOCKS_INCLUDE OR NOT ZD_LIBSTDCXX_DIRS)
  # Missing tools fail the check instead of skipping it quietly.
  add_test(NAME macos-check.tools
           COMMAND ${CMAKE_COMMAND} -E echo "clang, GNUstep or the blocks runtime missing: run scripts/setup")
  set_tests_properties(macos-check.tools PROPERTIES LABELS macos-check WILL_FAIL TRUE)
  return()
endif()

# The Objective-C runtime header of GCC, made acceptable to clang under ARC: its inline
# object_getClass reads through `id`, which ARC's opaque `id` refuses. Blocks' header is
# reached under the name GNUstep asks for.
list(GET ZD_GCC_OBJC_RUNTIME -1 objc_runtime)
get_filename_component(objc_dir ${objc_runtime} DIRECTORY)
set(gen ${CMAKE_CURRENT_BINARY_DIR}/apple-check-include)
file(GLOB objc_headers ${objc_dir}/*.h)
foreach(header ${objc_headers})
  get_filename_component(name ${header} NAME)
  file(READ ${header} text)
  if(name STREQUAL "runtime.h")
    string(REPLACE "return object->class_pointer;"
                   "return *(Class __unsafe_unretained *)(__bridge void *)object;" text "${text}")
  endif()
  file(WRITE ${gen}/objc/${name}.new "${text}")
  file(COPY_FILE ${gen}/objc/${name}.new ${gen}/objc/${name} ONLY_IF_DIFFERENT)
endforeach()
file(WRITE ${gen}/objc/blocks_runtime.h "#include <Block.h>\n")

# The newest libstdc++ whose target-specific half is installed too (clang finds neither by
# itself for an Apple triple).
set(multiarch ${CMAKE_LIBRARY_ARCHITECTURE})
if(NOT multiarch)
  set(multiarch x86_64-linux-gnu)
endif()
list(SORT ZD_LIBSTDCXX_DIRS COMPARE NATURAL ORDER DESCENDING)
set(libstdcxx "")
foreach(dir ${ZD_LIBSTDCXX_DIRS})
  get_filename_component(version ${dir} NAME)
  if(EXISTS /usr/include/${multiarch}/c++/${version}/bits/c++config.h)
    set(libstdcxx ${dir})
    set(libstdcxx_version ${version})
    break()
  endif()
endforeach()
if(NOT libstdcxx)
  message(FATAL_ERROR "No complete libstdc++ for the Apple-target check under /usr/include/c++")
endif()

set(ZD_APPLE_CHECK_FLAGS
    -x objective-c++ -std=c++20 -fobjc-arc -fblocks
    -target x86_64-apple-macos13.0 -fobjc-runtime=macosx-13.0
    -DNO_GNUSTEP=1 -DZD_HAVE_SPARKLE=1 -D_GNU_SOURCE -U__nonnull -U__nullable -U__null_unspecified
    ${ZD_WARNING_FLAGS} -Wunguarded-availability-new -Wdeprecated-declarations -Werror
    -nostdinc++
    -isystem ${CMAKE_CURRENT_LIST_DIR}/sdk
    -isystem ${libstdcxx} -isystem /usr/include/${multiarch}/c++/${libstdcxx_version}
    -isystem ${ZD_GNUSTEP_INCLUDE} -isystem ${gen} -isystem ${ZD_BLOCKS_INCLUDE}
    -isystem /usr/include/${multiarch}
    -I${CMAKE_SOURCE_DIR}/src/core -I${CMAKE_SOURCE_DIR}/src/platform -I${CMAKE_SOURCE_DIR}/src/render)
# The shallow mode analyses each function with little inlining: the backends are thin, their
# ownership rules are local (Create/Copy, __bridge), and the deep mode spends half a minute
# in the standard library's containers for nothing.
set(ZD_APPLE_CHECK_ANALYZE
    --analyze -o /dev/null -Xclang -analyzer-werror
    -Xclang -analyzer-checker=core,cplusplus,deadcode,osx,unix,nullability
    -Xclang -analyzer-config -Xclang mode=shallow)
string(REPLACE ";" "\n" rsp "${ZD_APPLE_CHECK_FLAGS}")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/apple-check.rsp "${rsp}\n")
set(ZD_APPLE_CHECK_RSP ${CMAKE_CURRENT_BINARY_DIR}/apple-check.rsp)

foreach(source ${ZD_APPLE_CHECK_SOURCES})
  get_filename_component(name ${source} NAME_WE)
  add_test(NAME macos-check.syntax.${name}
           COMMAND ${ZD_APPLE_CHECK_CLANG} @${ZD_APPLE_CHECK_RSP} -fsyntax-only ${source})
  add_test(NAME macos-check.analyze.${name}
           COMMAND ${ZD_APPLE_CHECK_CLANG} @${ZD_APPLE_CHECK_RSP} ${ZD_APPLE_CHECK_ANALYZE} ${source})
  set_tests_properties(macos-check.syntax.${name} macos-check.analyze.${name}
                       PROPERTIES LABELS macos-check TIMEOUT 120)
endforeach()

# The check must be able to fail: known-bad variants of real backend files, each refused for
# its own reason.
function(zd_apple_check_refuses name pass source edit expected)
  add_test(NAME macos-check.refuses.${name}
           COMMAND ${CMAKE_CURRENT_LIST_DIR}/refuse-variant.sh ${ZD_APPLE_CHECK_CLANG}
                   ${ZD_APPLE_CHECK_RSP} ${pass} ${ZD_APPLE_CHECK_SOURCES_DIR}/${source}
                   "${edit}" "${expected}" ${ZD_APPLE_CHECK_ANALYZE})
  set_tests_properties(macos-check.refuses.${name} PROPERTIES LABELS macos-check TIMEOUT 120)
endfunction()
zd_apple_check_refuses(selector-typo syntax MacProcessBackend.mm
  "s/URLForApplicationWithBundleIdentifier:/URLForApplicationWithBundleIdentifer:/"
  "no visible @interface for 'NSWorkspace'")
zd_apple_check_refuses(completion-signature syntax MacProcessBackend.mm
  "s/completionHandler:^(NSRunningApplication\\* _Nullable app, NSError\\* _Nullable error)/completionHandler:^(NSRunningApplication* _Nullable app)/"
  "with an rvalue of type 'void (^)(NSRunningApplication")
zd_apple_check_refuses(missing-bridge syntax AXWindowSizingBackend.mm
  "s/(__bridge CFDictionaryRef)options/(CFDictionaryRef)options/"
  "requires a bridged cast")
zd_apple_check_refuses(unguarded-macos14 syntax ScreenCaptureKitBackend.mm
  "s/if (@available(macOS 14.0, \\*)) {/if (true) {/"
  "is only available on macOS 14.0 or newer")
zd_apple_check_refuses(leaked-axvalue analyze AXWindowSizingBackend.mm
  "/CFSTR(.AXSize.), value);/{n;d;}"
  "Potential leak of an object stored into 'value'")
zd_apple_check_refuses(gnustep-only syntax ObjectValues.mm
  "s/const char\\* utf8 = string.UTF8String;/const char* utf8 = [string stringByTrimmingSpaces].UTF8String;/"
  "declares the selector 'stringByTrimmingSpaces'")
