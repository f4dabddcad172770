# Cross build for 32-bit Windows; its programs run under the Wine of both word sizes in a root of
# its own, which scripts/windows32.sh makes.
set(VELKOR_WINDOWS_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
# Fractions are rounded as in 64 bits, not kept longer in the older registers; who calls us may have
# the stack aligned to four bytes, as the system's own programs do.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
# The definition file names what is exported as containers ask for it, without the sizes of arguments.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -Wl,--enable-stdcall-fixup")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/windows32.sh --run
                                  ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run.sh)
