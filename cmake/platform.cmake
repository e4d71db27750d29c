# What holds for every file of one build: sanitizers natively, Windows flags across.
if(WIN32)
  enable_language(RC)
  add_compile_definitions(UNICODE _UNICODE _WIN32_WINNT=0x0601 NOMINMAX)
  # Debugging information takes a quarter of the build, and a DLL ten times as large to every test that loads
  # a copy; the configuration Debug has it.
  set(CMAKE_C_FLAGS_RELEASE "-O2 -DNDEBUG")
  set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
  # Single-precision arithmetic is specified to the bit: SSE on both bitnesses, nothing contracted.
  add_compile_options(-fstack-protector-strong -msse2 -mfpmath=sse -ffp-contract=off
    "$<$<CONFIG:Debug>:-gdwarf-4;-D_GLIBCXX_ASSERTIONS>")
  # Without a timestamp the same sources give the same file, so that a test which passed need not run again.
  add_link_options(-static -fstack-protector-strong -Wl,--no-insert-timestamp)
  include(idl)
else()
  add_compile_options(-ffp-contract=off)
  if(QUILLON_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
  endif()
endif()

# What a DLL of ours is linked with.
function(quillon_dll target)
  set_target_properties(${target} PROPERTIES PREFIX "")
  target_link_options(${target} PRIVATE
    -Wl,--gc-sections,--enable-stdcall-fixup,--dynamicbase,--nxcompat
    "$<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>:-Wl,--high-entropy-va>")
endfunction()
