# XOV_HARDENED: programs that stop where memory goes wrong instead of going on, as distributions build what they ship.
# The costs are a few per cent of time; pictures stay the same. Not for Visual C++, whose defaults do much the same.
option(XOV_HARDENED "Guard stacks, calls and lengths, and make tables of the linker read-only" OFF)
if(NOT XOV_HARDENED OR MSVC)
  return()
endif()

include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

target_compile_options(xov_options INTERFACE -fstack-protector-strong -Wformat -Werror=format-security)
foreach(flag IN ITEMS -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "XOV_HAS${flag}" has)
  check_cxx_compiler_flag(${flag} ${has})
  if(${has})
    target_compile_options(xov_options INTERFACE ${flag})
  endif()
endforeach()
# The C library looks at lengths only in optimised code, and says so with a warning elsewhere; sanitizers look themselves.
if(NOT XOV_SANITIZE)
  target_compile_options(xov_options INTERFACE
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  target_link_options(xov_options INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
endif()
