# One place for what every target of ours is compiled with.
add_library(harvelop_options INTERFACE)
target_compile_options(harvelop_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                                                  -Werror)
# g++ 12 takes plain assignments to a std::string for overlapping copies once it optimizes.
target_compile_options(harvelop_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# What users run is hardened as Debian's own programs are.
target_compile_options(harvelop_options INTERFACE "$<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2;-fstack-protector-strong>")
target_link_options(harvelop_options INTERFACE "$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")
target_include_directories(harvelop_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(HARVELOP_SANITIZE)
  target_compile_options(harvelop_options INTERFACE -fsanitize=${HARVELOP_SANITIZE} -fno-omit-frame-pointer
                                                    -fno-sanitize-recover=all)
  target_link_options(harvelop_options INTERFACE -fsanitize=${HARVELOP_SANITIZE})
endif()
# Branches are counted in the source, not among those that the sanitizers add. The counters go nowhere unless LLVM_PROFILE_FILE
# says where; the folder is recorded as "." so that clones share their objects.
if(HARVELOP_COVERAGE)
  target_compile_options(harvelop_options INTERFACE -fprofile-instr-generate=/dev/null -fcoverage-mapping
                                                    -fcoverage-compilation-dir=.)
  target_link_options(harvelop_options INTERFACE -fprofile-instr-generate)
endif()

# harvelop_library(name SOURCES... [LINK libs...]): one library a folder.
function(harvelop_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC harvelop_options ${ARG_LINK})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE harvelop_options ${ARG_LINK})
  endif()
endfunction()
