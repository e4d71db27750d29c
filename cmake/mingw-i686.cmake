set(QUILLON_ARCH i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
